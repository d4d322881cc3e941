#include "model/QZPaintDefaults.h"
#include "support/RecordingContext.h"
#include "support/Spies.h"
#include "support/TestOwner.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;
using Points = std::vector<QZPoint>;

/// Its figure is the segment from its first point to its last.
class Figure : public QZPaintGraph {
public:
    explicit Figure(int maxPointCount) : QZPaintGraph(QZSTLineSegment, maxPointCount)
    {
        setStrokeColor(QColor(1, 2, 3));
    }

    std::vector<int> parts;
    std::vector<double> shifts;

protected:
    void drawFigure(QZGraphicsContext& context) override { context.strokeSegment({points().front(), points().back()}); }
    void partDragged(int index) override { parts.push_back(index); }
    void generalDragged(double shift) override { shifts.push_back(shift); }
};

struct MagnetOn : QZPaintDefaults {
    bool isMagnet() const override { return true; }
};

Lines drawn(QZPaintGraph& graph)
{
    RecordingContext context;
    graph.drawInContext(context);
    EXPECT_TRUE(context.isBalanced());
    return context.lines;
}

class Graph : public ::testing::Test {
protected:
    std::shared_ptr<Figure> clicked(const Points& points, int maxPointCount = 2)
    {
        return placed(std::make_shared<Figure>(maxPointCount), owner, points);
    }
    /// Finished, selected, and pressed at `at` as a layer does it.
    std::shared_ptr<Figure> pressed(QZPoint at, const Points& points = ends)
    {
        auto graph = clicked(points, static_cast<int>(points.size()));
        graph->setSelected(true);
        graph->setDragStartPoint(at);
        return graph;
    }

    inline static const Points ends{{100, 100}, {200, 150}};
    std::shared_ptr<TestOwner> owner = std::make_shared<TestOwner>();
    TestChart& chart = owner->testChart;
};

} // namespace

TEST_F(Graph, DrawsItselfAndItsHandlesByState)
{
    const std::string line = "segment 100,100-200,150 w1 #010203";
    const Lines first{"clear 97,97 6x6", "ellipse 97,97 6x6 w2 #1d3fbb"};
    const Lines all{line, first[0], first[1], "clear 197,147 6x6", "ellipse 197,147 6x6 w2 #1d3fbb"};
    const auto graph = clicked({});
    graph->setThumbnail(QImage(4, 4, QImage::Format_ARGB32));
    EXPECT_EQ(drawn(*graph), (Lines{"clear -3,-3 6x6", "ellipse -3,-3 6x6 w2 #1d3fbb"})) << "no picture at the origin";
    graph->mouseMoved(ends[0]);
    EXPECT_EQ(drawn(*graph), (Lines{first[0], first[1], "image 105,105 20x20"}));
    graph->mouseDown(ends[0]);
    graph->mouseMoved(ends[1]);
    EXPECT_EQ(drawn(*graph), all) << "two points, no picture";
    owner->mouseInside = false;
    EXPECT_EQ(drawn(*graph), Lines{line}) << "mouse elsewhere";
    graph->mouseDown(ends[1]);
    owner->mouseInside = true;
    EXPECT_EQ(drawn(*graph), Lines{line}) << "finished";
    EXPECT_FALSE(graph->needsDisplay());
    owner->mouseInside = false;
    graph->setSelected(true);
    graph->setCurrentPoint(0);
    EXPECT_TRUE(graph->needsDisplay());
    EXPECT_EQ(drawn(*graph), all) << "selected, its first point held: no picture";
    owner->activePane = false;
    EXPECT_FALSE(graph->isSelected());
    EXPECT_EQ(drawn(*graph), Lines{line}) << "selected in another pane";
    owner->activePane = true;
    graph->setHidden(true);
    EXPECT_EQ(drawn(*graph), Lines{}) << "hidden";
    graph->setSelected(false);
    EXPECT_FALSE(graph->needsDisplay()) << "neither selected nor in creation";
}

