// Redraw of a full layer against the same strokes on a bare painter, in one process; and a figure that runs far off the
// pane against the same one inside it. What counts is the ratio.

#include "bench_support.h"
#include "platform/QZPainterContext.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintStraightLines.h"

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

void drawLayer(benchmark::State& state, const Scene& scene)
{
    BenchView view;
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i)
        view.paintLayer()->graphs().add(view.finished(scene.create(), scatter.points(scene.pointCount)));
    for ([[maybe_unused]] auto _ : state) {
        view.displayPaintLayer();
        benchmark::DoNotOptimize(view.paintLayer()->contents(paneSize, 1.0).constBits());
    }
}

// The layer's work without the layer: clear, clip, stroke.
void drawBare(benchmark::State& state, const Scene& scene)
{
    Scatter scatter;
    std::vector<QPolygonF> figures;
    for (int i = 0; i < figureCount; ++i) {
        QPolygonF figure;
        for (const QZPoint point : scatter.points(scene.pointCount))
            figure.append({point.x, paneSize.height() - point.y});
        figures.push_back(figure);
    }
    const QColor color = make<QZPaintSegmentLine>()->strokeColor();
    QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
    for ([[maybe_unused]] auto _ : state) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setClipRect(image.rect());
        painter.setRenderHint(QPainter::Antialiasing);
        for (const QPolygonF& figure : figures) {
            painter.setPen(QPen(color, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            if (figure.size() == 2)
                painter.drawLine(figure[0], figure[1]);
            else
                painter.drawPolyline(figure);
        }
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
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
void drawWave(benchmark::State& state, const Reach& style, double reach)
{
    QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRect(image.rect());
    QZPainterContext context(painter, paneSize.height(), QZPainterContext::Edges::PixelSnapped);
    context.setLineWidth(style.width);
    if (style.isDashed)
        context.setLineDash(0.0, std::array{10.0 * style.width, 5.0 * style.width});
    for ([[maybe_unused]] auto _ : state) {
        context.beginPath();
        for (int i = 0; i < wavePoints; ++i) {
            const double x = paneSize.width() / 2.0 + reach * (2.0 * i / (wavePoints - 1) - 1.0);
            context.lineTo({x, paneSize.height() / 2.0 + (i % 2 == 0 ? -1.0 : 1.0) * reach * (0.5 + 0.09 * i)});
        }
        context.strokePath();
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    RatioReporter reporter;
    for (const Scene& scene : scenes)
        reporter.add(
            scene.name, [&scene](benchmark::State& state) { drawLayer(state, scene); },
            [&scene](benchmark::State& state) { drawBare(state, scene); });
    constexpr double inside = 390.0;
    constexpr double farOff = 40000.0;
    for (const Reach& reach : reaches)
        reporter.add(
            std::string("Five waves at 40,000 px against 390 px, ") + reach.name,
            [&reach](benchmark::State& state) { drawWave(state, reach, farOff); },
            [&reach](benchmark::State& state) { drawWave(state, reach, inside); });
    return reporter.run(argc, argv);
}
