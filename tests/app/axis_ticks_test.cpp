#include "app/AxisTicks.h"
#include "app/CivilDate.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

/// Bars of every weekday from Wednesday 2020-01-01 on.
TradingCalendar weekdays(int count)
{
    std::vector<Bar> bars;
    for (std::int64_t day = dayNumber(20200101); static_cast<int>(bars.size()) < count; ++day) {
        if (weekdayOfDay(day) < 5)
            bars.push_back({dateOfDay(day), 0, 1, 1, 1, 1, 0});
    }
    return TradingCalendar(BarSeries(QString(), bars));
}

QString labels(const std::vector<AxisTick>& ticks)
{
    QStringList texts;
    for (const AxisTick& tick : ticks)
        texts << QStringLiteral("%1@%2").arg(tick.label).arg(tick.position);
    return texts.join(QLatin1Char(' '));
}

} // namespace

TEST(AxisTicks, StandAtRoundValues)
{
    EXPECT_EQ(labels(priceTicks(9.94, 10.31, 4)), QStringLiteral("10.0@10 10.1@10.1 10.2@10.2 10.3@10.3"));
    EXPECT_EQ(labels(volumeTicks(0, 2.1e6, 3)), QStringLiteral("0@0 1M@1e+06 2M@2e+06"));
    EXPECT_TRUE(priceTicks(5, 5, 4).empty());
    EXPECT_EQ(volumeText(12500), QStringLiteral("12.5K"));
    EXPECT_EQ(volumeText(1.2e9), QStringLiteral("1.2B"));
}

TEST(AxisTicks, TakeThePeriodThatTheRoomAllows)
{
    const TradingCalendar calendar = weekdays(400);
    const auto ticks = [&](int first, int last, double minGap) {
        return labels(dateTicks(calendar, first, last, minGap));
    };
    EXPECT_EQ(ticks(-5, 300, 200), QStringLiteral("2020@0 2021@262"));
    EXPECT_EQ(ticks(1, 70, 20), QStringLiteral("Feb@23 Mar@43 Apr@65"));
    EXPECT_EQ(ticks(18, 35, 4), QStringLiteral("27 Jan@18 3 Feb@23 10 Feb@28 17 Feb@33"));
    EXPECT_EQ(ticks(21, 24, 1), QStringLiteral("30 Jan@21 31 Jan@22 3 Feb@23 4 Feb@24"));
}

TEST(AxisTicks, WriteTheDayWhereItChangesBetweenTimes)
{
    std::vector<Bar> bars;
    for (const std::int32_t date : {20200102, 20200103}) {
        for (std::int32_t time = 100000; time <= 150000; time += 10000)
            bars.push_back({date, time, 1, 1, 1, 1, 0});
    }
    const TradingCalendar calendar{BarSeries(QString(), bars)};
    EXPECT_EQ(labels(dateTicks(calendar, 4, 8, 1)), QStringLiteral("14:00@4 15:00@5 3 Jan@6 11:00@7 12:00@8"));
    EXPECT_EQ(momentText(calendar.at(7), true), QStringLiteral("2020-01-03 11:00"));
}
