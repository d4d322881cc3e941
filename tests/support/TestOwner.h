#pragma once

#include "model/QZPaintGraph.h"
#include "model/QZPaintGraphOwner.h"
#include "support/TestChart.h"

#include <memory>

/// Stands in for a layer: a selected pane with the mouse over it, which remembers what figures ask of it.
class TestOwner : public QZPaintGraphOwner {
public:
    QZRect layerFrame{0.0, 0.0, 400.0, 300.0};
    TestChart testChart;
    bool mouseInside = true;
    bool activePane = true;

    int removals = 0;
    int displays = 0;
    QZCursor cursor = QZCursor::Arrow;

    void setNeedsDisplay() override { ++displays; }
    QZRect frame() const override { return layerFrame; }
    bool isMouseInside() const override { return mouseInside; }
    bool isActivePane() const override { return activePane; }
    void removeGraph(const QZPaintGraph& /*graph*/) override { ++removals; }
    void setCursor(QZCursor shape) override { cursor = shape; }
    const QZPaintChart* chart() const override { return &testChart; }
    QString description() const override { return QStringLiteral("<TestOwner>"); }
};

/// `graph` put on `owner` and clicked through `points`, all of its points or the first few.
template <typename Graph>
std::shared_ptr<Graph> placed(std::shared_ptr<Graph> graph, const std::shared_ptr<TestOwner>& owner,
                              const std::vector<QZPoint>& points)
{
    graph->setLayer(owner);
    for (const QZPoint point : points)
        graph->mouseDown(point);
    return graph;
}
