// What the mouse asks of 300 figures, the search of a click and the cursor of a move, against a plain loop over an
// array of the same lines.

#include "Ruler.h"
#include "bench_support.h"
#include "model/QZPlaneGeometry.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintLevels.h"
#include "tools/QZPaintStraightLines.h"

#include <QApplication>

#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

constexpr int figureCount = 300;
constexpr QZPoint mouse{600.0, 400.0};
constexpr std::array goldenRatios{0.0F, 0.236F, 0.382F, 0.5F, 0.618F, 0.809F,
                                  1.0F, 1.382F, 1.618F, 2.0F, 2.382F, 2.618F};

const QZLine* nearestOf(const std::vector<QZLine>& lines)
{
    const QZLine* nearest = nullptr;
    double best = maxMinDistance;
    for (const QZLine& line : lines) {
        const double distance = minDistanceFromPointToSegment(mouse, line.start, line.end);
        if (distance < best) {
            best = distance;
            nearest = &line;
        }
    }
    return nearest;
}

void compareSearch(Ruler& ruler)
{
    BenchView view;
    std::vector<QZLine> segments;
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i) {
        const auto points = scatter.points(2);
        segments.push_back({points[0], points[1]});
        view.paintLayer()->graphs().add(view.finished(std::make_shared<QZPaintSegmentLine>(), points));
    }
    const auto search = [&] { benchmark::DoNotOptimize(view.paintLayer()->getClosedGraph(mouse)); };
    const auto loop = [&] { benchmark::DoNotOptimize(nearestOf(segments)); };
    ruler.compare("nearest of 300 segments", {search}, {loop}, 4.0);
}

void compareHover(Ruler& ruler)
{
    BenchView view;
    std::vector<QZLine> levels;
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i) {
        auto points = scatter.points(2);
        for (QZPoint& point : points)
            point.y /= 10.0; // the mouse is over none of them: all are asked
        const auto graph = std::make_shared<QZPaintGoldenSelection>();
        view.paintLayer()->graphs().add(view.finished(graph, points));
        for (const float ratio : goldenRatios)
            levels.push_back(graph->linePoints(ratio));
    }
    const auto hover = [&] { view.paintLayer()->mouseMoved(mouse); };
    const auto loop = [&] { benchmark::DoNotOptimize(nearestOf(levels)); };
    ruler.compare("mouse move over 300 golden sections", {hover}, {loop}, 10.0);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    compareSearch(ruler);
    compareHover(ruler);
    return ruler.result();
}
