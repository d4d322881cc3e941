#include "tools/QZPaintTimeCycles.h"

#include "model/QZPaintChart.h"
#include "model/QZPlaneGeometry.h"
#include "platform/QZFont.h"
#include "platform/QZNumberText.h"
#include "tools/QZPaintCaption.h"
#include "tools/QZPaintStrokes.h"
#include "tools/QZPaintZoneWalk.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <span>

namespace {

/// The mirror image, the first point itself and the second one, in spans.
constexpr std::array<std::int32_t, 3> symmertic{-1, 0, 1};

/// The count of the bar from which is counted.
constexpr std::int32_t ownCount(bool isRightward)
{
    return isRightward ? 1 : -1;
}

QZPoint countPosition(double x, double lineWidth, QZRect visible)
{
    return {x + lineWidth + 1.0, visible.maxY() - 20.0};
}

std::optional<std::int32_t> equalMultiplier(std::int32_t turn)
{
    return turn;
}

std::optional<std::int32_t> fibonacciMultiplier(std::int32_t turn)
{
    return turn <= maxFibonacciIndex ? std::optional(fibonacci(turn)) : std::nullopt;
}

} // namespace

void QZPaintCountedLines::drawLine(QZGraphicsContext& context, double x, std::int32_t count) const
{
    const QZRect visible = validateRect();
    context.strokeSegment({{x, visible.minY()}, {x, visible.maxY()}});
    drawTextInContext(context, QString::number(count), captionFont(),
                      countPosition(x, static_cast<double>(lineWidth()), visible));
}

void QZPaintCountedLines::walk(bool isRightward, const CountOfTurn& countOfTurn, const Visit& visit) const
{
    const QZPaintChart* host = chart();
    if (host == nullptr)
        return;
    const double origin = points()[0].x;
    const auto location = static_cast<float>(std::clamp(origin, -missingCoordinate, missingCoordinate));
    std::int32_t count = 0;
    const auto positionOfTurn = [&](std::int32_t turn) -> std::optional<double> {
        const auto next = countOfTurn(turn);
        if (!next)
            return std::nullopt;
        count = *next;
        return host->getXPointWithLocation(location, count - ownCount(isRightward));
    };
    const QZPaintZoneWalk zones{.origin = origin, .isRightward = isRightward, .visible = validateRect()};
    zones.run(positionOfTurn, [&](double x, std::int32_t /*turn*/) { visit(x, count); });
}

void QZPaintCountedLines::drawLines(QZGraphicsContext& context) const
{
    forEachLine([&](double x, std::int32_t count) { drawLine(context, x, count); });
}

double QZPaintCountedLines::distanceToNearest(double x, double farthest) const
{
    double nearest = farthest;
    forEachLine([&](double lineX, std::int32_t /*count*/) { nearest = std::min(nearest, std::abs(x - lineX)); });
    return nearest;
}

void QZPaintFibonacci::forEachLine(const Visit& visit) const
{
    walk(true, fibonacciMultiplier, visit);
}

double QZPaintFibonacci::minDistanceFromPoint(QZPoint point)
{
    return distanceToNearest(point.x, maxMinDistance);
}

void QZPaintFibonacci::drawFigure(QZGraphicsContext& context)
{
    drawLines(context);
}

QZPaintCycleLine::QZPaintCycleLine() : QZPaintCycles(QZSTCycle, equalMultiplier) {}

QZPaintFreeFeis::QZPaintFreeFeis() : QZPaintCycles(QZSTFreeFeis, fibonacciMultiplier) {}

void QZPaintCycles::forEachLine(const Visit& visit) const
{
    const bool isRightward = points()[1].x >= points()[0].x;
    const std::int64_t own = ownCount(isRightward);
    const auto range = rangeOfPoints();
    const std::int64_t step = range ? range->count - own : 0;
    if (step == 0)
        return;
    const auto countOfTurn = [&](std::int32_t turn) -> std::optional<std::int32_t> {
        constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max() - 1;
        const auto multiplier = multiplier_(turn);
        if (!multiplier)
            return std::nullopt;
        const std::int64_t gap = step * *multiplier;
        if (std::abs(gap) > most)
            return std::nullopt;
        return static_cast<std::int32_t>(gap + own);
    };
    walk(isRightward, countOfTurn, visit);
}

double QZPaintCycles::minDistanceFromPoint(QZPoint point)
{
    const double x0 = points()[0].x;
    const double toFirst = std::abs(point.x - x0);
    return x0 == points()[1].x ? toFirst : distanceToNearest(point.x, toFirst);
}

