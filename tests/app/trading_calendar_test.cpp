#include "app/bars/CivilDate.h"
#include "app/calendar/TradingCalendar.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

Bar barAt(std::int32_t date, std::int32_t time = 0)
{
    return {date, time, 1, 1, 1, 1, 0};
}

BarSeries seriesOf(const std::vector<std::int32_t>& dates)
{
    std::vector<Bar> bars;
    bars.reserve(dates.size());
    for (const std::int32_t date : dates)
        bars.push_back(barAt(date));
    return {QString(), bars};
}

/// Every day from `first` on; with `weekend` false Saturdays and Sundays are left out.
BarSeries days(std::int32_t first, int count, bool weekend = false)
{
    std::vector<std::int32_t> dates;
    for (std::int64_t day = dayNumber(first); static_cast<int>(dates.size()) < count; ++day) {
        if (weekend || weekdayOfDay(day) < 5)
            dates.push_back(dateOfDay(day));
    }
    return seriesOf(dates);
}

/// Four bars a session (10:00, 11:00, 13:00, 14:00) from Wednesday 2020-01-01 to Wednesday 2020-01-08 without
/// Friday 3. The first session lacks its first bar, the last one its last two.
BarSeries hours()
{
    std::vector<Bar> bars;
    for (const std::int32_t date : {20200101, 20200102, 20200106, 20200107, 20200108}) {
        for (const std::int32_t time : {100000, 110000, 130000, 140000}) {
            if (BarTime{date, time} >= BarTime{20200101, 110000} && BarTime{date, time} <= BarTime{20200108, 110000})
                bars.push_back(barAt(date, time));
        }
    }
    return {QString(), bars};
}

std::vector<std::pair<const char*, BarSeries>> allSeries()
{
    return {
        {"empty", {}},
        {"one day", days(20200104, 1, true)},
        {"weekdays", days(20200101, 300)},
        {"weeks, ending on a Wednesday", seriesOf({20200103, 20200110, 20200117, 20200124, 20200129})},
        {"month ends", seriesOf({20191129, 20191231, 20200131, 20200228, 20200331})},
        {"hours", hours()},
    };
}

TEST(TradingCalendar, ContinuesTheHabitsOfTheLoadedBars)
{
    const BarSeries sundays = seriesOf({20200105, 20200106, 20200107, 20200108, 20200109, 20200112, 20200113, 20200114,
                                        20200115, 20200116, 20200119, 20200120, 20200121, 20200122, 20200123});
    const BarSeries shortWeek = seriesOf({20200103, 20200110, 20200117, 20200124, 20200129});
    const BarSeries middles = seriesOf({20200115, 20200215, 20200315});
    const BarSeries monthEnds = seriesOf({20191129, 20191231, 20200131});
    struct Row {
        const char* name = nullptr;
        BarSeries series;
        int fromLast = 0; ///< index counted from the last bar; a negative one from the first bar
        std::int32_t date = 0, time = 0;
    };
    for (const Row& row :
         {Row{"next Monday", days(20200101, 3), 1, 20200106, 0},
          Row{"a year of weekdays on", days(20200101, 300), 261, 20220223, 0},
          Row{"two weeks before", days(20200106, 300), -10, 20191223, 0},
          Row{"Sunday to Thursday", sundays, 1, 20200126, 0}, Row{"week after a short one", shortWeek, 1, 20200207, 0},
          Row{"weeks before", shortWeek, -2, 20191220, 0}, Row{"month, same day", middles, 10, 20210115, 0},
          Row{"month ends, leap day", monthEnds, 1, 20200229, 0}, Row{"month ends, before", monthEnds, -2, 20190930, 0},
          Row{"session after", hours(), 3, 20200109, 100000}, Row{"over the weekend", hours(), 11, 20200113, 100000},
          Row{"start of the first session", hours(), -1, 20200101, 100000},
          Row{"session before", hours(), -2, 20191231, 140000},
          Row{"weekend before", hours(), -10, 20191227, 140000}}) {
        SCOPED_TRACE(row.name);
        const int index = row.fromLast < 0 ? row.fromLast : row.series.size() - 1 + row.fromLast;
        EXPECT_EQ(TradingCalendar(row.series).at(index), (BarTime{row.date, row.time}));
    }
}

TEST(TradingCalendar, EveryIndexComesBackAndTimeGrows)
{
    for (const auto& [name, series] : allSeries()) {
        SCOPED_TRACE(name);
        const TradingCalendar calendar(series);
        BarTime previous = calendar.at(-100001);
        int lost = 0;
        for (int index = -100000; index <= series.size() + 100000; ++index) {
            const BarTime moment = calendar.at(index);
            if (moment <= previous || calendar.indexOf(moment) != index)
                ++lost;
            const bool loaded = index >= 0 && index < series.size();
            ASSERT_TRUE(!loaded || moment == series.timeAt(index));
            previous = moment;
        }
        EXPECT_EQ(lost, 0);
    }
}

TEST(TradingCalendar, BetweenBarsMeansTheNextOne)
{
    const BarSeries holidayWeek = seriesOf({20200102, 20200106, 20200107, 20200108});
    const BarSeries weeks = seriesOf({20200103, 20200110, 20200115});
    struct Row {
        const char* name = nullptr;
        BarSeries series;
        std::int32_t date = 0, time = 0;
        int index = 0;
    };
    for (const Row& row :
         {Row{"holiday", holidayWeek, 20200103, 0, 1}, Row{"time of a daily bar", holidayWeek, 20200106, 150000, 1},
          Row{"longer history", days(20200106, 30), 20180108, 0, -520},
          Row{"same week as the last bar", weeks, 20200117, 0, 3},
          Row{"month ahead, past its day", seriesOf({20200115, 20200215}), 20200316, 0, 3},
          Row{"lunch of the cut session", hours(), 20200108, 120000, 17},
          Row{"evening of the cut session", hours(), 20200108, 200000, 19},
          Row{"morning of the first session", hours(), 20200101, 90000, -1},
          Row{"lunch before", hours(), 20191231, 120000, -3}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TradingCalendar(row.series).indexOf({row.date, row.time}), row.index);
    }
}

TEST(TradingCalendar, GarbageIsSomewhereAndKeepsItsOrder)
{
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    for (const auto& [name, series] : allSeries()) {
        SCOPED_TRACE(name);
        const TradingCalendar calendar(series);
        int previous = std::numeric_limits<int>::min();
        for (const BarTime moment : {BarTime{least, least}, {0, most}, {20200108, -5}, {20209999, 0}, {most, most}}) {
            ASSERT_GE(calendar.indexOf(moment), previous) << moment.date;
            previous = calendar.indexOf(moment);
        }
        EXPECT_LT(calendar.at(least), calendar.at(0));
        EXPECT_GT(calendar.at(most), calendar.at(0));
    }
}

} // namespace
