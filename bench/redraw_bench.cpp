// Redraw of a full layer against the same strokes and captions on a bare painter, in one process; and a figure that
// runs far off the pane against the same one inside it. What counts is the ratio.

#include "BareContext.h"
#include "Ruler.h"
#include "bench_support.h"
#include "platform/QZPainterContext.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintStraightLines.h"
#include "tools/QZPaintToolTable.h"

#include <QApplication>
#include <QPainter>
#include <QPolygonF>

#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int figureCount = 300;
constexpr int wavePoints = 6;

/// A wave count of five legs through the base class alone.
class Polyline : public QZPaintGraph {
public:
    Polyline() : QZPaintGraph(QZST5Waves, wavePoints) {}

protected:
    void drawFigure(QZGraphicsContext& context) override
    {
        context.beginPath();
        context.moveTo(points()[0]);
        for (std::size_t i = 1; i < points().size(); ++i)
            context.lineTo(points()[i]);
        context.strokePath();
    }
};

template <typename Figure>
std::shared_ptr<QZPaintGraph> make()
{
    return std::make_shared<Figure>();
}

struct Scene {
    const char* name;
    int pointCount;
    std::shared_ptr<QZPaintGraph> (*create)();
};

constexpr Scene scenes[] = {{"M1, 300 segments", 2, make<QZPaintSegmentLine>},
                            {"M2, 300 polylines of six points", wavePoints, make<Polyline>}};

/// Colours, widths and dashes as a chart mixes them.
struct Look {
    QColor color;
    std::uint64_t width = 1;
    std::uint64_t lineType = 0;
};

Look lookOf(int figure)
{
    static const std::array<QColor, 8> colors{
        QColor(0xfe, 0x64, 0x00), QColor(0x1f, 0x6f, 0xeb), QColor(0xd0, 0x31, 0x2d), QColor(0x0b, 0x7f, 0x4b),
        QColor(0x8e, 0x44, 0xad), QColor(0x00, 0x83, 0x8f), QColor(0x7a, 0x5c, 0x00), QColor(0x33, 0x3a, 0x45)};
    const std::uint64_t width = figure % 10 == 9 ? 3 : figure % 3 == 2 ? 2 : 1;
    return {colors.at(static_cast<std::size_t>(figure) % colors.size()), width, figure % 5 == 4 ? 1U : 0U};
}

void fillLayer(BenchView& view, const Scene& scene)
{
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i) {
        auto graph = view.finished(scene.create(), scatter.points(scene.pointCount));
        const Look look = lookOf(i);
        graph->setStrokeColor(look.color);
        graph->setLineWidth(look.width);
        graph->setLineType(look.lineType);
        view.paintLayer()->graphs().add(std::move(graph));
    }
}

struct BareFigure {
    QPolygonF points;
    QPen pen;
};

std::vector<BareFigure> bareFigures(const Scene& scene)
{
    Scatter scatter;
    std::vector<BareFigure> figures;
    for (int i = 0; i < figureCount; ++i) {
        const Look look = lookOf(i);
        BareFigure& figure = figures.emplace_back();
        for (const QZPoint point : scatter.points(scene.pointCount))
            figure.points.append({point.x, paneSize.height() - point.y});
        figure.pen = QPen(look.color, static_cast<double>(look.width), Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
        if (look.lineType != 0)
            figure.pen.setDashPattern({10.0, 5.0});
    }
    return figures;
}

// The layer's work without the layer: clear, clip, stroke.
void drawBare(QImage& image, const std::vector<BareFigure>& figures)
{
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRect(image.rect());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const BareFigure& figure : figures) {
        painter.setPen(figure.pen);
        if (figure.points.size() == 2)
            painter.drawLine(figure.points[0], figure.points[1]);
        else
            painter.drawPolyline(figure.points);
    }
    painter.end();
    benchmark::DoNotOptimize(image.constBits());
}

