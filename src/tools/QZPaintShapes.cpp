#include "tools/QZPaintShapes.h"

#include "platform/QZFont.h"
#include "tools/QZPaintCaption.h"
#include "tools/QZPaintStrokes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace {

// Not distanceOfPoints(), whose answer for points far off would pass for a radius within reach.
double distanceBetween(QZPoint a, QZPoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

} // namespace

std::array<QZPoint, 4> QZPaintTriangle::outline() const
{
    return {points()[0], points()[1], points()[2], points()[0]};
}

double QZPaintTriangle::minDistanceFromPoint(QZPoint point)
{
    return distanceToPolyline(point, outline());
}

void QZPaintTriangle::drawFigure(QZGraphicsContext& context)
{
    if (hasLastPoint())
        strokePolyline(context, outline());
    else
        strokePolyline(context, placedPoints());
}

std::array<QZPoint, 5> QZPaintParallelogram::outline() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QZPoint p2 = points()[2];
    return {p0, p1, p2, {p0.x + p2.x - p1.x, p0.y + p2.y - p1.y}, p0};
}

double QZPaintParallelogram::minDistanceFromPoint(QZPoint point)
{
    return distanceToPolyline(point, outline());
}

void QZPaintParallelogram::drawFigure(QZGraphicsContext& context)
{
    if (hasLastPoint())
        strokePolyline(context, outline());
    else
        strokePolyline(context, std::array{points()[0], points()[1], points()[0]});
}

double QZPaintRectangle::minDistanceFromPoint(QZPoint point)
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    return distanceToPolyline(point, std::array{p0, QZPoint{p1.x, p0.y}, p1, QZPoint{p0.x, p1.y}, p0});
}

void QZPaintRectangle::applyStyle(QZGraphicsContext& context) const
{
    setDefaultConfig(context);
    // Its corners show earlier than those of other figures.
    if (lineWidth() >= 4) {
        context.setLineJoin(QZLineJoin::Round);
        context.setLineCap(QZLineCap::Round);
    }
}

void QZPaintRectangle::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    context.strokeRect({p0.x, p0.y, p1.x - p0.x, p1.y - p0.y});
    drawInfomation(context);
}

void QZPaintRectangle::drawInfomation(QZGraphicsContext& context) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const auto model = rangeOfPoints();
    if (!model)
        return;
    const auto width = static_cast<double>(lineWidth());
    const double gap = 2.0 + width;
    const double below = measureText(QStringLiteral("aaa"), captionFont()).height + width;
    const auto [left, right] = std::minmax(p0.x, p1.x);
    const bool isUpward = p1.y > p0.y;
    const double firstY = isUpward ? p0.y + gap : p0.y - below;
    const double secondY = isUpward ? p1.y - below : p1.y + gap;
    if (!model->identify.isNull())
        drawTextInContext(context, countCaption(model->identify, std::abs(std::int64_t{model->count})),
                          {left + gap, firstY});
    drawTextInContext(context, percentCaption(static_cast<double>(model->varyScope), 2), {right + gap, firstY});
    drawTextInContext(context, model->varyPrice, {right + gap, secondY});
}

double QZPaintArc::radius(float ratio) const
{
    return static_cast<double>(ratio) * distanceBetween(points()[0], points()[1]);
}

double QZPaintArc::minDistanceFromPoint(QZPoint point)
{
    const QZPoint center = points()[0];
    const QZPoint p1 = points()[1];
    if ((center.y > p1.y && point.y > center.y) || (p1.y > center.y && point.y < center.y))
        return maxMinDistance;
    const double fromCenter = distanceBetween(point, center);
    double nearest = maxMinDistance;
    for (const float ratio : arc)
        nearest = std::min(nearest, std::abs(fromCenter - radius(ratio)));
    return std::min(nearest, minDistanceFromPointToSegment(point, center, p1));
}

void QZPaintArc::drawFigure(QZGraphicsContext& context)
{
    const QZPoint center = points()[0];
    const QZPoint p1 = points()[1];
    context.strokeSegment({center, p1});
    const double labelOffset = static_cast<double>(lineWidth()) + 13.0;
    const double labelY = center.y <= p1.y ? center.y - labelOffset : center.y;
    for (const float ratio : arc) {
        const double r = radius(ratio);
        context.beginPath();
        // Clockwise from the right end, the half circle goes down.
        context.addArc(center, r, 0.0, std::numbers::pi, center.y > p1.y);
        context.strokePath();
        drawTextInContext(context, percentCaption(static_cast<double>(ratio) * 100.0, 1), captionFont(),
                          {center.x + r - labelOffset, labelY});
    }
}
