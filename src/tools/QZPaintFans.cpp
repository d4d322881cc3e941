#include "tools/QZPaintFans.h"

#include "model/QZPlaneGeometry.h"
#include "platform/QZFont.h"
#include "tools/QZPaintStrokes.h"

#include <array>
#include <span>

namespace {

constexpr std::uint64_t throughSecondPoint = 0;
constexpr std::array<std::int32_t, 4> gannDivisors{2, 3, 4, 8};
constexpr std::uint64_t firstRiseRay = 1 + gannDivisors.size();
constexpr double captionSize = 11.0;
constexpr QZPoint captionShift{-8.0, -5.0};
constexpr std::array speedRatios{0.67, 0.33};

bool hasDivisor(std::uint64_t index)
{
    return index > throughSecondPoint && index < QZPaintGannFan::rayCount;
}

std::int32_t divisorOf(std::uint64_t index)
{
    return gannDivisors.at((index - 1) % gannDivisors.size());
}

/// The part of a distance (px) that ray `index` is aimed at, cut off to whole px: a third of 7.9 is 2.
std::int32_t wholePart(double distance, std::uint64_t index)
{
    return truncatedToInt(distance) / divisorOf(index);
}

QZPoint verticalEnd(QZPoint from, QZPoint towards, QZRect frame)
{
    return {from.x, from.y < towards.y ? frame.maxY() : frame.minY()};
}

} // namespace

QZLine QZPaintGannFan::linePoints(std::uint64_t index) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    QZPoint target = p1;
    if (hasDivisor(index) && index < firstRiseRay)
        target.x = p0.x + wholePart(p1.x - p0.x, index);
    else if (hasDivisor(index))
        target.y = p0.y + wholePart(p1.y - p0.y, index);
    const QZRect f = frame();
    return {p0, getPointFromLine(p1.x < p0.x ? f.minX() : f.maxX(), p0, target)};
}

QString QZPaintGannFan::rateFromeCount(std::uint64_t index)
{
    return hasDivisor(index) ? QStringLiteral("1/%1").arg(divisorOf(index)) : QStringLiteral("1");
}

double QZPaintGannFan::minDistanceFromPoint(QZPoint point)
{
    // A vertical ray, which runs to the missing point here, is hit at its start alone.
    double nearest = missingCoordinate;
    for (std::uint64_t i = 0; i < rayCount; ++i)
        nearest = distanceToLines(point, std::array{linePoints(i)}, nearest);
    return nearest;
}

void QZPaintGannFan::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QFont font = systemFont(captionSize);
    for (std::uint64_t i = 0; i < rayCount; ++i) {
        QZLine ray = linePoints(i);
        if (ray.end == missingPoint) {
            ray.end = verticalEnd(p0, p1, frame());
            context.strokeSegment({p0, p1});
        }
        context.strokeSegment(ray);
        const QZPoint at = i < firstRiseRay ? getPointFromLineViaY(p1.y, ray.start, ray.end)
                                            : getPointFromLine(p1.x, ray.start, ray.end);
        drawTextInContext(context, rateFromeCount(i), font, {at.x + captionShift.x, at.y + captionShift.y});
    }
}

std::vector<QZLine> QZPaintSpeedResistance::rays() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const QZRect f = frame();
    if (p0.x == p1.x)
        return {{p0, verticalEnd(p0, p1, f)}};
    const QZPoint end = getPointFromLine(p0.x < p1.x ? f.maxX() : f.minX(), p0, p1);
    std::vector<QZLine> rays{{p0, end}};
    for (const double ratio : speedRatios)
        rays.push_back({p0, {end.x, p0.y + (end.y - p0.y) * ratio}});
    return rays;
}

double QZPaintSpeedResistance::minDistanceFromPoint(QZPoint point)
{
    return distanceToLines(point, rays());
}

void QZPaintSpeedResistance::drawFigure(QZGraphicsContext& context)
{
    const std::vector<QZLine> lines = rays();
    context.strokeSegment(lines.front());
    context.setLineDash(0.0, auxiliaryDash(static_cast<double>(lineWidth())));
    strokeLines(context, std::span(lines).subspan(1));
}
