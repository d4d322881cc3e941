#pragma once

#include "app/bars/Bars.h"

#include <span>
#include <vector>

/// What a stretch of bars reached.
struct BarExtremes {
    double low = 0;
    double high = 0;
    double volume = 0; ///< the largest
};

/// Extremes of every 16 bars, of every 256 and so on, so that those of any stretch are found without a look at each
/// bar.
class ExtremesTree {
public:
    ExtremesTree() = default;
    explicit ExtremesTree(std::span<const Bar> bars);

    /// Of the bars from index `first` to before index `end`, at least one. `bars` are those of the constructor.
    [[nodiscard]] BarExtremes over(std::span<const Bar> bars, std::size_t first, std::size_t end) const;

private:
    std::vector<std::vector<BarExtremes>> levels_; ///< each of 16 entries of the one before, the first one of 16 bars
};
