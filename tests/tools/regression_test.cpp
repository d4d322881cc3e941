#include "support/ToolDrawing.h"
#include "tools/QZPaintRegression.h"

namespace {

// y = x / 2, a parallel 20 px above and one 10 px below it, over the bars from x1 + 1 to x2 - 1.
bool fit(QZRegressionCalcData& data)
{
    data.x1 += 1;
    data.x2 -= 1;
    data.line1Y1 = data.x1 / 2;
    data.line1Y2 = data.x2 / 2;
    data.line2Y1 = data.line1Y1 + 20;
    data.line2Y2 = data.line1Y2 + 20;
    data.line3Y1 = data.line1Y1 - 10;
    data.line3Y2 = data.line1Y2 - 10;
    return true;
}

class Regression : public ToolDrawing {
protected:
    Regression()
    {
        chart.rect = {10, 20, 380, 200};
        chart.regression.answerWith(fit);
    }

    static std::string guide(double x)
    {
        const std::string at = std::to_string(static_cast<int>(x));
        return "segment " + at + ",20-" + at + ",220 w1 #010203 dash 5,3";
    }
};

} // namespace

TEST_F(Regression, DrawsWhatTheHostFits)
{
    struct Row {
        const char* name;
        QZShapeType type;
        Points points;
        Lines lines;
    };
    const Lines line{"segment 101,50.5-199,99.5 w2 #010203 dash 6,6"};
    const std::vector<Row> rows{
        {"line", QZSTLineRegression, {{100, 30}, {200, 90}}, line},
        {"line, clicked from the right", QZSTLineRegression, {{200, 30}, {100, 90}}, line},
        {"region",
         QZSTRegionRegression,
         {{100, 30}, {200, 90}},
         {line[0], "segment 101,70.5-199,119.5 w2 #010203 dash 6,6", "segment 101,40.5-199,89.5 w2 #010203 dash 6,6"}},
        {"pipe",
         QZSTPipeRegression,
         {{100, 30}, {200, 90}},
         {line[0], "segment 199,99.5-390,195 w2 #010203 dash 10,6", "segment 101,70.5-199,119.5 w2 #010203 dash 6,6",
          "segment 199,119.5-390,215 w2 #010203 dash 10,6", "segment 101,40.5-199,89.5 w2 #010203 dash 6,6",
          "segment 199,89.5-390,185 w2 #010203 dash 10,6"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        chart.regression.answerWith(fit);
        const auto graph = tool(row.type, row.points, 2);
        graph->setLineType(2);
        EXPECT_EQ(drawn(*graph), row.lines) << "idle, without guides";
        const bool isMirrored = row.points[0].x > row.points[1].x;
        const double first = isMirrored ? 199 : 101;
        const double second = isMirrored ? 101 : 199;
        EXPECT_EQ(graph->points(), (Points{{first, 30}, {second, 90}})) << "moved onto the host's bars";
        graph->setSelected(true);
        Lines all{guide(first), guide(second)};
        all.insert(all.end(), row.lines.begin(), row.lines.end());
        EXPECT_EQ(drawn(*graph), all) << "selected";
        chart.regression.answerWith([](QZRegressionCalcData&) { return false; });
        graph->setSelected(false);
        EXPECT_EQ(drawn(*graph), (Lines{guide(row.points[0].x), guide(row.points[1].x)})) << "the host cannot";
    }
}

TEST_F(Regression, WhileItsPointsArePlaced)
{
    const auto graph = tool(QZSTLineRegression, {});
    graph->mouseMoved({100, 30});
    EXPECT_EQ(drawn(*graph), (Lines{guide(100), guide(0)})) << "guides alone";
    graph->mouseDown({100, 30});
    graph->mouseMoved({140, 90});
    EXPECT_EQ(drawn(*graph), (Lines{guide(101), guide(139), "segment 101,50.5-139,69.5 w1 #010203"}));

    RecordingContext context;
    graph->drawInContext(context);
    const auto handle = std::ranges::find_if(context.lines, [](const auto& l) { return l.starts_with("ellipse"); });
    EXPECT_LT(handle, context.lines.end() - 1) << "handles lie under the lines";
    context.strokeSegment({{0, 0}, {1, 1}});
    EXPECT_EQ(context.lines.back(), "segment 0,0-1,1 w1 #010203") << "the style stays set";
}

TEST_F(Regression, HitsItsGuidesAndItsLines)
{
    struct Row {
        const char* name;
        QZShapeType type;
        QZPoint at;
        double distance;
        bool isHostAsked;
    };
    constexpr double slope = 0.894427191; // of one px of height, across a line that rises 1 in 2
    const std::vector<Row> rows{
        {"line, on its guide", QZSTLineRegression, {103, 999}, 2, true},
        {"line, above the line", QZSTLineRegression, {150, 79}, 4 * slope, true},
        {"line, beside the range", QZSTLineRegression, {207, 103}, 6, false},
        {"line, at the reach of a guide", QZSTLineRegression, {205, 300}, 6, false},
        {"line, within the reach of a guide", QZSTLineRegression, {204, 300}, 5, true},
        {"line knows no channel", QZSTLineRegression, {150, 95}, 20 * slope, true},
        {"region, upper line", QZSTRegionRegression, {150, 96}, 1 * slope, true},
        {"region, lower line", QZSTRegionRegression, {150, 63}, 2 * slope, true},
        {"region, beside the range", QZSTRegionRegression, {94, 47}, 6, false},
        {"pipe, its continuation", QZSTPipeRegression, {300, 151}, 1 * slope, true},
        {"pipe, left of the range", QZSTPipeRegression, {90, 45}, 11, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(row.type, {{100, 30}, {200, 90}});
        drawn(*graph);
        const int calls = chart.regression.calls();
        EXPECT_NEAR(graph->minDistanceFromPoint(row.at), row.distance, 1e-5);
        EXPECT_EQ(chart.regression.calls() > calls, row.isHostAsked);
    }
    const auto graph = tool(QZSTPipeRegression, {{100, 30}, {200, 90}});
    chart.regression.answerWith([](QZRegressionCalcData&) { return false; });
    EXPECT_EQ(graph->minDistanceFromPoint({150, 75}), 6) << "the host cannot: guides alone";
    EXPECT_EQ(graph->minDistanceFromPoint({198, 75}), 2);
}

TEST_F(Regression, AGuideIsTakenHoldOfAtAnyHeightAndStaysHeld)
{
    const auto graph = tool(QZSTRegionRegression, {{100, 30}, {200, 90}});
    graph->setSelected(true);
    EXPECT_FALSE(graph->selectKeyPointNearPoint({106, 30}));
    EXPECT_TRUE(graph->selectKeyPointNearPoint({205, 999}));
    EXPECT_EQ(graph->currentPoint(), 1);
    for (int x = 200; x >= 60; x -= 10) {
        graph->mouseDragged({1.0 * x, 50});
        drawn(*graph);
        EXPECT_EQ(graph->currentPoint(), 1);
    }
    graph->mouseUp({60, 50});
    EXPECT_EQ(drawn(*graph).back(), "segment 61,20.5-99,39.5 w1 #010203") << "drawn from left to right";
}
