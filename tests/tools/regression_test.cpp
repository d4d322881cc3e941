#include "support/ToolDrawing.h"
#include "tools/QZPaintRegression.h"

namespace {

// y = x / 2, a parallel 20 px above and one 10 px below it, over the bars from x1 + 1 to x2 - 1.
bool fit(QZRegressionCalcData& data)
{
    const double left = data.x1 + 1;
    const double right = data.x2 - 1;
    data = {left, right, left / 2, right / 2, left / 2 + 20, right / 2 + 20, left / 2 - 10, right / 2 - 10};
    return true;
}

const auto failToFit = [](QZRegressionCalcData&) { return false; };

class Regression : public ToolDrawing {
protected:
    Regression()
    {
        chart.rect = {10, 20, 380, 200};
        chart.regression.answerWith(fit);
    }

    /// As brief() tells of them.
    static std::string guides(double first, double second)
    {
        return QStringLiteral("%1,20-%1,220 dash 5,3;%2,20-%2,220 dash 5,3;").arg(first).arg(second).toStdString();
    }
};

} // namespace

TEST_F(Regression, DrawsWhatTheHostFits)
{
    const std::string line = "101,50.5-199,99.5 w2 dash 6,6;";
    const std::string upper = "101,70.5-199,119.5 w2 dash 6,6;";
    const std::string lower = "101,40.5-199,89.5 w2 dash 6,6;";
    std::string region = line;
    region.append(upper).append(lower);
    const std::string pipe = line + "199,99.5-390,195 w2 dash 10,6;" + upper + "199,119.5-390,215 w2 dash 10,6;" +
                             lower + "199,89.5-390,185 w2 dash 10,6;";
    using Row = std::tuple<const char*, QZShapeType, double, double, std::string>;
    for (const auto& [name, type, first, second, lines] :
         {Row{"line", QZSTLineRegression, 101, 199, line}, Row{"from the right", QZSTLineRegression, 199, 101, line},
          Row{"region", QZSTRegionRegression, 101, 199, region}, Row{"pipe", QZSTPipeRegression, 101, 199, pipe}}) {
        SCOPED_TRACE(name);
        chart.regression.answerWith(fit);
        const bool isMirrored = first > second;
        const auto graph = tool(type, {{isMirrored ? 200.0 : 100.0, 30}, {isMirrored ? 100.0 : 200.0, 90}}, 2);
        graph->setLineType(2);
        EXPECT_EQ(brief(*graph), lines) << "idle, without guides";
        EXPECT_EQ(graph->points(), (Points{{first, 30}, {second, 90}})) << "moved onto the host's bars";
        graph->setSelected(true);
        EXPECT_EQ(brief(*graph), guides(first, second) + lines) << "selected";
        chart.regression.answerWith(failToFit);
        graph->setSelected(false);
        EXPECT_EQ(brief(*graph), isMirrored ? guides(200, 100) : guides(100, 200)) << "the host cannot";
    }
}

TEST_F(Regression, WhileItsPointsArePlaced)
{
    const auto graph = tool(QZSTLineRegression, {});
    graph->mouseMoved({100, 30});
    EXPECT_EQ(brief(*graph), guides(100, 0)) << "guides alone";
    graph->mouseDown({100, 30});
    graph->mouseMoved({140, 90});
    RecordingContext context;
    graph->drawInContext(context);
    context.strokeSegment({{0, 0}, {1, 1}});
    EXPECT_EQ(context.lines, (Lines{"segment 101,20-101,220 w1 #010203 dash 5,3",
                                    "segment 139,20-139,220 w1 #010203 dash 5,3", "clear 98,27 6x6",
                                    "ellipse 98,27 6x6 w2 #1d3fbb", "clear 136,87 6x6", "ellipse 136,87 6x6 w2 #1d3fbb",
                                    "segment 101,50.5-139,69.5 w1 #010203", "segment 0,0-1,1 w1 #010203"}))
        << "handles lie under the lines, and the style stays set";
}

TEST_F(Regression, HitsItsGuidesAndItsLines)
{
    constexpr double slope = 0.894427191; // of one px of height, across a line that rises 1 in 2
    using Row = std::tuple<const char*, QZShapeType, QZPoint, double, bool>;
    for (const auto& [name, type, at, distance, isHostAsked] :
         {Row{"on its guide", QZSTLineRegression, {103, 999}, 2, true},
          Row{"above the line", QZSTLineRegression, {150, 79}, 4 * slope, true},
          Row{"beside the range", QZSTLineRegression, {207, 103}, 6, false},
          Row{"at the reach of a guide", QZSTLineRegression, {205, 300}, 6, false},
          Row{"within the reach of a guide", QZSTLineRegression, {204, 300}, 5, true},
          Row{"a line knows no channel", QZSTLineRegression, {150, 95}, 20 * slope, true},
          Row{"upper line", QZSTRegionRegression, {150, 96}, 1 * slope, true},
          Row{"lower line", QZSTRegionRegression, {150, 63}, 2 * slope, true},
          Row{"region, at the reach of a guide", QZSTRegionRegression, {95, 47}, 6, false},
          Row{"pipe, its continuation", QZSTPipeRegression, {300, 151}, 1 * slope, true},
          Row{"pipe, left of the range", QZSTPipeRegression, {90, 45}, 11, true}}) {
        SCOPED_TRACE(name);
        const auto graph = tool(type, {{100, 30}, {200, 90}});
        drawn(*graph);
        const int calls = chart.regression.calls();
        EXPECT_NEAR(graph->minDistanceFromPoint(at), distance, 1e-5);
        EXPECT_EQ(chart.regression.calls() > calls, isHostAsked);
    }
    const auto graph = tool(QZSTPipeRegression, {{100, 30}, {200, 90}});
    chart.regression.answerWith(failToFit);
    EXPECT_EQ(graph->minDistanceFromPoint({150, 75}), 6) << "the host cannot: guides alone";
    EXPECT_EQ(graph->minDistanceFromPoint({198, 75}), 2);
}

TEST_F(Regression, AGuideIsTakenHoldOfAtAnyHeightAndStaysHeld)
{
    const auto graph = tool(QZSTRegionRegression, {{100, 30}, {200, 90}});
    graph->setSelected(true);
    EXPECT_FALSE(graph->selectKeyPointNearPoint({106, 30}));
    EXPECT_TRUE(graph->selectKeyPointNearPoint({205, 999}));
    for (int x = 200; x >= 60; x -= 10) {
        graph->mouseDragged({1.0 * x, 50});
        drawn(*graph);
        EXPECT_EQ(graph->currentPoint(), 1);
    }
    graph->mouseUp({60, 50});
    EXPECT_EQ(drawn(*graph).back(), "segment 61,20.5-99,39.5 w1 #010203") << "drawn from left to right";
}