struct Portion {
    std::int64_t type = QZShapeTypeNone;
    int count = 0;
};

struct Captioned {
    const char* name;
    std::vector<Portion> portions;
};

const std::vector<Captioned>& captionedScenes()
{
    static const std::vector<Captioned> all{
        {"M3, 300 golden sections", {{QZSTGoldenSection, 300}}},
        {"M4, segments, golden sections, waves, rectangles",
         {{QZSTLineSegment, 30}, {QZSTGoldenSection, 10}, {QZST5Waves, 10}, {QZSTRectangle, 10}}}};
    return all;
}

void fillLayer(BenchView& view, const Captioned& scene)
{
    Scatter scatter;
    int figure = 0;
    for (const Portion& portion : scene.portions) {
        for (int i = 0; i < portion.count; ++i) {
            auto graph = createPaintTool(portion.type);
            const std::vector<QZPoint> points = scatter.points(graph->maxPointCount());
            graph = view.finished(std::move(graph), points);
            const Look look = lookOf(figure++);
            graph->setStrokeColor(look.color);
            graph->setLineWidth(look.width);
            graph->setLineType(look.lineType);
            view.paintLayer()->graphs().add(std::move(graph));
        }
    }
}

void compareRedraw(Ruler& ruler, const std::string& name, BenchView& view, const Work& bare, double atMost)
{
    const auto redraw = [&view] {
        view.displayPaintLayer();
        benchmark::DoNotOptimize(view.paintLayer()->contents(paneSize, 1.0).constBits());
    };
    ruler.compare(name, {redraw}, bare, atMost);
}

void compareCaptioned(Ruler& ruler, const Captioned& scene)
{
    BenchView view;
    fillLayer(view, scene);
    BareContext bare(paneSize);
    view.paintLayer()->drawInContext(bare);
    QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
    compareRedraw(ruler, scene.name, view, {[&] {
                      bare.draw(image);
                      benchmark::DoNotOptimize(image.constBits());
                  }},
                  1.2);
}

struct Reach {
    const char* name;
    double width;
    bool isDashed;
};

constexpr Reach reaches[] = {{"width 1, solid", 1.0, false},
                             {"width 1, dashed", 1.0, true},
                             {"width 2, solid", 2.0, false},
                             {"width 2, dashed", 2.0, true}};

// A five-wave figure round the middle of the pane, `reach` px to each side.
void drawWave(QZPainterContext& context, double reach)
{
    context.beginPath();
    for (int i = 0; i < wavePoints; ++i) {
        const double x = paneSize.width() / 2.0 + reach * (2.0 * i / (wavePoints - 1) - 1.0);
        context.lineTo({x, paneSize.height() / 2.0 + (i % 2 == 0 ? -1.0 : 1.0) * reach * (0.5 + 0.09 * i)});
    }
    context.strokePath();
}

void compareReaches(Ruler& ruler, const Reach& style)
{
    constexpr double inside = 390.0;
    constexpr double farOff = 40000.0;
    QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRect(image.rect());
    QZPainterContext context(painter, paneSize.height(), QZPainterContext::Edges::PixelSnapped);
    context.setLineWidth(style.width);
    if (style.isDashed)
        context.setLineDash(0.0, std::array{10.0 * style.width, 5.0 * style.width});
    ruler.compare(std::string("five waves at 40,000 px against 390 px, ") + style.name,
                  {[&context] { drawWave(context, farOff); }}, {[&context] { drawWave(context, inside); }});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    for (const Scene& scene : scenes) {
        BenchView view;
        fillLayer(view, scene);
        const std::vector<BareFigure> figures = bareFigures(scene);
        QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
        compareRedraw(ruler, scene.name, view, {[&] { drawBare(image, figures); }}, 1.1);
    }
    for (const Captioned& scene : captionedScenes())
        compareCaptioned(ruler, scene);
    for (const Reach& reach : reaches)
        compareReaches(ruler, reach);
    return ruler.result();
}
