#include "app/indicators/Indicators.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

void expectNear(const char* name, const std::vector<double>& actual, const std::vector<double>& expected)
{
    ASSERT_EQ(actual.size(), expected.size()) << name;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        SCOPED_TRACE(std::string(name) + " " + std::to_string(i));
        if (std::isnan(expected[i]))
            EXPECT_TRUE(std::isnan(actual[i]));
        else
            EXPECT_NEAR(actual[i], expected[i], 1e-11);
    }
}

} // namespace

// Expected numbers: exact fractions, rounded to twelve digits.
TEST(Indicators, AreTheirFormulas)
{
    const double none = std::nan("");
    const std::vector<double> closes{10, 11, 13, 12, 9, 14};
    const Macd macd = macdOf(closes);
    using Row = std::tuple<const char*, std::vector<double>, std::vector<double>>;
    for (const auto& [name, actual, expected] :
         {Row{"mean of 3", simpleMovingAverage(closes, 3), {none, none, 34 / 3.0, 12, 34 / 3.0, 35 / 3.0}},
          Row{"mean of 1", simpleMovingAverage(closes, 1), closes},
          Row{"mean of more than there are", simpleMovingAverage(std::vector{1.0}, 2), {none}},
          Row{"weight 1/2", exponentialMovingAverage(closes, 3), {10, 10.5, 11.75, 11.875, 10.4375, 12.21875}},
          Row{"DIF", macd.dif, {0, 0.0797720797721, 0.300906648485, 0.390959012594, 0.217741246438, 0.478408338522}},
          Row{"DEA", macd.dea, {0, 0.0159544159544, 0.0729448624605, 0.136547692487, 0.152786403277, 0.217910790326}},
          Row{"histogram",
              macd.histogram,
              {0, 0.127635327635, 0.455923572049, 0.508822640213, 0.129909686322, 0.520995096392}},
          // Typical prices 11, 14 and 17, then those of a day that begins without a trade.
          Row{"average price of the day",
              dayAveragePrice(std::vector<Bar>{{20240102, 93000, 10, 12, 10, 11, 100},
                                               {20240102, 93100, 13, 15, 12, 15, 300},
                                               {20240102, 93200, 17, 17, 17, 17, 0},
                                               {20240103, 93000, 20, 20, 20, 20, 0},
                                               {20240103, 93100, 21, 23, 21, 22, 50}}),
              {11, 13.25, 13.25, none, 22}}})
        expectNear(name, actual, expected);
    EXPECT_TRUE(macdOf({}).histogram.empty());
}
