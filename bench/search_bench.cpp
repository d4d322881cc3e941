// The nearest-figure search of a click over 300 segments against a plain loop over an array of the same segments.

#include "bench_support.h"
#include "model/QZPlaneGeometry.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintStraightLines.h"

#include <QApplication>

#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

constexpr int figureCount = 300;
constexpr QZPoint mouse{600.0, 400.0};

void searchLayer(benchmark::State& state)
{
    BenchView view;
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i)
        view.paintLayer()->graphs().add(view.finished(std::make_shared<QZPaintSegmentLine>(), scatter.points(2)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(view.paintLayer()->getClosedGraph(mouse));
}

void searchLoop(benchmark::State& state)
{
    Scatter scatter;
    std::vector<QZLine> segments;
    for (int i = 0; i < figureCount; ++i) {
        const auto points = scatter.points(2);
        segments.push_back({points[0], points[1]});
    }
    for ([[maybe_unused]] auto _ : state) {
        const QZLine* nearest = nullptr;
        double best = maxMinDistance;
        for (const QZLine& segment : segments) {
            const double distance = minDistanceFromPointToSegment(mouse, segment.start, segment.end);
            if (distance < best) {
                best = distance;
                nearest = &segment;
            }
        }
        benchmark::DoNotOptimize(nearest);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    RatioReporter reporter;
    reporter.add("nearest of 300 segments", searchLayer, searchLoop);
    return reporter.run(argc, argv);
}
