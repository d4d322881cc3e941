#include "app/bars/CivilDate.h"
#include "app/calendar/ChartCycle.h"
#include "app/calendar/Resample.h"
#include "app/calendar/TradingCalendar.h"

#include <QStringList>

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

TEST(Resample, PutsBarsTogetherByWeeksMonthsYearsAndSessions)
{
    const auto resampledTo = [](QZPaintCycle cycle, const std::vector<BarTime>& moments) {
        std::vector<Bar> bars;
        double price = 10;
        for (const BarTime moment : moments) {
            bars.push_back({moment.date, moment.time, price, price + 2, price - 1, price + 1, 100});
            price += 1;
        }
        std::string text;
        const BarSeries longer = resampled(BarSeries(QString(), bars), cycle);
        for (const Bar& bar : longer.bars()) {
            text += QString::asprintf("%d %d %g %g %g %g %g;", bar.date % 10000, bar.time, bar.open, bar.high, bar.low,
                                      bar.close, bar.volume)
                        .toStdString();
        }
        return text;
    };
    // Monday and Tuesday; Thursday and Friday of the next year; the Monday after.
    const std::vector<BarTime> days{{20241230, 0}, {20241231, 0}, {20250102, 0}, {20250103, 0}, {20250106, 0}};
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleWeek, days), "1230 0 10 15 9 14 400;106 0 14 16 13 15 100;");
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleMonth, days), "1230 0 10 13 9 12 200;102 0 12 16 11 15 300;");
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleQuarter, days), resampledTo(QZPCCandlestickCycleMonth, days));
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleYear, days), resampledTo(QZPCCandlestickCycleMonth, days));
    // A session from 9:31 and one from 13:00; the second day's first minute saw no trade.
    const std::vector<BarTime> minutes{{20250102, 93100},  {20250102, 93500}, {20250102, 93600}, {20250102, 130000},
                                       {20250102, 130459}, {20250103, 93200}, {20250103, 93600}};
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleMin5, minutes),
              "102 93100 10 13 9 12 200;102 93600 12 14 11 13 100;102 130000 13 16 12 15 200;"
              "103 93200 15 17 14 16 100;103 93600 16 18 15 17 100;");
    EXPECT_EQ(resampledTo(QZPCCandlestickCycleDay, minutes), "102 0 10 16 9 15 500;103 0 15 18 14 17 200;");
    EXPECT_EQ(resampledTo(QZPCRealTimeCycleDay, minutes), "103 93200 15 17 14 16 100;103 93600 16 18 15 17 100;");
    EXPECT_EQ(std::ranges::count(resampledTo(QZPCRealTimeCycle9Day, minutes), ';'), 7);
    const auto namesFor = [](const BarSeries& series) {
        QStringList names;
        for (const QZPaintCycle cycle : cyclesFor(series))
            names << cycleName(cycle);
        return names.join(u',').toStdString();
    };
    EXPECT_EQ(namesFor(seriesOf({{20200131}, {20200229}, {20200331}})), "Month,Quarter,Year");
    EXPECT_EQ(namesFor(seriesOf({{20250102, 93000}, {20250102, 103000}, {20250102, 113000}, {20250103, 93000}})),
              "1-day line,2-day line,60 minutes,120 minutes,Day,Week,Month,Quarter,Year");
}

} // namespace
