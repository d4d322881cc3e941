// Pictures per second of `qzchart --render`, for a stock with 300 stored figures: reading the bars, copying and loading
// the figures, drawing and writing, as in one run of the program after another.

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
#include <benchmark/benchmark.h>

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

void render(benchmark::State& state, const RenderRequest& request)
{
    QString failure;
    Renderer renderer([](const QString&) {}, [&failure](const QString& line) { failure = line; });
    for ([[maybe_unused]] auto _ : state) {
        if (renderer.run(request) != Renderer::done)
            state.SkipWithError(qPrintable(failure));
    }
    state.counters["pictures"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
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
    benchmark::Initialize(&argc, argv);
    std::vector<RenderRequest> requests;
    for (const char* suffix : {"png", "svg", "pdf"}) {
        RenderRequest& request = requests.emplace_back();
        request.target = folder.filePath(QStringLiteral("picture.") + QLatin1String(suffix));
        request.stocks = QStringList(bars);
        request.size = pictureSize;
    }
    for (const RenderRequest& request : requests) {
        benchmark::RegisterBenchmark(
            qPrintable(QStringLiteral("--render %1, 300 figures").arg(request.target.right(3))),
            [&request](benchmark::State& state) { render(state, request); })
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
