#include "app/bars/Bars.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

BarTime momentOf(const Bar& bar)
{
    return {bar.date, bar.time};
}

bool isEarlier(const Bar& left, const Bar& right)
{
    return momentOf(left) < momentOf(right);
}

} // namespace

BarSeries::BarSeries(QString name, std::vector<Bar> bars) : name_(std::move(name)), bars_(std::move(bars))
{
    if (!std::is_sorted(bars_.begin(), bars_.end(), isEarlier))
        std::stable_sort(bars_.begin(), bars_.end(), isEarlier);
    // std::unique keeps the first of equals, so it runs from the back to keep the last one.
    const auto kept = std::unique(bars_.rbegin(), bars_.rend(),
                                  [](const Bar& a, const Bar& b) { return momentOf(a) == momentOf(b); });
    bars_.erase(bars_.begin(), kept.base());
    intraday_ = std::any_of(bars_.begin(), bars_.end(), [](const Bar& bar) { return bar.time != 0; });
}

int BarSeries::lowerBound(std::int32_t date, std::int32_t time) const
{
    const BarTime moment{date, time};
    const auto found = std::lower_bound(bars_.begin(), bars_.end(), moment,
                                        [](const Bar& bar, const BarTime& at) { return momentOf(bar) < at; });
    return static_cast<int>(std::distance(bars_.begin(), found));
}

std::optional<PriceRange> BarSeries::priceRange(int first, int last) const
{
    const int from = std::max(first, 0);
    const int to = std::min(last, size() - 1);
    if (from > to)
        return std::nullopt;
    PriceRange range{at(from).low, at(from).high};
    for (int index = from + 1; index <= to; ++index) {
        range.low = std::min(range.low, at(index).low);
        range.high = std::max(range.high, at(index).high);
    }
    return range;
}

double BarSeries::maxVolume(int first, int last) const
{
    double volume = 0;
    for (int index = std::max(first, 0); index <= std::min(last, size() - 1); ++index)
        volume = std::max(volume, at(index).volume);
    return volume;
}
