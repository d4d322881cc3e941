#include "support/ToolDrawing.h"

using Waves = ToolDrawing;

TEST_F(Waves, PolylinesGrowWithTheirPoints)
{
    const Points zigzag{{0, 20}, {40, 50}, {80, 20}, {120, 50}, {160, 20}, {200, 50}, {240, 20}, {280, 50}, {320, 20}};
    const auto first = [&](int count) { return Points(zigzag.begin(), zigzag.begin() + count); };
    const std::string three = "0,20 40,50 80,20 120,50";
    expectFigures({
        {"three waves", QZST3Waves, first(4), three + ";", {123, 54}, 5},
        {"M", QZSTMWLine, first(5), three + " 160,20;", {166, 20}, 6},
        {"five waves", QZST5Waves, first(6), three + " 160,20 200,50;", {180, 40}, 4},
        {"three of five waves", QZST5Waves, first(4), three + " 120,50;", {400, 20}, 6},
        {"head", QZSTHeadLine, first(7), three + " 160,20 200,50 240,20;", {220, 40}, 4},
        {"eight waves", QZST8Waves, first(9), three + " 160,20 200,50 240,20 280,50 320,20;", {323, 16}, 5},
    });
}

TEST_F(Waves, WaveRuleProjectsTheMoveFromItsThirdPoint)
{
    const Points points{{100, 100}, {140, 200}, {160, 150}};
    const std::string up =
        "\"0.0% (150.00)\" 190,150;\"38.2% (188.20)\" 190,188.2;\"61.8% (211.80)\" 190,211.8;"
        "\"100.0% (250.00)\" 190,250;\"161.8% (311.80)\" 190,311.8;\"261.8% (411.80)\" 190,411.8;"
        "100,100 140,200 160,150 M 160,150 190,150 M 160,188.2 190,188.2 M 160,211.8 190,211.8 M 160,250 190,250 M "
        "160,311.8 190,311.8 M 160,411.8 190,411.8 M 175,150 175,411.8;";
    expectFigures({{"not capped", QZSTWaveRule, points, up, {400, 150}, 210},
                   {"spine", QZSTWaveRule, points, up, {172, 280}, 3},
                   {"last tick", QZSTWaveRule, points, up, {193, 415.8}, 5},
                   {"wave", QZSTWaveRule, points, up, {100, 95}, 5}});
    EXPECT_EQ(brief(*following(QZSTWaveRule, {points[0], points[1]})), "100,100 140,200;");

    EXPECT_EQ(drawn(*tool(QZSTWaveRule, {points[1], {100, 100}, points[2]})).at(5),
              "text \"261.8% (-111.80)\" 190,-111.8 11px #010203");
    const auto level = tool(QZSTWaveRule, {points[0], {140, 100}, points[2]}, 2);
    EXPECT_EQ(drawn(*level).at(5), "text \"261.8% (150.00)\" 190,150 12px #010203");
    // In 32 bits a cent below a million is a million.
    for (const auto& [price, text] : {std::pair{999999.99, "(1000000.00)"}, {-2e6, "(-200.00万)"}}) {
        chart.fromPoint.answerWith([price = price](QZPoint) { return QZPaintLogicAxis{20240003, 0, price}; });
        EXPECT_NE(drawn(*level).at(0).find(text), std::string::npos);
    }
}

TEST_F(Waves, TurnRuleRepeatsItsTurnOnBothRetracements)
{
    const Points points{{100, 100}, {150, 200}};
    const std::string up =
        "\"38.2% (161.80)\" 184.1,161.8;\"61.8% (138.20)\" 195.9,138.2;"
        "100,100 150,200 200,100 M 154.1,161.8 184.1,161.8 M 165.9,138.2 195.9,138.2 M "
        "150,200 169.1,161.8 188.2,200 M 161.396,176.392 191.396,176.392 M 165.904,185.408 195.904,185.408 M "
        "150,200 180.9,138.2 211.8,200 M 177.704,161.808 207.704,161.808 M 184.996,176.392 214.996,176.392;";
    expectFigures({{"tick", QZSTTurnRule, points, up, {198.9, 134.2}, 5},
                   {"last turn", QZSTTurnRule, points, up, {214.8, 204}, 5},
                   {"mirrored leg", QZSTTurnRule, points, up, {203, 96}, 5}});
    const Lines down = drawn(*tool(QZSTTurnRule, {points[1], points[0]}, 2));
    EXPECT_EQ(down.at(1), "text \"61.8% (161.80)\" 84.1,161.8 12px #010203");
    EXPECT_TRUE(down.at(2).starts_with("path 150,200 100,100 50,200 M 65.9,138.2 95.9,138.2 "));
}
