#pragma once

#include "platform/QZGeometry.h"

#include <cstdint>
#include <functional>
#include <optional>

/// Vertical lines that repeat over time, one per turn, from an origin towards one side of the chart until the first
/// one beyond what is visible (Fibonacci time zones, cycles). Turns left out on the near side are those before the
/// origin's side of the visible area is reached, and the first one that reaches it.
struct QZPaintZoneWalk {
    double origin = 0.0; ///< x (px) from which the turns count
    bool isRightward = true;
    QZRect visible; ///< of the chart (px)

    /// x (px) of turn `k`, counted from 1; nothing ends the walk.
    using PositionOfTurn = std::function<std::optional<double>(std::int32_t k)>;
    using Visit = std::function<void(double x, std::int32_t k)>;

    /// Calls `visit` for each turn that shows. Ends whatever a host answers: behind missingCoordinate, which says that
    /// there is no such bar, at not-a-number, and when several answers in a row do not go on.
    void run(const PositionOfTurn& positionOfTurn, const Visit& visit) const;
};
