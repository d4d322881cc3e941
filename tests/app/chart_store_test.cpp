#include "app/bars/CivilDate.h"
#include "app/calendar/ChartCycle.h"
#include "app/chart/ChartSplitView.h"
#include "app/chart/ChartWindow.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

/// Daily bars, `step` days apart.
BarReadResult stock(const char* name, int step = 1)
{
    constexpr int count = 60;
    std::vector<Bar> bars;
    bars.reserve(count);
    for (int i = 0; i < count; ++i)
        bars.push_back({dateOfDay(dayNumber(20200101) + i * step), 0, 10, 12, 9, 11, 1000});
    BarReadResult result;
    result.series = BarSeries(QString::fromLatin1(name), bars);
    return result;
}

void drawSegment(ChartWindow& window, std::int32_t firstDate)
{
    QZPaintLayer& layer = *window.chart().panes().front()->paintLayer();
    const auto graph = layer.allocGraphWithType(QZSTLineSegment);
    graph->setEditing(false);
    graph->setLogicAxises({{firstDate, 0, 10.5}, {20200120, 0, 11.25}});
    layer.graphs().add(graph);
}

std::vector<std::int32_t> firstDates(ChartWindow& window)
{
    const auto graphs = window.chart().panes().front()->paintLayer()->graphs().snapshot();
    std::vector<std::int32_t> dates;
    dates.reserve(graphs->size());
    for (const auto& graph : *graphs)
        dates.push_back(graph->logicAxises().front().date);
    return dates;
}

using Dates = std::vector<std::int32_t>;

} // namespace

TEST(ChartStore, FiguresComeBackWithTheirStockPeriodAndUser)
{
    ChartWindow window;
    window.showBars(stock("first"));
    drawSegment(window, 20200105);
    window.showBars(stock("second"));
    EXPECT_EQ(firstDates(window), Dates{});
    drawSegment(window, 20200106);
    window.showBars(stock("first"));
    EXPECT_EQ(firstDates(window), Dates{20200105});
    window.showBars(stock("first", 7));
    EXPECT_EQ(firstDates(window), Dates{});
    window.showBars(stock("second"));
    EXPECT_EQ(firstDates(window), Dates{20200106});

    QZGlobalEnv::getShareInstance().setLoginUser(QStringLiteral("another"));
    EXPECT_EQ(firstDates(window), Dates{});
    QZGlobalEnv::getShareInstance().setLoginUser(QString());
    EXPECT_EQ(firstDates(window), Dates{20200106});
    drawSegment(window, 20200107);
    window.close();

    ChartWindow later;
    later.showBars(stock("second"));
    EXPECT_EQ(firstDates(later), (Dates{20200106, 20200107}));
}

TEST(ChartCycle, IsThatOfMostBars)
{
    struct Row {
        const char* name;
        int dayStep;
        QZPaintCycle cycle;
    };
    for (const Row& row :
         {Row{"days", 1, QZPCCandlestickCycleDay}, Row{"weeks", 7, QZPCCandlestickCycleWeek},
          Row{"months", 30, QZPCCandlestickCycleMonth}, Row{"quarters", 91, QZPCCandlestickCycleQuarter},
          Row{"years", 365, QZPCCandlestickCycleYear}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(cycleOf(stock("any", row.dayStep).series), row.cycle);
    }
    EXPECT_EQ(cycleOf(BarSeries()), QZPCCandlestickCycleDay);
    const BarSeries fiveMinutes(QStringLiteral("m5"), {{20200102, 93000, 10, 12, 9, 11, 1},
                                                       {20200102, 93500, 10, 12, 9, 11, 1},
                                                       {20200102, 94000, 10, 12, 9, 11, 1},
                                                       {20200103, 93000, 10, 12, 9, 11, 1}});
    EXPECT_EQ(cycleOf(fiveMinutes), QZPCCandlestickCycleMin5);
}

TEST(ChartStore, ACrashCostsNothingAndTwoProgramsShareAStock)
{
    ChartWindow window;
    window.showBars(stock("shared"));
    ChartWindow other; // as of another program: nothing but the file connects the two
    other.showBars(stock("shared"));
    drawSegment(window, 20200105);
    drawSegment(other, 20200106);
    for (const auto& [shown, expected] :
         {std::pair(&window, Dates{20200105, 20200106}), std::pair(&other, Dates{20200106, 20200105})})
        EXPECT_TRUE(QTest::qWaitFor([&] { return firstDates(*shown) == expected; }));
    // Neither window was closed.
    ChartWindow later;
    later.showBars(stock("shared"));
    EXPECT_EQ(firstDates(later).size(), 2U);
}
