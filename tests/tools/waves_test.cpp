#include "support/ToolDrawing.h"

using Waves = ToolDrawing;

TEST_F(Waves, PolylinesGrowWithTheirPoints)
{
    const Points zigzag{{0, 20}, {40, 50}, {80, 20}, {120, 50}, {160, 20}, {200, 50}, {240, 20}, {280, 50}, {320, 20}};
    const std::string three = "path 0,20 40,50 80,20 120,50";
    for (const auto& [type, count, path] : {std::tuple{QZST3Waves, 4, three},
                                            {QZSTMWLine, 5, three + " 160,20"},
                                            {QZST5Waves, 6, three + " 160,20 200,50"},
                                            {QZSTHeadLine, 7, three + " 160,20 200,50 240,20"},
                                            {QZST8Waves, 9, three + " 160,20 200,50 240,20 280,50 320,20"}}) {
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        const auto placing = tool(type, {zigzag.begin(), zigzag.begin() + 3});
        placing->mouseMoved(zigzag[3]);
        EXPECT_EQ(drawn(*placing), Lines{three + " w1 #010203"});
        const auto graph = tool(type, {zigzag.begin(), zigzag.begin() + count});
        EXPECT_EQ(drawn(*graph), Lines{path + " w1 #010203"});
        const QZPoint last = graph->points().back();
        EXPECT_EQ(graph->minDistanceFromPoint({last.x + 3, last.y + 4}), 5);
        EXPECT_EQ(graph->minDistanceFromPoint({last.x + 30, last.y}), 6);
    }
}

TEST_F(Waves, WaveRuleProjectsTheMoveFromItsThirdPoint)
{
    const auto graph = tool(QZSTWaveRule, {{100, 100}}, 2);
    graph->mouseMoved({140, 200});
    EXPECT_EQ(drawn(*graph), Lines{"path 100,100 140,200 w2 #010203"});
    graph->mouseDown({140, 200});
    graph->mouseMoved({160, 150});
    const Lines up{"text \"0.0% (150.00)\" 190,150 12px #010203",
                   "text \"38.2% (188.20)\" 190,188.2 12px #010203",
                   "text \"61.8% (211.80)\" 190,211.8 12px #010203",
                   "text \"100.0% (250.00)\" 190,250 12px #010203",
                   "text \"161.8% (311.80)\" 190,311.8 12px #010203",
                   "text \"261.8% (411.80)\" 190,411.8 12px #010203",
                   "path 100,100 140,200 160,150 M 160,150 190,150 M 160,188.2 190,188.2 M 160,211.8 190,211.8 M "
                   "160,250 190,250 M 160,311.8 190,311.8 M 160,411.8 190,411.8 M 175,150 175,411.8 w2 #010203"};
    EXPECT_EQ(drawn(*graph), up);
    graph->mouseDown({160, 150});
    EXPECT_EQ(drawn(*graph), up);
    EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({400, 150}), 210) << "not capped";
    EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({172, 280}), 3) << "the spine";
    EXPECT_NEAR(graph->minDistanceFromPoint({193, 415.8}), 5, 1e-5) << "the last tick";
    EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({100, 95}), 5) << "the wave";

    // In 32 bits a cent below a million is a million.
    for (const auto& [price, text] : {std::pair{999999.99, "(1000000.00)"}, {-2e6, "(-200.00万)"}}) {
        chart.fromPoint.answerWith([price = price](QZPoint) { return QZPaintLogicAxis{20240003, 0, price}; });
        EXPECT_NE(drawn(*graph)[0].find(text), std::string::npos);
    }
}

TEST_F(Waves, WaveRuleTurnsWithItsWave)
{
    const Lines down = drawn(*tool(QZSTWaveRule, {{140, 200}, {100, 100}, {160, 150}}));
    EXPECT_EQ(down.at(1), "text \"38.2% (111.80)\" 190,111.8 11px #010203");
    EXPECT_EQ(down.at(5), "text \"261.8% (-111.80)\" 190,-111.8 11px #010203");
    const Lines level = drawn(*tool(QZSTWaveRule, {{100, 200}, {140, 200}, {160, 150}}));
    EXPECT_EQ(level.at(5), "text \"261.8% (150.00)\" 190,150 11px #010203");
}

TEST_F(Waves, TurnRuleRepeatsItsTurnOnBothRetracements)
{
    const auto graph = tool(QZSTTurnRule, {{100, 100}, {150, 200}});
    EXPECT_EQ(
        drawn(*graph),
        (Lines{"text \"38.2% (161.80)\" 184.1,161.8 11px #010203", "text \"61.8% (138.20)\" 195.9,138.2 11px #010203",
               "path 100,100 150,200 200,100 M 154.1,161.8 184.1,161.8 M 165.9,138.2 195.9,138.2 M "
               "150,200 169.1,161.8 188.2,200 M 161.396,176.392 191.396,176.392 M 165.904,185.408 195.904,185.408 M "
               "150,200 180.9,138.2 211.8,200 M 177.704,161.808 207.704,161.808 M 184.996,176.392 214.996,176.392 "
               "w1 #010203"}));
    for (const auto& [at, distance] : {std::pair{QZPoint{198.9, 134.2}, 5.0}, {{214.8, 204}, 5.0}, {{203, 96}, 5.0}})
        EXPECT_NEAR(graph->minDistanceFromPoint(at), distance, 1e-5) << at.x;
    const Lines down = drawn(*tool(QZSTTurnRule, {{150, 200}, {100, 100}}));
    EXPECT_EQ(down.at(1), "text \"61.8% (161.80)\" 84.1,161.8 11px #010203");
    EXPECT_TRUE(down.at(2).starts_with("path 150,200 100,100 50,200 M 65.9,138.2 95.9,138.2 "));
}