TEST_F(Graph, StaysOffTheChartUntilItsPointsCannotBePlaced)
{
    LogSpy log;
    const auto graph = pressed({});
    drawn(*graph);
    EXPECT_EQ(graph->deltaCount(), 10);
    chart.fromPoint.answerWith([](QZPoint) { return std::nullopt; });
    const auto axises = graph->convertToLogicAxises();
    ASSERT_EQ(axises.size(), 2U) << "where the chart has nothing no point is left out";
    EXPECT_EQ(std::pair(axises[0].date, axises[0].price), std::pair(0, 0.0));

    chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{200000, 10}; });
    EXPECT_EQ(drawn(*graph), Lines{});
    EXPECT_EQ(owner->removals, 0) << "too far off: stays";
    chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return unplaceablePoint; });
    EXPECT_EQ(drawn(*graph), Lines{});
    EXPECT_EQ(owner->removals, 1) << "no longer on the chart: goes";
    EXPECT_EQ(log.lines, (QStringList{QStringLiteral("Contains convert failure point! <TestOwner>!"),
                                      QStringLiteral("Contains InvalidPoint! Delete it!")}));
}

TEST_F(Graph, DashesAndJoins)
{
    using Row = std::tuple<const char*, int, std::uint64_t, std::uint64_t, std::string>;
    for (const auto& [name, points, type, width, pen] :
         {Row{"solid", 2, 0, 2, ""}, Row{"dashes", 2, 1, 2, " dash 20,10"}, Row{"short dashes", 2, 2, 2, " dash 6,6"},
          Row{"three lengths", 2, 3, 2, " dash 6,20,6"}, Row{"five lengths", 2, 4, 2, " dash 6,6,6,6,20"},
          Row{"unknown keeps what is set", 2, 7, 2, " dash 1,2"}, Row{"wide, two points", 2, 0, 5, ""},
          Row{"three points, not wide", 3, 0, 4, ""}, Row{"wide, three points", 3, 0, 5, " round"}}) {
        SCOPED_TRACE(name);
        const auto graph = clicked({}, points);
        graph->setLineType(type);
        graph->setLineWidth(width);
        RecordingContext context;
        context.setLineDash(0.0, std::array{1.0, 2.0});
        graph->setDefaultConfig(context);
        context.strokeSegment({});
        EXPECT_EQ(context.lines, Lines{"segment 0,0-0,0 w" + std::to_string(width) + " #010203" + pen});
    }
}

TEST_F(Graph, EveryChangeOfStyleAsksForOneRedraw)
{
    const std::vector<std::pair<const char*, std::function<void(QZPaintGraph&)>>> rows{
        {"line type", [](QZPaintGraph& graph) { graph.setLineType(2); }},
        {"line width", [](QZPaintGraph& graph) { graph.setLineWidth(3); }},
        {"stroke colour", [](QZPaintGraph& graph) { graph.setStrokeColor(Qt::red); }},
        {"fill colour", [](QZPaintGraph& graph) { graph.setFillColor(Qt::green); }},
        {"text", [](QZPaintGraph& graph) { graph.setText(QStringLiteral("note")); }},
        {"selection", [](QZPaintGraph& graph) { graph.setSelected(true); }},
        {"creation", [](QZPaintGraph& graph) { graph.setEditing(true); }},
    };
    for (const auto& [name, change] : rows) {
        SCOPED_TRACE(name);
        const auto graph = clicked(ends);
        owner->displays = 0;
        change(*graph);
        EXPECT_EQ(owner->displays, 1);
        change(*graph);
        EXPECT_EQ(owner->displays, 1) << "nothing new";
    }
}

TEST_F(Graph, PlacesPointsWhereTheChartHasThem)
{
    const auto graph = clicked({{103, 100}}, 3);
    EXPECT_EQ(graph->points(), (Points{{100, 100}, {100, 100}, {}})) << "on the bar, and so begins the next";
    EXPECT_EQ(graph->logicAxises().size(), 1U);
    EXPECT_EQ(graph->currentPoint(), 1);
    EXPECT_EQ(owner->displays, 1);
    graph->mouseDown({198, 50});
    graph->mouseDown({252, 60});
    EXPECT_EQ(graph->logicAxises().size(), 3U);
    EXPECT_EQ(graph->logicAxises().back().orginalPoint, (QZPoint{250, 60}));
    EXPECT_FALSE(graph->currentPoint());
    graph->mouseDown({10, 10});
    EXPECT_EQ(graph->points(), (Points{{100, 100}, {200, 50}, {250, 60}})) << "finished";
}

