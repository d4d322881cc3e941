#include "model/QZPaintDefaults.h"
#include "support/RecordingContext.h"
#include "support/TestOwner.h"

#include <gtest/gtest.h>

namespace {

class Figure : public QZPaintGraph {
public:
    explicit Figure(int maxPointCount = 2) : QZPaintGraph(QZSTLineSegment, maxPointCount) {}

    std::vector<int> parts;
    std::vector<double> shifts;

protected:
    void partDragged(int index) override { parts.push_back(index); }
    void generalDragged(double shift) override { shifts.push_back(shift); }
};

struct MagnetOn : QZPaintDefaults {
    bool isMagnet() const override { return true; }
};

using Points = std::vector<QZPoint>;

class GraphEditing : public ::testing::Test {
protected:
    /// Selected, and pressed at `at` as a layer does it.
    std::shared_ptr<Figure> pressed(QZPoint at, const Points& points = {{100, 100}, {200, 150}})
    {
        auto graph = placed(std::make_shared<Figure>(static_cast<int>(points.size())), owner, points);
        graph->setSelected(true);
        graph->setDragStartPoint(at);
        return graph;
    }

    std::shared_ptr<TestOwner> owner = std::make_shared<TestOwner>();
    TestChart& chart = owner->testChart;
};

} // namespace

TEST_F(GraphEditing, TheMagnetSnapsPlacedAndDraggedPoints)
{
    const MagnetOn magnet;
    QZPaintDefaults::setCurrent(&magnet);
    chart.magnet.answerWith([](QZPoint p, std::uint64_t) { return QZPoint{p.x, 77}; });
    const auto graph = pressed({0, 0});
    EXPECT_EQ(graph->points(), (Points{{100, 77}, {200, 77}}));
    graph->mouseDragged({201, 78});
    EXPECT_EQ(graph->points().at(1), (QZPoint{201, 77}));

    const auto second = placed(std::make_shared<Figure>(), owner, {{100, 100}});
    const int displays = owner->displays;
    second->mouseMoved({150, 150});
    EXPECT_EQ(second->points(), (Points{{100, 77}, {150, 77}})) << "the point under the mouse";
    EXPECT_EQ(owner->displays, displays + 1);
}

TEST_F(GraphEditing, PlacesPointsWhereTheChartHasThem)
{
    const auto graph = std::make_shared<Figure>(3);
    placed(graph, owner, {{103, 100}});
    EXPECT_EQ(graph->points(), (Points{{100, 100}, {100, 100}, {}})) << "on the bar, and so begins the next";
    EXPECT_EQ(graph->logicAxises().size(), 1U);
    EXPECT_EQ(graph->currentPoint(), 1);
    EXPECT_EQ(owner->displays, 1);
    graph->mouseDown({198, 50});
    EXPECT_EQ(graph->logicAxises().size(), 2U);
    graph->mouseDown({252, 60});
    EXPECT_EQ(graph->points(), (Points{{100, 100}, {200, 50}, {250, 60}}));
    EXPECT_FALSE(graph->currentPoint());
    EXPECT_EQ(graph->logicAxises().size(), 3U);
    graph->mouseDown({10, 10});
    EXPECT_EQ(graph->points().at(0), (QZPoint{100, 100})) << "finished";
}

TEST_F(GraphEditing, HandlesAreHalfOpenSquaresAndTheFirstWins)
{
    struct Row {
        const char* name = nullptr;
        QZPoint at;
        std::optional<int> picked;
    };
    for (const Row& row : {Row{"left bottom corner", {97, 97}, 0}, Row{"right edge", {103, 100}, std::nullopt},
                           Row{"top edge", {100, 103}, std::nullopt}, Row{"second of three", {202, 152}, 1}}) {
        SCOPED_TRACE(row.name);
        const auto graph = pressed(row.at, {{100, 100}, {200, 150}, {200, 150}});
        owner->cursor = QZCursor::Arrow;
        EXPECT_EQ(graph->isNearKeyPoint(row.at), row.picked.has_value());
        EXPECT_EQ(owner->cursor, row.picked ? QZCursor::Crosshair : QZCursor::Arrow);
        EXPECT_EQ(graph->selectKeyPointNearPoint(row.at), row.picked.has_value());
        EXPECT_EQ(graph->currentPoint(), row.picked);
    }
}

TEST_F(GraphEditing, AWholeFigureStopsWhereTheHostSaysSo)
{
    const auto never = [](QZPoint) { return false; };
    const auto insideOnly = [](QZPoint p) { return p.x > 0 && p.x < 400; };
    const auto always = [](QZPoint) { return true; };
    struct Row {
        const char* name;
        std::function<bool(QZPoint)> may;
        double toX, shift, newStartX;
    };
    const std::vector<Row> rows{
        {"free", insideOnly, 170, 20, 170},           {"right edge", insideOnly, 400, 200, 400},
        {"left edge", insideOnly, 0, -100, 0},        {"the host lets it leave", always, 400, 250, 400},
        {"blocked at the right", never, 400, 0, 200}, {"blocked at the left", never, 0, 0, 100},
        {"blocked inside", never, 170, 0, 150},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        chart.mayGoLeft.answerWith(row.may);
        chart.mayGoRight.answerWith(row.may);
        const auto graph = pressed({150, 125});
        graph->mouseDragged({row.toX, 135});
        EXPECT_EQ(graph->points(), (Points{{100 + row.shift, 110}, {200 + row.shift, 160}}));
        EXPECT_EQ(graph->dragStartPoint(), (QZPoint{row.newStartX, 135}));
        EXPECT_EQ(graph->shifts, std::vector{row.shift});
    }
}

TEST_F(GraphEditing, AfterTheEdgeTheFigureDoesNotCatchUp)
{
    chart.mayGoRight.answerWith([](QZPoint p) { return p.x < 400; });
    const auto graph = pressed({150, 125});
    graph->mouseDragged({390, 125});
    graph->mouseDragged({380, 125});
    EXPECT_EQ(graph->points().at(1), (QZPoint{390, 150})) << "back at once with the mouse";
    RecordingContext context;
    graph->drawInContext(context);
    EXPECT_EQ(graph->points().at(1), (QZPoint{390, 150})) << "not reloaded under way";
    EXPECT_EQ(graph->logicAxises().at(1).date, 20240020) << "nor converted";
    graph->mouseDragged({390, 150}); // over a handle: the figure goes on
    EXPECT_TRUE(graph->parts.empty());
    EXPECT_EQ(owner->cursor, QZCursor::ClosedHand);
    graph->mouseUp({390, 150});
    EXPECT_EQ(graph->logicAxises().at(0).date, 20240030);
    EXPECT_EQ(owner->cursor, QZCursor::Arrow);
}
