#pragma once

#include "support/TestChart.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <QPointer>

#include <memory>
#include <string>
#include <vector>

/// A manager view on a TestChart.
class TestView : public QZPaintManagerView {
public:
    using QZPaintManagerView::QZPaintManagerView;

    TestChart testChart;
    std::int64_t types = QZAllEnabledTypes;

    std::int64_t enableTypes() const override { return types; }
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint p) const override { return testChart.convertFromPoint(p); }
    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        return testChart.convertFromLogicAxis(axis);
    }
    bool canBeDraggedToLeft(QZPoint p) const override { return testChart.canBeDraggedToLeft(p); }
    bool canBeDraggedToRight(QZPoint p) const override { return testChart.canBeDraggedToRight(p); }
    double convertXForMagnet(double x, bool over) const override { return testChart.convertXForMagnet(x, over); }
    double getXPointWithLocation(float x, int gap) const override { return testChart.getXPointWithLocation(x, gap); }
    bool calcRegressionData(QZRegressionCalcData& record) const override
    {
        return testChart.calcRegressionData(record);
    }
    bool calcBoxLineData(QZBoxLineCalcData& record) const override { return testChart.calcBoxLineData(record); }
    std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint end, int count) const override
    {
        return testChart.infomationForRetangle(start, end, count);
    }
    QZPoint convertPointForMagnet(QZPoint p, std::uint64_t style) const override
    {
        return testChart.convertPointForMagnet(p, style);
    }
};

/// A split view with equal panes one above the other, shown; validateRect is each pane's whole area. Points are layer
/// coordinates of the pane `view` and are clicked as a user clicks, through the window.
class TestPane {
public:
    struct Options {
        QZRect frame{0.0, 0.0, 400.0, 300.0}; ///< of each pane
        int panes = 1;
    };

    TestPane() : TestPane(Options{}) {}
    explicit TestPane(const Options& options);
    TestPane(const TestPane&) = delete;
    TestPane& operator=(const TestPane&) = delete;
    ~TestPane();

    QZPaintSplitView& split() { return *split_; }
    /// Deletes the split view with its panes.
    void close() { split_.reset(); }
    TestView& view(int index = 0) { return *views_.at(static_cast<std::size_t>(index)); }
    QZPaintLayer& layer(int index = 0) { return *view(index).paintLayer(); }
    TestChart& chart(int index = 0) { return view(index).testChart; }
    std::shared_ptr<QZPaintGraph> current(int index = 0) { return layer(index).currentGraph(); }

    /// What the host reads in its context: mouse input belongs to a tool.
    static bool isPaintEditing();
    /// Picks a tool, as the palette does.
    void arm(std::int64_t type) { split_->changeShapeTo(type, {}); }
    TestPane& click(QZPoint point, int index = 0);
    /// Arms `type`, clicks through `points` and returns what came of it.
    std::shared_ptr<QZPaintGraph> draw(std::int64_t type, const std::vector<QZPoint>& points, int index = 0);
    std::shared_ptr<QZPaintGraph> graphAt(QZPoint point, int index = 0) { return layer(index).getClosedGraph(point); }
    /// All that the user sees and the surface knows, for example "active mouse Horizon 10,20 current | Ray 0,0 1,1
    /// current point 1 | strip 90 painting". Of each pane: whether it is the split view's active view ("chosen"), its
    /// layer is active ("live") and the one that the panels serve ("served") or all of that, the mouse is over it, its
    /// cursor unless that is the arrow, and its figures, the current one being selected if nothing else is said.
    std::string state();
    /// Paints what was asked to be painted: afterwards layer().needsDisplay() is false. The picture is y-down.
    QImage paint();

private:
    std::unique_ptr<QZPaintSplitView> split_ = std::make_unique<QZPaintSplitView>(Qt::Vertical);
    std::vector<QPointer<TestView>> views_;
};
