// Pictures per second of `qzchart --render`, for a stock with 300 stored figures: reading the bars, copying and loading
// the figures, drawing and writing, as in one run of the program after another.

#include "Ruler.h"
#include "app/bars/BarReader.h"
#include "app/bars/SampleBars.h"
#include "app/picture/PictureSheet.h"
#include "app/picture/Renderer.h"
#include "bench_support.h"
#include "platform/QZFrameComFun.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintToolTable.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <string>

namespace {

constexpr QSize pictureSize(1600, 900);
constexpr int figureCount = 300;
constexpr std::array tools{QZSTLineSegment, QZSTRay, QZSTHorizon, QZST5Waves, QZSTRectangle, QZSTGoldenSection};

/// Stores figures of several tools all over the last bars.
bool storeFigures(const BarSeries& series)
{
    PictureSheet sheet(pictureSize);
    sheet.show(series, QZPCCandlestickCycleDay);
    ChartPane& pane = *sheet.chart().panes().front();
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i) {
        const auto graph = createPaintTool(tools[static_cast<std::size_t>(i) % tools.size()]);
        graph->setLayer(pane.paintLayer());
        std::vector<QZPaintLogicAxis> axises;
        for (const QZPoint point : scatter.points(graph->maxPointCount()))
            axises.push_back(pane.convertFromPoint(point).value_or(QZPaintLogicAxis{}));
        graph->setLogicAxises(axises);
        graph->setEditing(false);
        pane.paintLayer()->graphs().add(graph);
    }
    return pane.storeDB();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    const QString bars = folder.filePath(QStringLiteral("daily.csv"));
    if (!QFile::copy(dailySamplePath(), bars) || !storeFigures(readBars(bars).series))
        return 1;
    Ruler ruler(argc, argv);
    QString failure;
    Renderer renderer([](const QString&) {}, [&failure](const QString& line) { failure = line; });
    for (const char* suffix : {"png", "svg", "pdf"}) {
        RenderRequest request;
        request.target = folder.filePath(QStringLiteral("picture.") + QLatin1String(suffix));
        request.stocks = QStringList(bars);
        request.size = pictureSize;
        ruler.measureRate(std::string("--render ") + suffix + ", 300 figures", {[&] { renderer.run(request); }});
    }
    if (!failure.isNull())
        std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
    return failure.isNull() ? ruler.result() : 1;
}
