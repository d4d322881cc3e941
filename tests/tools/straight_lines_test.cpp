#include "support/ToolDrawing.h"
#include "tools/QZPaintStraightLines.h"

#include <gtest/gtest.h>

namespace {

class StraightLines : public ToolDrawing {
protected:
    StraightLines() { owner->layerFrame = {0, 20, 100, 100}; }
};

} // namespace

TEST_F(StraightLines, FiguresAndDistances)
{
    struct Row {
        const char* name;
        QZShapeType type;
        std::vector<QZPoint> points;
        const char* segment; ///< null when nothing is drawn
        QZPoint at;
        double distance;
    };
    const std::vector<Row> rows{
        {"segment", QZSTLineSegment, {{10, 30}, {50, 30}}, "10,30-50,30", {53, 34}, 5},
        {"vertical segment", QZSTLineSegment, {{50, 20}, {50, 40}}, "50,20-50,40", {57, 90}, 7},
        {"straight line", QZSTStraight, {{10, 30}, {20, 40}}, "0,20-100,120", {190, 210}, 0},
        {"vertical straight line", QZSTStraight, {{50, 30}, {50, 60}}, "50,20-50,120", {57, 500}, 7},
        {"straight line of equal points", QZSTStraight, {{50, 60}, {50, 60}}, nullptr, {53, 64}, 5},
        {"ray to the right", QZSTRay, {{40, 50}, {80, 20}}, "40,50-100,5", {63, 39}, 5},
        {"ray to the left", QZSTRay, {{60, 50}, {40, 50}}, "60,50-0,50", {20, 52}, 2},
        {"behind a ray's start", QZSTRay, {{60, 50}, {40, 40}}, "60,50-0,20", {64, 53}, 5},
        {"vertical ray upwards", QZSTRay, {{50, 50}, {50, 60}}, "50,50-50,120", {53, 90}, 3},
        {"vertical ray downwards", QZSTRay, {{50, 50}, {50, 40}}, "50,50-50,20", {53, 30}, 3},
        {"ray of equal points", QZSTRay, {{50, 50}, {50, 50}}, nullptr, {53, 54}, 5},
        {"horizontal line", QZSTHorizon, {{90, 45}}, "0,45-100,45", {0, 48}, 3},
        {"beyond a horizontal line", QZSTHorizon, {{90, 45}}, "0,45-100,45", {110, 45}, 10},
        {"arrow of equal points", QZSTArrowSegment, {{50, 50}, {50, 50}}, "50,50-50,50", {53, 54}, 5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(row.type, row.points);
        Lines expected;
        if (row.segment != nullptr)
            expected = {std::string("segment ") + row.segment + " w1 #010203"};
        EXPECT_EQ(drawn(*graph), expected);
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint(row.at), row.distance);
    }
}

TEST_F(StraightLines, ArrowHeads)
{
    struct Row {
        const char* name = nullptr;
        QZPoint from, to;
        const char* head = nullptr;
    };
    // 10 px at 30 degrees: 8.660 along the shaft, 5 off it.
    for (const Row& row : {Row{"to the left", {60, 50}, {10, 50}, "18.66,45 10,50 18.66,55"},
                           Row{"up", {50, 20}, {50, 70}, "45,61.34 50,70 55,61.34"}}) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(QZSTArrowSegment, {row.from, row.to}, 3);
        graph->setLineType(1);
        EXPECT_EQ(drawn(*graph).at(1), std::string("path ") + row.head + " w3 #010203") << "solid on a dashed shaft";
        graph->setLineWidth(4);
        EXPECT_TRUE(drawn(*graph).at(0).ends_with(" w4 #010203 dash 40,20 round"));
        EXPECT_TRUE(drawn(*graph).at(1).ends_with(" w4 #010203 round"));
    }
}

TEST_F(StraightLines, PriceLines)
{
    struct Row {
        const char* name;
        double price, validLeft;
        const char* text;
    };
    for (const Row& row : {Row{"usual", 40, 0, "text \"40.000\" 32,42 12px #010203"},
                           Row{"point left of the valid area", 40, 60, "text \"40.000\" 62,42 12px #010203"},
                           Row{"one million", 1e6, 0, "text \"1000000.000\" 32,42 12px #010203"},
                           Row{"minus two million", -2e6, 0, "text \"-200.00万\" 32,42 12px #010203"}}) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(QZSTToolPriceLine, {{30, 40}}, 2);
        owner->testChart.rect.x = row.validLeft;
        owner->testChart.fromPoint.answerWith([&row](QZPoint) { return QZPaintLogicAxis{20240003, 0, row.price}; });
        owner->testChart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{30, 40}; });
        EXPECT_EQ(drawn(*graph), (Lines{"segment 30,40-100,40 w2 #010203", row.text}));
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({20, 40}), 10) << "not left of its point";
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({99, 46}), 6);
    }
}
