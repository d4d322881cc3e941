#pragma once

#include "model/QZDrawingTypes.h"
#include "platform/QZGeometry.h"

#include <cmath>
#include <optional>
#include <span>

/// Index of the first point whose x is closer than maxMinDistance to `x` (px), for tools whose handles reach over the
/// full height of the pane.
inline std::optional<int> pointNearX(std::span<const QZPoint> points, double x)
{
    for (std::size_t i = 0; i < points.size(); ++i)
        if (std::abs(points[i].x - x) < maxMinDistance)
            return static_cast<int>(i);
    return std::nullopt;
}
