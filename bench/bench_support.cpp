#include "bench_support.h"

#include "surface/QZPaintLayer.h"

std::shared_ptr<QZPaintGraph> BenchView::finished(std::shared_ptr<QZPaintGraph> graph,
                                                  const std::vector<QZPoint>& points)
{
    graph->setLayer(paintLayer());
    for (const QZPoint point : points)
        graph->mouseDown(point);
    return graph;
}

std::vector<QZPoint> Scatter::points(int count)
{
    std::vector<QZPoint> points;
    std::uniform_int_distribution<int> bar(0, paneSize.width() / 4 - 1);
    std::uniform_int_distribution<int> tick(1, paneSize.height() * 5 - 1);
    for (int i = 0; i < count; ++i) {
        const double x = bar(random_) * 4.0;
        points.push_back({x, tick(random_) / 5.0});
    }
    return points;
}
