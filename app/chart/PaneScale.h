#pragma once

#include "platform/QZGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

/// The two maps of a chart pane: bar index <-> x and value <-> y. Pixels are the pane's, y upwards. Not-a-number maps
/// to not-a-number, everything else to a number.
struct PaneScale {
    QZRect plot;
    double first = 0; ///< index at the left edge
    double span = 1;  ///< indices from edge to edge, positive
    double low = 0;   ///< value at the bottom
    double high = 1;  ///< value at the top, above `low`
    /// Equal heights stand for equal ratios of values, not for equal differences; `low` is positive then. What is not
    /// positive lies far below the plot.
    bool isLogarithmic = false;

    [[nodiscard]] double barWidth() const { return std::max(plot.width, 1.0) / span; }
    [[nodiscard]] double xOf(double index) const { return plot.x + (index - first) * barWidth(); }
    [[nodiscard]] double indexAt(double x) const { return first + (x - plot.x) / barWidth(); }
    [[nodiscard]] double yOf(double value) const { return plot.y + (level(value) - level(low)) * pixelsPerLevel(); }
    [[nodiscard]] double valueAt(double y) const { return valueOf(level(low) + (y - plot.y) / pixelsPerLevel()); }

    /// The bar whose stretch holds `x`, loaded or not. Kept within ten million bars around the first one, where dates
    /// still have a meaning. `x` must be a number.
    [[nodiscard]] int barAt(double x) const
    {
        constexpr double farthestBar = 1e7;
        return static_cast<int>(std::round(std::clamp(indexAt(x), -farthestBar, farthestBar)));
    }

    /// What grows evenly with the height: the value or its logarithm; and back.
    [[nodiscard]] double level(double value) const
    {
        return isLogarithmic ? std::log(std::max(value, std::numeric_limits<double>::min())) : value;
    }
    [[nodiscard]] double valueOf(double itsLevel) const
    {
        constexpr double farthest = 700; // where exp() still gives a positive number
        return isLogarithmic ? std::exp(std::clamp(itsLevel, -farthest, farthest)) : itsLevel;
    }

private:
    [[nodiscard]] double pixelsPerLevel() const { return std::max(plot.height, 1.0) / (level(high) - level(low)); }
};
