#include "support/ToolDrawing.h"

namespace {

class StraightLines : public ToolDrawing {
protected:
    StraightLines() { owner->layerFrame = {0, 20, 100, 100}; }
};

} // namespace

TEST_F(StraightLines, FiguresAndDistances)
{
    // The head: 10 px at 30 degrees, 8.660 along the shaft, 5 off it.
    expectFigures({
        {"segment", QZSTLineSegment, {{10, 30}, {50, 30}}, "10,30-50,30;", {53, 34}, 5},
        {"vertical segment", QZSTLineSegment, {{50, 20}, {50, 40}}, "50,20-50,40;", {57, 90}, 7},
        {"straight line", QZSTStraight, {{10, 30}, {20, 40}}, "0,20-100,120;", {190, 210}, 0},
        {"vertical straight line", QZSTStraight, {{50, 30}, {50, 60}}, "50,20-50,120;", {57, 500}, 7},
        {"straight line of equal points", QZSTStraight, {{50, 60}, {50, 60}}, "", {53, 64}, 5},
        {"ray to the right", QZSTRay, {{40, 50}, {80, 20}}, "40,50-100,5;", {63, 39}, 5},
        {"ray to the left", QZSTRay, {{60, 50}, {40, 50}}, "60,50-0,50;", {20, 52}, 2},
        {"behind a ray's start", QZSTRay, {{60, 50}, {40, 40}}, "60,50-0,20;", {64, 53}, 5},
        {"vertical ray upwards", QZSTRay, {{50, 50}, {50, 60}}, "50,50-50,120;", {53, 90}, 3},
        {"vertical ray downwards", QZSTRay, {{50, 50}, {50, 40}}, "50,50-50,20;", {53, 30}, 3},
        {"ray of equal points", QZSTRay, {{50, 50}, {50, 50}}, "", {53, 54}, 5},
        {"horizontal line", QZSTHorizon, {{90, 45}}, "0,45-100,45;", {0, 48}, 3},
        {"beyond a horizontal line", QZSTHorizon, {{90, 45}}, "0,45-100,45;", {110, 45}, 10},
        {"arrow of equal points", QZSTArrowSegment, {{50, 50}, {50, 50}}, "50,50-50,50;", {53, 54}, 5},
        {"arrow", QZSTArrowSegment, {{60, 50}, {10, 50}}, "60,50-10,50;18.66,45 10,50 18.66,55;", {57, 54}, 4},
        {"arrow up", QZSTArrowSegment, {{50, 20}, {50, 70}}, "50,20-50,70;45,61.34 50,70 55,61.34;", {57, 90}, 7},
    });
    const auto arrow = tool(QZSTArrowSegment, {{60, 50}, {10, 50}}, 3);
    arrow->setLineType(1);
    EXPECT_EQ(brief(*arrow), "60,50-10,50 w3 dash 30,15;18.66,45 10,50 18.66,55 w3;") << "a solid head";
    arrow->setLineWidth(4);
    EXPECT_EQ(brief(*arrow), "60,50-10,50 w4 dash 40,20 round;18.66,45 10,50 18.66,55 w4 round;");
}

TEST_F(StraightLines, PriceLines)
{
    using Row = std::tuple<const char*, double, double, const char*>;
    for (const auto& [name, price, validLeft, caption] :
         {Row{"usual", 40, 0, "\"40.000\" 32,42"}, Row{"point left of the valid area", 40, 60, "\"40.000\" 62,42"},
          Row{"one million", 1e6, 0, "\"1000000.000\" 32,42"},
          Row{"minus two million", -2e6, 0, "\"-200.00万\" 32,42"}}) {
        SCOPED_TRACE(name);
        const auto graph = tool(QZSTToolPriceLine, {{30, 40}}, 2);
        chart.rect.x = validLeft;
        chart.fromPoint.answerWith([price = price](QZPoint) { return QZPaintLogicAxis{20240003, 0, price}; });
        chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{30, 40}; });
        EXPECT_EQ(brief(*graph), std::string("30,40-100,40 w2;") + caption + " 12px;");
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({20, 40}), 10) << "not left of its point";
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({99, 46}), 6);
        chart.priceCaption.answerWith([](double quoted) { return QStringLiteral("at %1").arg(quoted); });
        EXPECT_NE(brief(*graph).find("\"at "), std::string::npos) << "as the chart writes it";
        chart.priceCaption.answerWith([](double) { return std::nullopt; });
    }
}
