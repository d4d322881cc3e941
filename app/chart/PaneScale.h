#pragma once

#include "platform/QZGeometry.h"

#include <algorithm>
#include <cmath>

/// The two linear maps of a chart pane: bar index <-> x and value <-> y. Pixels are the pane's, y upwards. Not-a-number
/// maps to not-a-number, everything else to a number.
struct PaneScale {
    QZRect plot;
    double first = 0; ///< index at the left edge
    double span = 1;  ///< indices from edge to edge, positive
    double low = 0;   ///< value at the bottom
    double high = 1;  ///< value at the top, above `low`

    [[nodiscard]] double barWidth() const { return std::max(plot.width, 1.0) / span; }
    [[nodiscard]] double xOf(double index) const { return plot.x + (index - first) * barWidth(); }
    [[nodiscard]] double indexAt(double x) const { return first + (x - plot.x) / barWidth(); }
    [[nodiscard]] double yOf(double value) const { return plot.y + (value - low) * pixelsPerValue(); }
    [[nodiscard]] double valueAt(double y) const { return low + (y - plot.y) / pixelsPerValue(); }

    /// The bar whose stretch holds `x`, loaded or not. Kept within ten million bars around the first one, where dates
    /// still have a meaning. `x` must be a number.
    [[nodiscard]] int barAt(double x) const
    {
        constexpr double farthestBar = 1e7;
        return static_cast<int>(std::round(std::clamp(indexAt(x), -farthestBar, farthestBar)));
    }

private:
    [[nodiscard]] double pixelsPerValue() const { return std::max(plot.height, 1.0) / (high - low); }
};
