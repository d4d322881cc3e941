#pragma once

#include "model/QZPlaneGeometry.h"
#include "platform/QZGraphicsContext.h"

#include <array>
#include <span>

/// What a figure consists of is written once, as a list of lines or of points, and stroked and measured by these.
/// Points are layer coordinates (px). A closed polyline is a list that ends with its first point.

/// Strokes each line by itself, in order.
void strokeLines(QZGraphicsContext& context, std::span<const QZLine> lines);
/// Adds a subpath through all points to the current path.
void addPolyline(QZGraphicsContext& context, std::span<const QZPoint> points);
/// Strokes one path through all points; nothing for less than two.
void strokePolyline(QZGraphicsContext& context, std::span<const QZPoint> points);

/// Distance (px) to the nearest of the segments, `farthest` when none is nearer.
double distanceToLines(QZPoint point, std::span<const QZLine> lines, double farthest = missingCoordinate);
/// Distance (px) to the nearest segment between neighbouring points, `farthest` when none is nearer.
double distanceToPolyline(QZPoint point, std::span<const QZPoint> points, double farthest = missingCoordinate);

/// Dash of auxiliary lines (px): 5 line widths on, 3 off.
constexpr std::array<double, 2> auxiliaryDash(double lineWidth)
{
    return {5.0 * lineWidth, 3.0 * lineWidth};
}
