#include "platform/QZFont.h"
#include "support/ToolDrawing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// On a host that counts both ends of a range and moves what it snaps by 1 px.
class TimeCycles : public ToolDrawing {
protected:
    TimeCycles()
    {
        owner->layerFrame = {0, 10, 400, 300};
        chart.magnetX.answerWith([](double x, bool canOverflow) { return canOverflow ? x + 1 : 0; });
        chart.range.answerWith([](QZPoint from, QZPoint to, int deltaCount) {
            const int bars = static_cast<int>(to.x - from.x) / 10;
            return QZPaintRetangleModel{
                bars + (bars < 0 ? -1 : 1), 0, {}, deltaCount == 0 ? QString() : QStringLiteral("bars")};
        });
    }

    /// Lines over the chart's full height at their x, with their counts at its top.
    static std::string counted(const std::vector<std::pair<int, const char*>>& lines)
    {
        QString all;
        for (const auto& [x, count] : lines)
            all += QStringLiteral("%1,0-%1,300;\"%2\" %3,280;").arg(x).arg(QLatin1String(count)).arg(x + 2);
        return all.toStdString();
    }
};

} // namespace

TEST_F(TimeCycles, FiguresAndDistances)
{
    const auto textX = 145 - measureText(QStringLiteral("bars : 10"), systemFont(11)).width / 2;
    const std::string bars = ";\"bars : 10\" " + QString::number(textX).toStdString() + ",66;";
    const std::string rule = "100,50-100,80;190,50-190,80;fill 100,50 90x30 #33010203;100,65-190,65 dash 5,3" + bars;
    const std::string ruleBack =
        "190,80-190,50;100,80-100,50;fill 190,80 -90x-30 #33010203;190,65-100,65 dash 5,3" + bars;
    const std::string symmetric = R"(141,10-141,310;201,10-201,310;261,10-261,310;"7" 202,280;)";
    const std::string mirror = R"(261,10-261,310;201,10-201,310;141,10-141,310;"-7" 202,280;)";
    const std::string up = R"(130,140 100,100 70,140;100,100-100,140;"36.9" 104,104;)";
    const std::string down = R"(70,60 100,100 130,60;100,100-100,60;"36.9" 79,76;)";
    const std::string flat = R"(100,100 100,100 100,100;100,100-100,100;"0" 104,104;)";
    const std::string zones = counted({{350, "1"}, {350, "1"}, {360, "2"}, {370, "3"}, {390, "5"}, {420, "8"}});
    const std::string lateZones = counted({{60, "13"}, {140, "21"}, {270, "34"}, {480, "55"}});
    const std::string cycle = counted({{100, "1"}, {190, "10"}, {280, "19"}, {370, "28"}, {460, "37"}});
    const std::string back = counted({{200, "-1"}, {100, "-11"}, {0, "-21"}, {-100, "-31"}});
    const std::string late = counted({{-70, "1"}, {230, "31"}, {380, "46"}, {530, "61"}});
    const std::string free = counted({{100, "1"}, {250, "16"}, {250, "16"}, {400, "31"}, {550, "46"}});
    expectFigures({
        {"time zones", QZSTFibonacci, {{350, 50}}, zones, {353, 999}, 3},
        {"zones from the left", QZSTFibonacci, {{-60, 50}}, lateZones, {10, 50}, 6},
        {"cycle", QZSTCycle, {{100, 50}, {190, 80}}, cycle, {193, 999}, 3},
        {"cycle to the left", QZSTCycle, {{200, 50}, {100, 80}}, back, {220, 0}, 20},
        {"cycle from the left", QZSTCycle, {{-70, 50}, {80, 80}}, late, {90, 80}, 140},
        {"free", QZSTFreeFeis, {{100, 50}, {250, 80}}, free, {252, 999}, 2},
        {"time rule", QZSTTimeRule, {{100, 50}, {190, 80}}, rule, {150, 55}, 10},
        {"rule to the left", QZSTTimeRule, {{190, 80}, {100, 50}}, ruleBack, {103, 75}, 3},
        {"symmetric", QZSTSymmetric, {{200, 50}, {260, 80}}, symmetric, {143, 500}, 2},
        {"far from symmetric", QZSTSymmetric, {{200, 50}, {140, 80}}, mirror, {170, 500}, 6},
        {"angle", QZSTSymmetricAngle, {{100, 100}, {130, 140}}, up, {60, 140}, 10},
        {"angle to the lower left", QZSTSymmetricAngle, {{100, 100}, {70, 60}}, down, {104, 70}, 4},
        {"half-placed angle", QZSTSymmetricAngle, {{100, 100}}, flat, {103, 104}, 5},
    });
}

TEST_F(TimeCycles, ACycleWithoutASpanKeepsItsStateSaved)
{
    const auto graph = tool(QZSTCycle, {{100, 50}}, 3);
    RecordingContext context;
    graph->drawInContext(context);
    EXPECT_EQ(context.lines.at(1), "text \"1\" 104,280 13px #010203");
    context.strokeSegment({});
    EXPECT_EQ(context.lines.back(), "segment 0,0-0,0 w3 #010203");
    context.restoreState();
    EXPECT_TRUE(context.isBalanced());
    EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint({90, 999}), 10);
}

TEST_F(TimeCycles, EndWhateverAHostAnswers)
{
    constexpr int most = std::numeric_limits<int>::max();
    using Row = std::tuple<const char*, QZShapeType, int, double, std::ptrdiff_t>;
    for (const auto& [name, type, count, x, captions] :
         {Row{"no word for bars", QZSTTimeRule, 9, 0, 0}, Row{"no range", QZSTCycle, 0, 200, 1},
          Row{"no step", QZSTCycle, -1, 200, 1}, Row{"no such bar", QZSTCycle, -9, missingCoordinate, 2},
          Row{"not a number", QZSTCycle, -9, std::nan(""), 1}, Row{"the same bar for ever", QZSTCycle, -9, 200, 1001},
          Row{"the last Fibonacci number", QZSTFreeFeis, -2, 200, 47},
          Row{"the last count of 32 bits", QZSTCycle, -most, 200, 2}, Row{"beyond it", QZSTCycle, -most - 1, 200, 1}}) {
        SCOPED_TRACE(name);
        chart.range.answerWith([count = count](QZPoint, QZPoint, int) {
            return count == 0 ? std::nullopt : std::optional(QZPaintRetangleModel{count, 0, {}, {}});
        });
        chart.barToTheRight.answerWith([x = x](float, int) { return x; });
        const auto graph = tool(type, {{300, 50}, {200, 80}});
        const int asked = chart.range.calls();
        EXPECT_EQ(std::ranges::count(brief(*graph), '"'), 2 * captions);
        EXPECT_EQ(chart.range.calls() - asked, 2) << "to place the points, and for the figure";
    }
}
