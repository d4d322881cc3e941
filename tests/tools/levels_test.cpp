#include "support/ToolDrawing.h"

namespace {

struct Level {
    const char* ratio;
    double y;
    const char* dash = " dash 5,3";
};

/// Each level from `left` to `right`, with its captions at `x` and beside it; the price is y.
std::string drawing(const std::vector<Level>& levels, int left, int right, int x)
{
    QString all;
    for (const auto& [ratio, y, dash] : levels) {
        all += QStringLiteral("%1,%2-%3,%2%4;\"%5\" %6,%2;\"%7\" %8,%2;")
                   .arg(left)
                   .arg(y)
                   .arg(right)
                   .arg(QLatin1String(dash), QLatin1String(ratio))
                   .arg(x)
                   .arg(y, 0, 'f', 3)
                   .arg(x + 50);
    }
    return all.toStdString();
}

} // namespace

using Levels = ToolDrawing;

TEST_F(Levels, LinesCaptionsAndDistances)
{
    const std::vector<Level> percentage{{"0.0%", 200, ""}, {"100.0%", 100, ""}, {"12.5%", 187.5},   {"25.0%", 175},
                                        {"33.3%", 166.7},  {"37.5%", 162.5},    {"50.0%", 150, ""}, {"62.5%", 137.5},
                                        {"66.7%", 133.3},  {"75.0%", 125},      {"87.5%", 112.5}};
    const std::vector<Level> space{{"0.0%", 200, ""}, {"12.5%", 187.5},   {"25.0%", 175},
                                   {"37.5%", 162.5},  {"50.0%", 150, ""}, {"62.5%", 137.5},
                                   {"75.0%", 125},    {"87.5%", 112.5},   {"100.0%", 100, ""}};
    const std::vector<Level> golden{{"0.0%", 200, ""}, {"23.6%", 176.4},  {"38.2%", 161.8},    {"50.0%", 150},
                                    {"61.8%", 138.2},  {"80.9%", 119.1},  {"100.0%", 100, ""}, {"138.2%", 61.8},
                                    {"161.8%", 38.2},  {"200.0%", 0, ""}, {"238.2%", -38.2},   {"261.8%", -61.8}};
    const std::string half = drawing({{"0.0%", 200, ""}, {"12.5%", 200}}, 200, 200, 200) + "...";
    owner->layerFrame = {20, 0, 360, 300};
    chart.rect.x = 120;
    expectFigures({
        {"cut", QZSTPercentage, {{100, 200}, {300, 100}}, drawing(percentage, 100, 300, 120), {200, 189}, 1.5},
        {"mirrored", QZSTPercentage, {{300, 200}, {200, 100}}, drawing(percentage, 300, 200, 200), {250, 260}, 6},
        {"out of sight", QZSTHorizonSpace, {{20, 200}, {120, 100}}, drawing(space, 20, 120, 20), {124, 103}, 5},
        {"half placed", QZSTHorizonSpace, {{200, 200}}, half, {203, 204}, 5},
        {"golden", QZSTGoldenSection, {{100, 200}, {300, 100}}, drawing(golden, 20, 380, 120), {200, 260}, 60},
        {"golden out of sight", QZSTGoldenSection, {{90, 200}, {30, 100}}, drawing(golden, 20, 380, 120), {30, 3}, 3},
    });
}

TEST_F(Levels, LargePricesAndWidths)
{
    chart.fromPoint.answerWith([](QZPoint p) { return QZPaintLogicAxis{20240010, 0, p.x < 400 ? 2.5e6 : 1}; });
    chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{100, 200}; });
    const Lines lines = drawn(*tool(QZSTGoldenSection, {{100, 200}}, 2));
    EXPECT_EQ(lines.at(2), "text \"250.00万\" 150,200 11px #010203");
    EXPECT_EQ(lines.at(6), "segment 0,200-400,200 w2 #010203 dash 10,6");
}