void QZPaintCycles::drawFigure(QZGraphicsContext& context)
{
    const double x0 = points()[0].x;
    const double x1 = points()[1].x;
    drawLine(context, x0, ownCount(x1 >= x0));
    // Without a span the figure's style outlives it: what is restored after this is what is saved here.
    if (x0 == x1)
        context.saveState();
    else
        drawLines(context);
}

std::array<QZLine, 3> QZPaintTimeRule::lines() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const double middle = (p0.y + p1.y) / 2.0;
    return {QZLine{p0, {p0.x, p1.y}}, QZLine{{p1.x, p0.y}, p1}, QZLine{{p0.x, middle}, {p1.x, middle}}};
}

double QZPaintTimeRule::minDistanceFromPoint(QZPoint point)
{
    return distanceToLines(point, lines());
}

void QZPaintTimeRule::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const auto all = lines();
    strokeLines(context, std::span(all).first(2));
    tintFillColor();
    context.setFillColor(fillColor());
    context.fillRect({p0.x, p0.y, p1.x - p0.x, p1.y - p0.y});
    context.setLineDash(0.0, auxiliaryDash(static_cast<double>(lineWidth())));
    context.strokeSegment(all.back());
    drawBarCount(context);
}

void QZPaintTimeRule::drawBarCount(QZGraphicsContext& context) const
{
    const auto range = rangeOfPoints();
    if (!range || range->identify.isNull())
        return;
    const QString text = countCaption(range->identify, std::abs(std::int64_t{range->count}));
    const QFont font = captionFont();
    const QZLine middle = lines().back();
    const double x = (middle.start.x + middle.end.x - measureText(text, font).width) / 2.0;
    drawTextInContext(context, text, font, {x, middle.start.y + static_cast<double>(lineWidth())});
}

QZLine QZPaintSymmetricLine::linePoints(float ratio) const
{
    const double x0 = points()[0].x;
    double x = x0 + static_cast<double>(ratio) * (points()[1].x - x0);
    // The mirror image may lie beyond the last bar.
    if (const QZPaintChart* host = chart())
        x = host->convertXForMagnet(x, true);
    return {{x, frame().minY()}, {x, frame().maxY()}};
}

std::array<QZLine, 3> QZPaintSymmetricLine::lines() const
{
    std::array<QZLine, 3> lines;
    std::ranges::transform(symmertic, lines.begin(),
                           [this](std::int32_t spans) { return linePoints(static_cast<float>(spans)); });
    return lines;
}

double QZPaintSymmetricLine::minDistanceFromPoint(QZPoint point)
{
    return distanceToLines(point, lines(), maxMinDistance);
}

void QZPaintSymmetricLine::drawFigure(QZGraphicsContext& context)
{
    strokeLines(context, lines());
    drawInfomation(context);
}

void QZPaintSymmetricLine::drawInfomation(QZGraphicsContext& context) const
{
    if (const auto range = rangeOfPoints())
        drawTextInContext(context, QString::number(range->count), captionFont(),
                          countPosition(points()[0].x, static_cast<double>(lineWidth()), validateRect()));
}

QZLine QZPaintSymmetricAngleLine::linePoints(float ratio) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    return {p0, {p0.x + static_cast<double>(ratio) * (p1.x - p0.x), p1.y}};
}

QZPoint QZPaintSymmetricAngleLine::mirrored() const
{
    return {2.0 * points()[0].x - points()[1].x, points()[1].y};
}

QZPoint QZPaintSymmetricAngleLine::axisEnd() const
{
    return {points()[0].x, points()[1].y};
}

double QZPaintSymmetricAngleLine::minDistanceFromPoint(QZPoint point)
{
    const QZPoint p0 = points()[0];
    return distanceToLines(point, std::array{QZLine{points()[1], p0}, QZLine{axisEnd(), p0}, QZLine{mirrored(), p0}});
}

void QZPaintSymmetricAngleLine::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    strokePolyline(context, std::array{points()[1], p0, mirrored()});
    context.strokeSegment({p0, axisEnd()});
    drawAngleText(context);
}

void QZPaintSymmetricAngleLine::drawAngleText(QZGraphicsContext& context) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const double sine = p0 == p1 ? 0.0 : (p1.x - p0.x) / distanceOfPoints(p0, p1);
    const QString text =
        p0 == p1 ? QStringLiteral("0") : fixedText(std::abs(std::asin(sine) * 180.0 / std::numbers::pi), 1);
    const auto width = static_cast<double>(lineWidth());
    const double x = p0.x > p1.x ? p0.x - (width + 20.0) : p0.x + width + 3.0;
    const double y = p0.y > p1.y ? p0.y - (width + 23.0) : p0.y + width + 3.0;
    drawTextInContext(context, text, captionFont(), {x, y});
}
