#pragma once

#include "app/bars/Bars.h"

#include <cstdint>
#include <optional>
#include <span>

/// Straight line through closes by least squares, bars counted from 0, with its channel: parallels through the high
/// that lies farthest above the line and the low that lies farthest below it. So the channel encloses every candle, its
/// halves as wide as the farthest excursions (Raff's regression channel takes the larger of the two for both).
struct RegressionChannel {
    double atFirst = 0; ///< price of the line at the first bar
    double atLast = 0;  ///< price of the line at the last bar
    double above = 0;   ///< from the line up to the upper parallel (price)
    double below = 0;   ///< from the line down to the lower parallel (price)
};

/// Nothing for fewer than two bars.
std::optional<RegressionChannel> regressionChannel(std::span<const Bar> bars);

struct BoxStatistics {
    double low = 0;
    double high = 0;
    int count = 0;
    double averageCost = 0; ///< mean of (high + low + close) / 3 weighted with volume; the plain mean without volume
    double amplitude = 0;   ///< high above low in percent of low; 0 where low is not positive
    double difference = 0;  ///< high - low
};

/// Nothing for no bars.
std::optional<BoxStatistics> boxStatistics(std::span<const Bar> bars);

/// What a stretch of bars came to.
struct RangeStatistics {
    int count = 0;
    BarTime first;
    BarTime last;
    double change = 0; ///< from the close before the first bar, or its open where none is before, to the last close
    double percentChange = 0; ///< the same in percent
    double high = 0;
    double low = 0;
    double meanClose = 0;
    double amplitude = 0; ///< as in BoxStatistics
    double volume = 0;
};

/// Of the bars `first` to `last`, both counted, as far as they are loaded; nothing when none is.
std::optional<RangeStatistics> rangeStatistics(const BarSeries& series, int first, int last);

/// Bars from index `start` to index `end`, both counted; negative when `end` lies to the left.
std::int32_t signedBarCount(int start, int end);

/// Change from one price to another in percent of the first one; 0 where that is not positive.
double percentChange(double from, double to);

/// The bar's open, high, low or close, whichever is nearest to `price`.
double nearestPrice(const Bar& bar, double price);
