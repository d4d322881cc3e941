#include "app/bars/CivilDate.h"
#include "app/calendar/ChartCycle.h"
#include "app/calendar/TradingCalendar.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>

namespace {

BarSeries seriesOf(const std::vector<BarTime>& moments)
{
    std::vector<Bar> bars;
    std::ranges::transform(moments, std::back_inserter(bars),
                           [](BarTime moment) { return Bar{moment.date, moment.time, 1, 1, 1, 1, 0}; });
    return {QString(), bars};
}

/// Every `step` days from `first` on, but for two days of rest a week, the first of which is `rest` (0: Monday).
BarSeries days(std::int32_t first, int count, int step = 1, int rest = 5)
{
    std::vector<BarTime> moments;
    for (std::int64_t day = dayNumber(first); static_cast<int>(moments.size()) < count; day += step) {
        if (const auto weekday = weekdayOfDay(day); weekday != rest && weekday != rest + 1)
            moments.push_back({dateOfDay(day)});
    }
    return seriesOf(moments);
}

/// Four bars a session (10:00, 11:00, 13:00, 14:00) from Wednesday 2020-01-01 to Wednesday 2020-01-08 without
/// Friday 3. The first session lacks its first bar, the last one its last two.
BarSeries hours()
{
    std::vector<BarTime> moments;
    for (const std::int32_t date : {20200101, 20200102, 20200106, 20200107, 20200108}) {
        for (const std::int32_t time : {100000, 110000, 130000, 140000})
            moments.push_back({date, time});
    }
    return seriesOf({moments.begin() + 1, moments.end() - 2});
}

const BarSeries shortWeek = seriesOf({{20200103}, {20200110}, {20200117}, {20200124}, {20200129}});

std::vector<std::pair<const char*, BarSeries>> allSeries()
{
    return {
        {"empty", {}},
        {"one day", seriesOf({{20200104}})},
        {"weekdays", days(20200101, 300)},
        {"weeks, ending on a Wednesday", shortWeek},
        {"month ends", seriesOf({{20191129}, {20191231}, {20200131}, {20200228}, {20200331}})},
        {"hours", hours()},
    };
}

TEST(TradingCalendar, ContinuesTheHabitsOfTheLoadedBars)
{
    const BarSeries monthEnds = seriesOf({{20191129}, {20191231}, {20200131}});
    // The index counts from the last bar; a negative one from the first bar.
    using Row = std::tuple<const char*, BarSeries, int, BarTime>;
    for (const auto& [name, series, fromLast, expected] :
         {Row{"next Monday", days(20200101, 3), 1, {20200106}},
          Row{"a year of weekdays on", days(20200101, 300), 261, {20220223}},
          Row{"two weeks before", days(20200106, 300), -10, {20191223}},
          Row{"Sunday to Thursday", days(20200105, 15, 1, 4), 1, {20200126}},
          Row{"week after a short one", shortWeek, 1, {20200207}}, Row{"weeks before", shortWeek, -2, {20191220}},
          Row{"month, same day", seriesOf({{20200115}, {20200215}, {20200315}}), 10, {20210115}},
          Row{"month ends, leap day", monthEnds, 1, {20200229}}, Row{"month ends, before", monthEnds, -2, {20190930}},
          Row{"session after", hours(), 3, {20200109, 100000}},
          Row{"over the weekend", hours(), 11, {20200113, 100000}},
          Row{"start of the first session", hours(), -1, {20200101, 100000}},
          Row{"session before", hours(), -2, {20191231, 140000}},
          Row{"weekend before", hours(), -10, {20191227, 140000}}}) {
        const int index = fromLast < 0 ? fromLast : series.size() - 1 + fromLast;
        EXPECT_EQ(TradingCalendar(series).at(index), expected) << name;
    }
}

TEST(TradingCalendar, EveryIndexComesBackAndTimeGrowsWithItEvenOfGarbage)
{
    for (const auto& [name, series] : allSeries()) {
        SCOPED_TRACE(name);
        const TradingCalendar calendar(series);
        BarTime previous = calendar.at(-100001);
        int lost = 0;
        for (int index = -100000; index <= series.size() + 100000; ++index) {
            const BarTime moment = calendar.at(index);
            const bool isLoaded = index >= 0 && index < series.size();
            if (moment <= previous || calendar.indexOf(moment) != index || (isLoaded && moment != series.timeAt(index)))
                ++lost;
            previous = moment;
        }
        EXPECT_EQ(lost, 0);
        const std::vector<BarTime> garbage{
            {INT_MIN, INT_MIN}, {0, INT_MAX}, {20200108, -5}, {20209999}, {INT_MAX, INT_MAX}};
        EXPECT_TRUE(std::ranges::is_sorted(garbage, {}, [&](BarTime moment) { return calendar.indexOf(moment); }));
        EXPECT_LT(calendar.at(INT_MIN), calendar.at(0));
        EXPECT_GT(calendar.at(INT_MAX), calendar.at(0));
    }
}

TEST(TradingCalendar, BetweenBarsMeansTheNextOne)
{
    const BarSeries holidayWeek = seriesOf({{20200102}, {20200106}, {20200107}, {20200108}});
    const BarSeries weeks = seriesOf({{20200103}, {20200110}, {20200115}});
    using Row = std::tuple<const char*, BarSeries, BarTime, int>;
    for (const auto& [name, series, moment, index] :
         {Row{"holiday", holidayWeek, {20200103}, 1}, Row{"time of a daily bar", holidayWeek, {20200106, 150000}, 1},
          Row{"longer history", days(20200106, 30), {20180108}, -520},
          Row{"same week as the last bar", weeks, {20200117}, 3},
          Row{"month ahead, past its day", seriesOf({{20200115}, {20200215}}), {20200316}, 3},
          Row{"lunch of the cut session", hours(), {20200108, 120000}, 17},
          Row{"evening of the cut session", hours(), {20200108, 200000}, 19},
          Row{"morning of the first session", hours(), {20200101, 90000}, -1},
          Row{"lunch before", hours(), {20191231, 120000}, -3}})
        EXPECT_EQ(TradingCalendar(series).indexOf(moment), index) << name;
}

TEST(ChartCycle, IsThatOfMostBars)
{
    for (const auto& [step, cycle] : {std::pair(1, QZPCCandlestickCycleDay),
                                      {7, QZPCCandlestickCycleWeek},
                                      {30, QZPCCandlestickCycleMonth},
                                      {91, QZPCCandlestickCycleQuarter},
                                      {365, QZPCCandlestickCycleYear}})
        EXPECT_EQ(cycleOf(days(20200101, 60, step)), cycle) << step << " days";
    EXPECT_EQ(cycleOf(BarSeries()), QZPCCandlestickCycleDay);
    EXPECT_EQ(cycleOf(seriesOf({{20200102, 93000}, {20200102, 93500}, {20200102, 94000}, {20200103, 93000}})),
              QZPCCandlestickCycleMin5);
}

} // namespace
