#include "app/bars/BarReader.h"
#include "app/bars/SampleBars.h"

#include <QFile>

#include <gtest/gtest.h>

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

TEST(SampleBars, ReadBackWhole)
{
    const BarReadResult daily = readBars(dailySamplePath());
    EXPECT_EQ(daily.summary(), QStringLiteral("daily.csv: 2,000 bars, 2015-01-05 to 2023-01-11"));
    EXPECT_FALSE(daily.series.isIntraday());
    const BarReadResult minutes = readBars(minuteSamplePath());
    EXPECT_EQ(minutes.summary(), QStringLiteral("minutes.csv: 4,800 bars, 2022-08-01 09:30 to 2022-08-26 14:59"));
    EXPECT_EQ(minutes.series.timeAt(120), (BarTime{20220801, 130000}));
}

} // namespace
