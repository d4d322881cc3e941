#include "tools/QZPaintStrokes.h"

#include <algorithm>

void strokeLines(QZGraphicsContext& context, std::span<const QZLine> lines)
{
    for (const QZLine& line : lines)
        context.strokeSegment(line);
}

void addPolyline(QZGraphicsContext& context, std::span<const QZPoint> points)
{
    if (points.empty())
        return;
    context.moveTo(points.front());
    for (const QZPoint point : points.subspan(1))
        context.lineTo(point);
}

void strokePolyline(QZGraphicsContext& context, std::span<const QZPoint> points)
{
    if (points.size() < 2)
        return;
    context.beginPath();
    addPolyline(context, points);
    context.strokePath();
}

double distanceToLines(QZPoint point, std::span<const QZLine> lines, double farthest)
{
    double nearest = farthest;
    for (const QZLine& line : lines)
        nearest = std::min(nearest, minDistanceFromPointToSegment(point, line.start, line.end));
    return nearest;
}

double distanceToPolyline(QZPoint point, std::span<const QZPoint> points, double farthest)
{
    double nearest = farthest;
    for (std::size_t i = 1; i < points.size(); ++i)
        nearest = std::min(nearest, minDistanceFromPointToSegment(point, points[i - 1], points[i]));
    return nearest;
}
