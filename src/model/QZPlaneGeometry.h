#pragma once

#include "platform/QZGeometry.h"

#include <cstdint>
#include <limits>

/// Both coordinates of a point that does not exist: the largest 32-bit float, held in doubles.
inline constexpr double missingCoordinate = static_cast<double>(std::numeric_limits<float>::max());
inline constexpr QZPoint missingPoint{missingCoordinate, missingCoordinate};
/// What a host's conversion answers for a chart point that it cannot place.
inline constexpr QZPoint unplaceablePoint{-missingCoordinate, -missingCoordinate};

/// Whether both coordinates lie in the closed range of ±100000 px in which figures are measured and drawn.
bool isWithinDrawingRange(QZPoint point);

/// Euclidean distance (px); maxMinDistance when a coordinate is out of range.
double distanceOfPoints(QZPoint a, QZPoint b);
/// Distance (px) from `p` to the infinite line through `a` and `b`; maxMinDistance when a coordinate is out of range.
double minDistanceFromPointToLine(QZPoint p, QZPoint a, QZPoint b);
/// Distance (px) from `p` to the segment. A vertical segment is measured as its whole line.
double minDistanceFromPointToSegment(QZPoint p, QZPoint a, QZPoint b);

/// The point of the line through `a` and `b` at `x`; `a` when both are the same; missingPoint for a vertical line.
QZPoint getPointFromLine(double x, QZPoint a, QZPoint b);
/// The point of the line through `a` and `b` at `y`; missingPoint for a horizontal line, coincident points included.
QZPoint getPointFromLineViaY(double y, QZPoint a, QZPoint b);

/// The point of the infinite line through `a` and `b` that is nearest to `p`; not a number when both are the same.
QZPoint footOfPerpendicular(QZPoint p, QZPoint a, QZPoint b);
/// The line through `a` and `b` from side to side of `frame`, in the direction from `a` to `b`; from top to bottom when
/// both have the same x. Both ends are missingPoint when their x differ by less than 0.0001.
QZLine lineAcross(QZRect frame, QZPoint a, QZPoint b);

/// The whole part; the nearest 32-bit integer where it has none, 0 for not-a-number.
std::int32_t truncatedToInt(double value);

/// Most that fibonacci() can be asked for: the next number is none of 32 bits.
inline constexpr std::int32_t maxFibonacciIndex = 46;
/// The n-th Fibonacci number (1, 1, 2, 3, 5, ...); -1 for n below 1. `n` is at most maxFibonacciIndex.
std::int32_t fibonacci(std::int32_t n);
