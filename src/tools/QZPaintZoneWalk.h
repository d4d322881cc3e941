#pragma once

#include "platform/QZGeometry.h"

#include <cstdint>
#include <functional>
#include <optional>

/// Vertical lines that repeat over time, one per turn, from an origin towards one side of the chart until the first
/// one beyond what is visible, that one included (Fibonacci time zones, cycles). From an origin out of sight, the first
/// turn that comes into sight is left out as well.
struct QZPaintZoneWalk {
    double origin = 0.0; ///< x (px) from which the turns count
    bool isRightward = true;
    QZRect visible; ///< of the chart (px)

    /// x (px) of turn `k`, counted from 1; nothing ends the walk.
    using PositionOfTurn = std::function<std::optional<double>(std::int32_t k)>;
    using Visit = std::function<void(double x, std::int32_t k)>;

    /// Calls `visit` for each turn that shows. Ends whatever a host answers: behind missingCoordinate, which says that
    /// there is no such bar, and at not-a-number, a turn that goes back, or very many in a row that stand still.
    void run(const PositionOfTurn& positionOfTurn, const Visit& visit) const;
};
