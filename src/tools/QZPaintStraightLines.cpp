#include "tools/QZPaintStraightLines.h"

#include "model/QZPlaneGeometry.h"
#include "tools/QZPaintCaption.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

double distanceToLine(QZPoint point, const QZLine& line)
{
    return minDistanceFromPointToSegment(point, line.start, line.end);
}

} // namespace

double QZPaintSegmentLine::minDistanceFromPoint(QZPoint point)
{
    return minDistanceFromPointToSegment(point, points()[0], points()[1]);
}

void QZPaintSegmentLine::drawFigure(QZGraphicsContext& context)
{
    context.strokeSegment({points()[0], points()[1]});
}

double QZPaintStraightLine::minDistanceFromPoint(QZPoint point)
{
    return minDistanceFromPointToLine(point, points()[0], points()[1]);
}

void QZPaintStraightLine::drawFigure(QZGraphicsContext& context)
{
    if (points()[0] != points()[1])
        context.strokeSegment(lineAcross(frame(), points()[0], points()[1]));
}

QZLine QZPaintRayLine::linePoints() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QZRect f = frame();
    QZPoint end = getPointFromLine(p1.x < p0.x ? f.minX() : f.maxX(), p0, p1);
    if (end == missingPoint)
        end = {p0.x, p0.y < p1.y ? f.maxY() : f.minY()};
    return {p0, end};
}

double QZPaintRayLine::minDistanceFromPoint(QZPoint point)
{
    return distanceToLine(point, linePoints());
}

void QZPaintRayLine::drawFigure(QZGraphicsContext& context)
{
    if (points()[0] != points()[1])
        context.strokeSegment(linePoints());
}

double QZPaintSegmentArrow::minDistanceFromPoint(QZPoint point)
{
    return minDistanceFromPointToSegment(point, points()[0], points()[1]);
}

void QZPaintSegmentArrow::drawFigure(QZGraphicsContext& context)
{
    constexpr int headLength = 10;
    constexpr int headAngle = 30;
    // The head's corners show from this width on, before other figures' joins are rounded.
    if (lineWidth() >= 4) {
        context.setLineJoin(QZLineJoin::Round);
        context.setLineCap(QZLineCap::Round);
    }
    context.strokeSegment({points()[0], points()[1]});
    drawArrowWithContext(context, points()[0], points()[1], headLength, headAngle);
}

void QZPaintSegmentArrow::drawArrowWithContext(QZGraphicsContext& context, QZPoint startPoint, QZPoint endPoint,
                                               int length, int alpha) const
{
    if (startPoint == endPoint)
        return;
    const double theta = std::asin((endPoint.y - startPoint.y) / distanceOfPoints(startPoint, endPoint));
    const double a = alpha / 180.0 * std::numbers::pi;
    const double towardsStart = endPoint.x > startPoint.x ? -1.0 : 1.0;
    const auto barb = [&](double angle) {
        return QZPoint{endPoint.x + towardsStart * length * std::cos(angle), endPoint.y - length * std::sin(angle)};
    };
    context.saveState();
    setDefaultConfig(context);
    context.setLineDash(0.0, std::array{1.0, 0.0});
    context.beginPath();
    context.moveTo(barb(theta + a));
    context.lineTo(endPoint);
    context.lineTo(barb(theta - a));
    context.strokePath();
    context.restoreState();
}

QZLine QZPaintHorizonLine::linePoints() const
{
    const double y = points()[0].y;
    return {{frame().minX(), y}, {frame().maxX(), y}};
}

double QZPaintHorizonLine::minDistanceFromPoint(QZPoint point)
{
    return distanceToLine(point, linePoints());
}

void QZPaintHorizonLine::drawFigure(QZGraphicsContext& context)
{
    context.strokeSegment(linePoints());
}

QZLine QZPaintToolPriceLine::linePoints() const
{
    return {points()[0], {frame().maxX(), points()[0].y}};
}

double QZPaintToolPriceLine::minDistanceFromPoint(QZPoint point)
{
    return distanceToLine(point, linePoints());
}

void QZPaintToolPriceLine::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    context.strokeSegment(linePoints());

    const auto width = static_cast<double>(lineWidth());
    const double x = std::max(validateRect().minX(), p0.x) + width;
    drawTextInContext(context, priceCaption(chart(), priceAt(p0), 3), captionFont(), {x, p0.y + width});
}
