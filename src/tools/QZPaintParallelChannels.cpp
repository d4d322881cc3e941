#include "tools/QZPaintParallelChannels.h"

#include "tools/QZPaintStrokes.h"

#include <algorithm>

void QZPaintParallelChannel::applyStyle(QZGraphicsContext& context) const
{
    context.setStrokeColor(strokeColor());
    context.setLineWidth(static_cast<double>(lineWidth()));
    setLineDash(context);
}

void QZPaintParallelChannel::drawFigure(QZGraphicsContext& context)
{
    if (points()[0] == points()[1])
        return;
    const std::array lines = channelLines();
    stroke(Part::Lines, std::span(lines).first(isEditing() ? 1 : 2), context);
    // Also over the finished parallel while its handle is dragged.
    if (currentPoint() == 2)
        stroke(Part::Preview, std::span(lines).last(1), context);
}

void QZPaintParallelChannel::stroke(Part part, std::span<const QZLine> lines, QZGraphicsContext& context) const
{
    context.saveState();
    if (part == roundPart_)
        setDefaultConfig(context);
    strokeLines(context, lines);
    context.restoreState();
}

QZLine QZPaintParalleLine::line1Points() const
{
    return lineAcross(frame(), points()[0], points()[1]);
}

QZLine QZPaintParalleLine::line2Points(QZLine line1) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QZPoint p2 = points()[2];
    if (p0.x == p1.x)
        return {{p2.x, line1.start.y}, {p2.x, line1.end.y}};
    const double d = p2.y - getPointFromLine(p2.x, p0, p1).y;
    return {{line1.start.x, line1.start.y + d}, {line1.end.x, line1.end.y + d}};
}

std::array<QZLine, 2> QZPaintParalleLine::channelLines() const
{
    const QZLine line1 = line1Points();
    return {line1, line2Points(line1)};
}

double QZPaintParalleLine::minDistanceFromPoint(QZPoint point)
{
    return distanceToLines(point, channelLines());
}

QZLine QZPaintParalleSegment::line2Points() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QZPoint p2 = points()[2];
    if (p0.x == p1.x)
        return {{p2.x, p0.y}, {p2.x, p1.y}};
    const QZPoint foot = footOfPerpendicular(p2, p0, p1);
    const QZPoint across{p2.x - foot.x, p2.y - foot.y};
    return {{p0.x + across.x, p0.y + across.y}, {p1.x + across.x, p1.y + across.y}};
}

std::array<QZLine, 2> QZPaintParalleSegment::channelLines() const
{
    return {QZLine{points()[0], points()[1]}, line2Points()};
}

double QZPaintParalleSegment::minDistanceFromPoint(QZPoint point)
{
    return std::min(distanceToLines(point, channelLines()), distanceOfPoints(point, points()[2]));
}
