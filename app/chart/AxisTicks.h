#pragma once

#include "app/calendar/TradingCalendar.h"

#include <QString>

#include <vector>

struct AxisTick {
    double position = 0; ///< value, or bar index
    QString label;
};

/// Ticks at round values (1, 2 or 5 times a power of ten apart) within `low` to `high`, at most `maxCount`. Labels have
/// the decimals that the step needs, at least `decimals`.
std::vector<AxisTick> priceTicks(double low, double high, int maxCount, int decimals = 0);

/// The same for a logarithmic axis: where it spans more than a doubling, at round prices at least a `maxCount`-th of
/// the axis apart.
std::vector<AxisTick> logarithmicTicks(double low, double high, int maxCount, int decimals = 0);

/// As priceTicks() with large numbers written as volumeText() does.
std::vector<AxisTick> volumeTicks(double low, double high, int maxCount);

/// Ticks at the first bar of each period between the bars `first` and `last`: ten years down to a minute, the finest
/// period whose ticks are `minGap` bars apart on average. None is much closer. A label says what the one before it does
/// not.
std::vector<AxisTick> dateTicks(const TradingCalendar& calendar, int first, int last, double minGap);

/// A price, or a difference of prices, with the decimals of its series (BarSeries::priceDecimals); one that would be
/// longer than a number is exact in six digits.
QString priceText(double price, int decimals);
/// "950", "12.5K", "3.46M", "1.2B"; where Chinese is spoken "1.25万", "3.46亿".
QString volumeText(double volume);
/// "2024-01-02", with the minute for intraday bars.
QString momentText(BarTime moment, bool intraday);
