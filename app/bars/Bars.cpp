#include "app/bars/Bars.h"

#include "app/bars/ExtremesTree.h"
#include "app/bars/PriceDecimals.h"

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

struct BarSeries::Content {
    Content() = default;

    explicit Content(std::vector<Bar> given) : bars(std::move(given))
    {
        if (!std::is_sorted(bars.begin(), bars.end(), isEarlier))
            std::stable_sort(bars.begin(), bars.end(), isEarlier);
        // std::unique keeps the first of equals, so it runs from the back to keep the last one.
        const auto kept = std::unique(bars.rbegin(), bars.rend(),
                                      [](const Bar& a, const Bar& b) { return momentOf(a) == momentOf(b); });
        bars.erase(bars.begin(), kept.base());
        if (bars.size() < bars.capacity() / 2)
            bars.shrink_to_fit();
        isIntraday = std::any_of(bars.begin(), bars.end(), [](const Bar& bar) { return bar.time != 0; });
        decimals = ::priceDecimals(bars);
        extremes = ExtremesTree(bars);
    }

    std::vector<Bar> bars;
    bool isIntraday = false;
    int decimals = ::priceDecimals({});
    ExtremesTree extremes;
};

BarSeries::BarSeries()
{
    static const auto none = std::make_shared<const Content>();
    content_ = none;
}

BarSeries::BarSeries(QString name, std::vector<Bar> bars)
    : name_(std::move(name)), content_(std::make_shared<const Content>(std::move(bars)))
{}

const std::vector<Bar>& BarSeries::bars() const
{
    return content_->bars;
}

bool BarSeries::isIntraday() const
{
    return content_->isIntraday;
}

int BarSeries::priceDecimals() const
{
    return content_->decimals;
}

int BarSeries::lowerBound(std::int32_t date, std::int32_t time) const
{
    const BarTime moment{date, time};
    const auto found = std::lower_bound(bars().begin(), bars().end(), moment,
                                        [](const Bar& bar, const BarTime& at) { return momentOf(bar) < at; });
    return static_cast<int>(std::distance(bars().begin(), found));
}

std::optional<Bar> BarSeries::outline(int first, int last) const
{
    const int from = std::max(first, 0);
    const int to = std::min(last, size() - 1);
    if (from > to)
        return std::nullopt;
    const BarExtremes reached =
        content_->extremes.over(bars(), static_cast<std::size_t>(from), static_cast<std::size_t>(to) + 1);
    const BarTime moment = timeAt(from);
    return Bar{moment.date, moment.time, at(from).open, reached.high, reached.low, at(to).close, reached.volume};
}

std::optional<PriceRange> BarSeries::priceRange(int first, int last) const
{
    const auto bar = outline(first, last);
    return bar ? std::optional(PriceRange{bar->low, bar->high}) : std::nullopt;
}

double BarSeries::maxVolume(int first, int last) const
{
    const auto bar = outline(first, last);
    return bar ? bar->volume : 0;
}
