#include "support/RecordingContext.h"
#include "support/Spies.h"
#include "support/TestOwner.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

/// Its figure is the segment from its first point to its last.
class Figure : public QZPaintGraph {
public:
    explicit Figure(int maxPointCount = 2) : QZPaintGraph(QZSTLineSegment, maxPointCount)
    {
        setStrokeColor(QColor(1, 2, 3));
    }

protected:
    void drawFigure(QZGraphicsContext& context) override { context.strokeSegment({points().front(), points().back()}); }
};

Lines drawn(QZPaintGraph& graph)
{
    RecordingContext context;
    graph.drawInContext(context);
    EXPECT_TRUE(context.isBalanced());
    return context.lines;
}

class GraphDrawing : public ::testing::Test {
protected:
    std::shared_ptr<Figure> finished() { return placed(std::make_shared<Figure>(), owner, {{100, 100}, {200, 150}}); }

    std::shared_ptr<TestOwner> owner = std::make_shared<TestOwner>();
    const std::string line = "segment 100,100-200,150 w1 #010203";
    const Lines handles{"clear 97,97 6x6", "ellipse 97,97 6x6 w2 #1d3fbb", "clear 197,147 6x6",
                        "ellipse 197,147 6x6 w2 #1d3fbb"};
};

} // namespace

TEST_F(GraphDrawing, FigureAndHandlesByState)
{
    const auto graph = finished();
    EXPECT_EQ(drawn(*graph), Lines{line}) << "idle";
    graph->setSelected(true);
    Lines all = handles;
    all.insert(all.begin(), line);
    EXPECT_EQ(drawn(*graph), all) << "selected";
    owner->activePane = false;
    EXPECT_FALSE(graph->isSelected());
    EXPECT_EQ(drawn(*graph), Lines{line}) << "selected in another pane";
    owner->activePane = true;
    graph->setHidden(true);
    EXPECT_EQ(drawn(*graph), Lines{}) << "hidden";
}

TEST_F(GraphDrawing, HandlesWhilePlacing)
{
    const auto graph = placed(std::make_shared<Figure>(), owner, {});
    graph->setThumbnail(QImage(4, 4, QImage::Format_ARGB32));
    EXPECT_EQ(drawn(*graph), (Lines{"clear -3,-3 6x6", "ellipse -3,-3 6x6 w2 #1d3fbb"})) << "no picture at the origin";
    graph->mouseMoved({100, 100});
    EXPECT_EQ(drawn(*graph), (Lines{handles[0], handles[1], "image 105,105 20x20"}));
    graph->mouseDown({100, 100});
    graph->mouseMoved({200, 150});
    Lines all = handles;
    all.insert(all.begin(), line);
    EXPECT_EQ(drawn(*graph), all) << "two points, no picture";
    owner->mouseInside = false;
    EXPECT_EQ(drawn(*graph), Lines{line}) << "mouse elsewhere";
}

TEST_F(GraphDrawing, PointsThatCannotBeDrawn)
{
    LogSpy log;
    const auto graph = finished();
    graph->setSelected(true);
    owner->testChart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{200000, 10}; });
    EXPECT_EQ(drawn(*graph), Lines{});
    EXPECT_EQ(owner->removals, 0) << "too far off: stays";
    EXPECT_EQ(log.lines, QStringList{QStringLiteral("Contains convert failure point! <TestOwner>!")});

    log.lines.clear();
    owner->testChart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return unplaceablePoint; });
    EXPECT_EQ(drawn(*graph), Lines{});
    EXPECT_EQ(owner->removals, 1) << "no longer on the chart: goes";
    EXPECT_EQ(log.lines, QStringList{QStringLiteral("Contains InvalidPoint! Delete it!")});
}

TEST_F(GraphDrawing, DashesAndJoins)
{
    struct Row {
        const char* name;
        int points;
        std::uint64_t type, width;
        const char* pen;
    };
    for (const Row& row :
         {Row{"solid", 2, 0, 2, " w2 #010203"}, Row{"dashes", 2, 1, 2, " w2 #010203 dash 20,10"},
          Row{"short dashes", 2, 2, 2, " w2 #010203 dash 6,6"},
          Row{"three lengths", 2, 3, 2, " w2 #010203 dash 6,20,6"},
          Row{"five lengths", 2, 4, 2, " w2 #010203 dash 6,6,6,6,20"},
          Row{"unknown keeps what is set", 2, 7, 2, " w2 #010203 dash 1,2"},
          Row{"wide, two points", 2, 0, 5, " w5 #010203"}, Row{"three points, not wide", 3, 0, 4, " w4 #010203"},
          Row{"wide, three points", 3, 0, 5, " w5 #010203 round"}}) {
        SCOPED_TRACE(row.name);
        const auto graph = placed(std::make_shared<Figure>(row.points), owner, {{0, 0}, {10, 0}, {20, 0}});
        graph->setLineType(row.type);
        graph->setLineWidth(row.width);
        RecordingContext context;
        context.setLineDash(0.0, std::array{1.0, 2.0});
        graph->setDefaultConfig(context);
        context.strokeSegment({{0, 0}, {1, 0}});
        EXPECT_EQ(context.lines, Lines{std::string("segment 0,0-1,0") + row.pen});
    }
}

TEST_F(GraphDrawing, EveryChangeOfStyleAsksForOneRedraw)
{
    struct Row {
        const char* name;
        std::function<void(QZPaintGraph&)> change;
    };
    const std::vector<Row> rows{
        {"line type", [](QZPaintGraph& graph) { graph.setLineType(2); }},
        {"line width", [](QZPaintGraph& graph) { graph.setLineWidth(3); }},
        {"stroke colour", [](QZPaintGraph& graph) { graph.setStrokeColor(Qt::red); }},
        {"fill colour", [](QZPaintGraph& graph) { graph.setFillColor(Qt::green); }},
        {"text", [](QZPaintGraph& graph) { graph.setText(QStringLiteral("note")); }},
        {"selection", [](QZPaintGraph& graph) { graph.setSelected(true); }},
        {"creation", [](QZPaintGraph& graph) { graph.setEditing(true); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto graph = finished();
        owner->displays = 0;
        row.change(*graph);
        EXPECT_EQ(owner->displays, 1);
        row.change(*graph);
        EXPECT_EQ(owner->displays, 1) << "nothing new";
    }
    const auto graph = finished();
    graph->setSelected(true);
    EXPECT_TRUE(graph->needsDisplay());
    graph->setSelected(false);
    EXPECT_FALSE(graph->needsDisplay()) << "neither selected nor in creation";
}

TEST_F(GraphDrawing, WhereTheChartHasNothingNoPointIsLeftOut)
{
    const auto graph = finished();
    drawn(*graph);
    EXPECT_EQ(graph->deltaCount(), 10);
    owner->testChart.fromPoint.answerWith([](QZPoint) { return std::nullopt; });
    const auto axises = graph->convertToLogicAxises();
    ASSERT_EQ(axises.size(), 2U);
    EXPECT_EQ(axises[0].date, 0);
    EXPECT_EQ(axises[0].price, 0.0);
}
