#include "platform/QZFont.h"
#include "support/ToolDrawing.h"

#include <limits>

using Shapes = ToolDrawing;

TEST_F(Shapes, OutlinesCloseWithTheirThirdCorner)
{
    constexpr auto three = QZSTTriangle;
    constexpr auto four = QZSTParallelogram;
    expectFigures({
        {"triangle", three, {{100, 100}, {140, 130}, {200, 100}}, "100,100 140,130 200,100 100,100;", {150, 97}, 3},
        {"mirrored", three, {{100, 130}, {60, 100}, {0, 130}}, "100,130 60,100 0,130 100,130;", {80, 111}, 3.2},
        {"equal corners", three, {{50, 60}, {50, 60}, {50, 60}}, "50,60 50,60 50,60 50,60;", {53, 64}, 5},
        {"parallelogram", four, {{0, 0}, {100, 0}, {130, 40}}, "0,0 100,0 130,40 30,40 0,0;", {11, 23}, 5},
        {"mirrored", four, {{200, 90}, {100, 90}, {70, 50}}, "200,90 100,90 70,50 170,50 200,90;", {120, 47}, 3},
    });
    EXPECT_EQ(brief(*following(three, {{100, 100}, {140, 130}})), "100,100 140,130;");
    EXPECT_EQ(brief(*following(four, {{0, 0}, {100, 0}})), "0,0 100,0 0,0;");
}

TEST_F(Shapes, RectanglesTellOfTheirBars)
{
    const double below = measureText(QStringLiteral("aaa"), systemFont(12)).height + 2;
    // The count and the percentage at the first edge, the price on the inner side of the other one.
    using Row = std::tuple<QZPoint, QZPoint, std::string, const char*, const char*, double, double>;
    for (const auto& [p0, p1, rect, percent, price, firstY, priceY] :
         {Row{{100, 100}, {200, 180}, "100,100 100x80", "0.80%", "80", 104, 180 - below},
          Row{{200, 200}, {100, 100}, "200,200 -100x-100", "-0.50%", "-100", 200 - below, 104},
          Row{{100, 100}, {200, 100}, "100,100 100x0", "0.00%", "0", 100 - below, 104}}) {
        const auto graph = tool(QZSTRectangle, {p0, p1}, 2);
        EXPECT_EQ(brief(*graph), "rect " + rect + " w2;" + text(QStringLiteral("bars : 10"), 104, firstY, 12) +
                                     text(QLatin1String(percent), 204, firstY, 12) +
                                     text(QLatin1String(price), 204, priceY, 12));
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({150, p0.y + 4}), 4);
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({96, p0.y}), 4);
    }
}

TEST_F(Shapes, RectanglesDrawWhatTheChartAnswers)
{
    std::optional<QZPaintRetangleModel> answer{{std::numeric_limits<std::int32_t>::min(), 0.0F, {}, {}}};
    int askedWith = 0;
    chart.range.answerWith([&](QZPoint, QZPoint, int deltaCount) { return askedWith = deltaCount, answer; });
    const auto graph = tool(QZSTRectangle, {{100, 100}, {200, 180}}, 4);
    EXPECT_EQ(drawn(*graph).at(0), "rect 100,100 100x80 w4 #010203 round");
    EXPECT_EQ(drawn(*graph).size(), 2U) << "no captions of null strings";
    answer->identify = QStringLiteral("Unknow");
    EXPECT_TRUE(drawn(*graph).at(1).starts_with("text \"Unknow : 2147483648\" "));
    EXPECT_EQ(askedWith, answer->count);
    answer.reset();
    graph->setLineWidth(3);
    EXPECT_EQ(drawn(*graph), Lines{"rect 100,100 100x80 w3 #010203"});
}

TEST_F(Shapes, ArcsBulgeTowardsTheSecondPoint)
{
    const auto arcs = [](const char* segment, const char* turn, const char* y) {
        return QStringLiteral("%1;arc 100,100 r0 0..3.142 %2;\"0.0%\" 86,%3;arc 100,100 r23.6 0..3.142 %2;"
                              "\"23.6%\" 109.6,%3;arc 100,100 r38.2 0..3.142 %2;\"38.2%\" 124.2,%3;"
                              "arc 100,100 r50 0..3.142 %2;\"50.0%\" 136,%3;arc 100,100 r61.8 0..3.142 %2;"
                              "\"61.8%\" 147.8,%3;")
            .arg(QLatin1String(segment), QLatin1String(turn), QLatin1String(y))
            .toStdString();
    };
    const std::string up = arcs("100,100-160,180", "ccw", "86");
    const std::string down = arcs("100,100-160,20", "cw", "100");
    const std::string level = arcs("100,100-200,100", "ccw", "86");
    expectFigures({{"up, baseline", QZSTArc, {{100, 100}, {160, 180}}, up, {164.8, 100}, 3},
                   {"open side", QZSTArc, {{100, 100}, {160, 180}}, up, {161.8, 99}, 6},
                   {"on the radius", QZSTArc, {{100, 100}, {160, 180}}, up, {148, 164}, 0},
                   {"down", QZSTArc, {{100, 100}, {160, 20}}, down, {100, 35.2}, 3},
                   {"open side", QZSTArc, {{100, 100}, {160, 20}}, down, {100, 123.6}, 6},
                   {"level", QZSTArc, {{100, 100}, {200, 100}}, level, {100, 76.4}, 0}});
    const auto point = tool(QZSTArc, {{100, 100}, {100, 100}});
    EXPECT_EQ(drawn(*point).at(9), "path arc 100,100 r0 0..3.142 ccw w1 #010203");
    chart.scroll = -200000;
    drawn(*point);
    EXPECT_EQ(point->minDistanceFromPoint({100, 100}), 6) << "far off";
}