TEST_F(Graph, TheMagnetSnapsPlacedAndDraggedPoints)
{
    const MagnetOn magnet;
    QZPaintDefaults::setCurrent(&magnet);
    chart.magnet.answerWith([](QZPoint p, std::uint64_t) { return QZPoint{p.x, 77}; });
    const auto graph = clicked({ends[0]});
    const int displays = owner->displays;
    graph->mouseMoved({150, 150});
    EXPECT_EQ(graph->points(), (Points{{100, 77}, {150, 77}})) << "the point under the mouse";
    EXPECT_EQ(owner->displays, displays + 1);
    graph->mouseDown(ends[1]);
    EXPECT_EQ(graph->points(), (Points{{100, 77}, {200, 77}}));
    graph->setSelected(true);
    graph->mouseDragged({201, 78});
    EXPECT_EQ(graph->points().at(1), (QZPoint{201, 77}));
    EXPECT_EQ(graph->parts, std::vector{1});
}

TEST_F(Graph, HandlesAreHalfOpenSquaresAndTheFirstWins)
{
    using Row = std::tuple<const char*, QZPoint, std::optional<int>>;
    for (const auto& [name, at, picked] : {Row{"left bottom corner", {97, 97}, 0}, Row{"right edge", {103, 100}, {}},
                                           Row{"top edge", {100, 103}, {}}, Row{"second of three", {202, 152}, 1}}) {
        SCOPED_TRACE(name);
        const auto graph = pressed(at, {ends[0], ends[1], ends[1]});
        owner->cursor = QZCursor::Arrow;
        EXPECT_EQ(graph->isNearKeyPoint(at), picked.has_value());
        EXPECT_EQ(owner->cursor, picked ? QZCursor::Crosshair : QZCursor::Arrow);
        EXPECT_EQ(graph->selectKeyPointNearPoint(at), picked.has_value());
        graph->mouseUp(at);
        EXPECT_EQ(graph->currentPoint(), picked) << "kept by a click";
    }
}

TEST_F(Graph, AWholeFigureStopsWhereTheHostSaysSo)
{
    using Range = std::pair<double, double>; // of x, where the host lets a figure be
    const Range never{0, 0}, inside{0, 400}, always{-1, 401};
    using Row = std::tuple<const char*, Range, double, double, double>;
    for (const auto& [name, range, toX, shift, newStartX] :
         {Row{"free", inside, 170, 20, 170}, Row{"right edge", inside, 400, 200, 400},
          Row{"left edge", inside, 0, -100, 0}, Row{"the host lets it leave", always, 400, 250, 400},
          Row{"blocked at the right", never, 400, 0, 200}, Row{"blocked at the left", never, 0, 0, 100},
          Row{"blocked inside", never, 170, 0, 150}}) {
        const auto may = [range = range](QZPoint p) { return p.x > range.first && p.x < range.second; };
        SCOPED_TRACE(name);
        chart.mayGoLeft.answerWith(may);
        chart.mayGoRight.answerWith(may);
        const auto graph = pressed({150, 125});
        graph->mouseDragged({toX, 135});
        EXPECT_EQ(graph->points(), (Points{{100 + shift, 110}, {200 + shift, 160}}));
        EXPECT_EQ(graph->dragStartPoint(), (QZPoint{newStartX, 135}));
        EXPECT_EQ(graph->shifts, std::vector{shift});
    }
    chart.mayGoRight.answerWith([](QZPoint p) { return p.x < 400; });
    const auto wide = pressed({150, 125}, {{-50, 100}, {380, 150}});
    wide->mouseDragged({190, 125});
    EXPECT_EQ(wide->points().at(1), (QZPoint{400, 150})) << "the right edge holds what is wider than the chart";
}

TEST_F(Graph, AfterTheEdgeTheFigureDoesNotCatchUp)
{
    chart.mayGoRight.answerWith([](QZPoint p) { return p.x < 400; });
    const auto graph = pressed({150, 125});
    graph->mouseDragged({390, 125});
    graph->mouseDragged({380, 125});
    EXPECT_EQ(graph->points().at(1), (QZPoint{390, 150})) << "back at once with the mouse";
    drawn(*graph);
    EXPECT_EQ(graph->points().at(1), (QZPoint{390, 150})) << "not reloaded under way";
    EXPECT_EQ(graph->logicAxises().at(1).date, 20240020) << "nor converted";
    graph->mouseDragged({390, 150}); // over a handle: the figure goes on
    EXPECT_TRUE(graph->parts.empty());
    EXPECT_EQ(owner->cursor, QZCursor::ClosedHand);
    graph->mouseUp({390, 150});
    EXPECT_EQ(graph->logicAxises().at(0).date, 20240030);
    EXPECT_EQ(owner->cursor, QZCursor::Arrow);
}
