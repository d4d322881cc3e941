#include "app/BarReader.h"
#include "app/CivilDate.h"
#include "app/SampleBars.h"

#include <QFile>

#include <gtest/gtest.h>
#include <map>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

TEST(SampleBars, ShippedFilesAreTheGeneratedOnes)
{
    EXPECT_TRUE(contentOf(dailySamplePath()) == dailySampleCsv());
    EXPECT_TRUE(contentOf(minuteSamplePath()) == minuteSampleCsv());
}

TEST(SampleBars, DailyBarsReadBackWhole)
{
    const BarReadResult result = readBars(dailySamplePath());
    EXPECT_EQ(result.summary(), QStringLiteral("daily.csv: 2,000 bars, 2015-01-05 to 2023-01-11"));
    std::map<std::int32_t, int> perYear;
    for (const Bar& bar : result.series.bars()) {
        EXPECT_LT(weekdayOfDay(dayNumber(bar.date)), 5);
        EXPECT_GT(bar.volume, 0);
        ++perYear[bar.date / 10000];
    }
    // 2016 has 261 weekdays.
    EXPECT_EQ(perYear[2016], 249);
    EXPECT_FALSE(result.series.isIntraday());
}

TEST(SampleBars, MinuteBarsReadBackWhole)
{
    const BarReadResult result = readBars(minuteSamplePath());
    EXPECT_EQ(result.summary(), QStringLiteral("minutes.csv: 4,800 bars, 2022-08-01 09:30 to 2022-08-26 14:59"));
    EXPECT_EQ(result.series.timeAt(119), (BarTime{20220801, 112900}));
    EXPECT_EQ(result.series.timeAt(120), (BarTime{20220801, 130000}));
    EXPECT_EQ(result.series.timeAt(240), (BarTime{20220802, 93000}));
}

} // namespace
