// The nearest-figure search of a click over 300 segments against a plain loop over an array of the same segments.

#include "Ruler.h"
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

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    BenchView view;
    std::vector<QZLine> segments;
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i) {
        const auto points = scatter.points(2);
        segments.push_back({points[0], points[1]});
        view.paintLayer()->graphs().add(view.finished(std::make_shared<QZPaintSegmentLine>(), points));
    }
    const auto search = [&] { benchmark::DoNotOptimize(view.paintLayer()->getClosedGraph(mouse)); };
    const auto loop = [&] {
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
    };
    ruler.compare("nearest of 300 segments", {search}, {loop}, 4.0);
    return ruler.result();
}
