#include "app/bars/ExtremesTree.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t fanOut = 16;

constexpr BarExtremes nothing{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 0};

template <typename Entry>
void include(BarExtremes& reached, const Entry& entry)
{
    reached.low = std::min(reached.low, entry.low);
    reached.high = std::max(reached.high, entry.high);
    reached.volume = std::max(reached.volume, entry.volume);
}

template <typename Entry>
std::vector<BarExtremes> levelAbove(std::span<const Entry> entries)
{
    std::vector<BarExtremes> level((entries.size() + fanOut - 1) / fanOut, nothing);
    for (std::size_t i = 0; i < entries.size(); ++i)
        include(level[i / fanOut], entries[i]);
    return level;
}

struct Stretch {
    std::size_t first;
    std::size_t end;
};

/// Includes the entries at both ends that fill no entry of the level above; returns what is left, in that level.
template <typename Entry>
Stretch includeEnds(BarExtremes& reached, std::span<const Entry> entries, Stretch stretch)
{
    while (stretch.first < stretch.end && stretch.first % fanOut != 0)
        include(reached, entries[stretch.first++]);
    while (stretch.first < stretch.end && stretch.end % fanOut != 0)
        include(reached, entries[--stretch.end]);
    return {stretch.first / fanOut, stretch.end / fanOut};
}

} // namespace

ExtremesTree::ExtremesTree(std::span<const Bar> bars)
{
    levels_.push_back(levelAbove(bars));
    while (levels_.back().size() > 1)
        levels_.push_back(levelAbove(std::span<const BarExtremes>(levels_.back())));
}

BarExtremes ExtremesTree::over(std::span<const Bar> bars, std::size_t first, std::size_t end) const
{
    BarExtremes reached = nothing;
    Stretch left = includeEnds(reached, bars, {first, end});
    for (const std::vector<BarExtremes>& level : levels_) {
        if (left.first >= left.end)
            break;
        left = includeEnds(reached, std::span<const BarExtremes>(level), left);
    }
    return reached;
}
