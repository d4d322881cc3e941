#include "app/bars/BarStatistics.h"

#include <algorithm>
#include <array>
#include <cmath>

std::optional<RegressionChannel> regressionChannel(std::span<const Bar> bars)
{
    if (bars.size() < 2)
        return std::nullopt;
    const auto count = static_cast<double>(bars.size());
    const double middle = (count - 1) / 2;
    double meanClose = 0;
    for (const Bar& bar : bars)
        meanClose += bar.close / count;

    // Centred on the middle bar, so that long ranges lose no digits.
    double covariance = 0;
    double variance = 0;
    double offset = -middle;
    for (const Bar& bar : bars) {
        covariance += offset * (bar.close - meanClose);
        variance += offset * offset;
        offset += 1;
    }
    const double slope = covariance / variance;

    RegressionChannel channel{.atFirst = meanClose - slope * middle, .atLast = meanClose + slope * middle};
    double line = channel.atFirst;
    for (const Bar& bar : bars) {
        channel.above = std::max(channel.above, bar.high - line);
        channel.below = std::max(channel.below, line - bar.low);
        line += slope;
    }
    return channel;
}

std::optional<BoxStatistics> boxStatistics(std::span<const Bar> bars)
{
    if (bars.empty())
        return std::nullopt;
    BoxStatistics box{.low = bars.front().low, .high = bars.front().high, .count = static_cast<int>(bars.size())};
    double volume = 0;
    double cost = 0;
    double sum = 0;
    for (const Bar& bar : bars) {
        box.low = std::min(box.low, bar.low);
        box.high = std::max(box.high, bar.high);
        const double typical = (bar.high + bar.low + bar.close) / 3;
        volume += bar.volume;
        cost += bar.volume * typical;
        sum += typical;
    }
    box.averageCost = volume > 0 ? cost / volume : sum / box.count;
    box.amplitude = percentChange(box.low, box.high);
    box.difference = box.high - box.low;
    return box;
}

std::optional<RangeStatistics> rangeStatistics(const BarSeries& series, int first, int last)
{
    first = std::max(first, 0);
    last = std::min(last, series.size() - 1);
    if (last < first)
        return std::nullopt;
    const auto bars =
        std::span(series.bars()).subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1);
    const auto box = boxStatistics(bars);
    const double before = first > 0 ? series.at(first - 1).close : bars.front().open;
    RangeStatistics range{.count = box->count,
                          .first = series.timeAt(first),
                          .last = series.timeAt(last),
                          .change = bars.back().close - before,
                          .percentChange = percentChange(before, bars.back().close),
                          .high = box->high,
                          .low = box->low,
                          .amplitude = box->amplitude};
    for (const Bar& bar : bars) {
        range.meanClose += bar.close / range.count;
        range.volume += bar.volume;
    }
    return range;
}

std::int32_t signedBarCount(int start, int end)
{
    return end >= start ? end - start + 1 : end - start - 1;
}

double percentChange(double from, double to)
{
    return from > 0 ? (to - from) / from * 100 : 0;
}

double nearestPrice(const Bar& bar, double price)
{
    const std::array prices{bar.open, bar.high, bar.low, bar.close};
    return *std::ranges::min_element(prices, {}, [price](double each) { return std::abs(each - price); });
}
