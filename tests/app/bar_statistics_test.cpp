#include "app/bars/BarStatistics.h"
#include "app/bars/Swings.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

Bar bar(double open, double high, double low, double close, double volume = 0)
{
    return {20200101, 0, open, high, low, close, volume};
}

} // namespace

TEST(BarStatistics, NeedsBarsAndDoesWithoutVolume)
{
    const std::vector<Bar> bars{bar(9, 11, 9, 10), bar(13, 16, 12, 14)}; // typical prices 10 and 14
    EXPECT_FALSE(regressionChannel(std::span(bars).first(1)));
    EXPECT_FALSE(boxStatistics({}));
    EXPECT_NEAR(boxStatistics(bars)->averageCost, 12, 1e-12);
    EXPECT_EQ(boxStatistics(std::vector{bar(0, 2, 0, 1)})->amplitude, 0);
}

TEST(BarStatistics, CountsBothEndsAndTheDirection)
{
    EXPECT_EQ(signedBarCount(3, 3), 1);
    EXPECT_EQ(signedBarCount(3, 7), 5);
    EXPECT_EQ(signedBarCount(7, 3), -5);
    EXPECT_DOUBLE_EQ(percentChange(50, 55), 10);
    EXPECT_DOUBLE_EQ(percentChange(0, 55), 0);
}

TEST(BarStatistics, FindsTheNearestPriceOfABar)
{
    for (const auto& [height, price] :
         {std::pair(10.4, 10), std::pair(50.0, 12), std::pair(8.9, 8), std::pair(10.6, 11)})
        EXPECT_EQ(nearestPrice(bar(10, 12, 8, 11), height), price);
}

TEST(BarStatistics, FindsTheTurnsOfAMarket)
{
    std::vector<Bar> bars;
    std::int32_t date = 20200101;
    for (const double price : {3.0, 5.0, 4.0, 6.0, 9.0, 9.0, 7.0, 2.0, 4.0}) {
        bars.push_back(bar(price, price + 1, price - 1, price));
        bars.back().date = date++;
    }
    // Of the two highest bars the first; neither the 5 within reach of the 6 nor what is beyond bar 7.
    const auto swings = findSwings(BarSeries(QString(), bars), 1, 20, 2);
    ASSERT_EQ(swings.size(), 2U);
    EXPECT_TRUE(swings[0].isHigh);
    EXPECT_EQ(swings[0].bar, 4);
    EXPECT_EQ(swings[0].price, 10);
    EXPECT_FALSE(swings[1].isHigh);
    EXPECT_EQ(swings[1].bar, 7);
    EXPECT_EQ(swings[1].price, 1);
}
