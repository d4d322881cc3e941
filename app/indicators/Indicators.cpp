#include "app/indicators/Indicators.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

} // namespace

std::vector<double> simpleMovingAverage(std::span<const double> values, int length)
{
    const auto count = static_cast<std::size_t>(length);
    std::vector<double> averages(values.size(), none);
    double sum = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sum += values[i];
        if (i >= count)
            sum -= values[i - count];
        if (i + 1 >= count)
            averages[i] = sum / length;
    }
    return averages;
}

std::vector<double> exponentialMovingAverage(std::span<const double> values, int length)
{
    const double weight = 2.0 / (length + 1);
    std::vector<double> averages;
    averages.reserve(values.size());
    for (const double value : values)
        averages.push_back(averages.empty() ? value : averages.back() + weight * (value - averages.back()));
    return averages;
}

Macd macdOf(std::span<const double> values)
{
    Macd macd{.dif = exponentialMovingAverage(values, Macd::shortLength), .dea = {}, .histogram = {}};
    std::ranges::transform(macd.dif, exponentialMovingAverage(values, Macd::longLength), macd.dif.begin(),
                           std::minus());
    macd.dea = exponentialMovingAverage(macd.dif, Macd::signalLength);
    macd.histogram.resize(values.size());
    std::ranges::transform(macd.dif, macd.dea, macd.histogram.begin(),
                           [](double dif, double dea) { return 2 * (dif - dea); });
    return macd;
}

std::vector<double> dayAveragePrice(std::span<const Bar> bars)
{
    std::vector<double> averages;
    averages.reserve(bars.size());
    std::int32_t date = 0;
    double traded = 0;
    double volume = 0;
    for (const Bar& bar : bars) {
        if (bar.date != date)
            traded = volume = 0;
        date = bar.date;
        traded += bar.volume * (bar.high + bar.low + bar.close) / 3;
        volume += bar.volume;
        averages.push_back(volume > 0 ? traded / volume : none);
    }
    return averages;
}

std::vector<double> closesOf(const BarSeries& series)
{
    std::vector<double> closes(series.bars().size());
    std::ranges::transform(series.bars(), closes.begin(), &Bar::close);
    return closes;
}
