#include "app/bars/Swings.h"

#include <algorithm>

namespace {

bool isSwing(const BarSeries& series, int bar, int reach, double Bar::*side, double sign)
{
    const double value = sign * series.at(bar).*side;
    const int first = std::max(0, bar - reach);
    const int last = std::min(series.size() - 1, bar + reach);
    for (int other = first; other <= last; ++other) {
        const double otherValue = sign * series.at(other).*side;
        if (otherValue > value || (otherValue == value && other < bar))
            return false;
    }
    return true;
}

} // namespace

std::vector<Swing> findSwings(const BarSeries& series, int first, int last, int reach)
{
    std::vector<Swing> swings;
    for (int bar = std::max(first, 0); bar <= std::min(last, series.size() - 1); ++bar) {
        if (isSwing(series, bar, reach, &Bar::high, 1))
            swings.push_back({bar, true, series.at(bar).high});
        if (isSwing(series, bar, reach, &Bar::low, -1))
            swings.push_back({bar, false, series.at(bar).low});
    }
    return swings;
}
