#include "tools/QZPaintWaveRules.h"

#include "tools/QZPaintCaption.h"
#include "tools/QZPaintStrokes.h"

#include <algorithm>

namespace {

constexpr double tickLength = 30.0;

void addLine(QZGraphicsContext& context, const QZLine& line)
{
    addPolyline(context, std::array{line.start, line.end});
}

/// A tick from `start` to the right.
QZLine tickFrom(QZPoint start)
{
    return {start, {start.x + tickLength, start.y}};
}

/// "61.8% (12.34)"
QString levelCaption(const QZPaintChart* chart, float ratio, double price)
{
    return QStringLiteral("%1 (%2)").arg(percentCaption(static_cast<double>(ratio) * 100.0, 1),
                                         priceCaption(chart, price, 2));
}

/// The point that has gone `ratio` of the way from the end of `leg` down its mirror image.
QZPoint turnedBack(const QZLine& leg, float ratio)
{
    const auto r = static_cast<double>(ratio);
    return {leg.end.x + (leg.end.x - leg.start.x) * r, leg.end.y + (leg.start.y - leg.end.y) * r};
}

std::array<QZPoint, 3> legsOf(const QZLine& leg)
{
    return {leg.start, leg.end, {2.0 * leg.end.x - leg.start.x, leg.start.y}};
}

/// Centred on the mirror image.
std::array<QZLine, QZPaintTurnRule::turnRule.size()> ticksOf(const QZLine& leg)
{
    std::array<QZLine, QZPaintTurnRule::turnRule.size()> ticks;
    std::ranges::transform(QZPaintTurnRule::turnRule, ticks.begin(), [&leg](float ratio) {
        const QZPoint middle = turnedBack(leg, ratio);
        return tickFrom({middle.x - tickLength / 2.0, middle.y});
    });
    return ticks;
}

} // namespace

double QZPaintWaveRule::levelY(double ratio) const
{
    return (points()[1].y - points()[0].y) * ratio + points()[2].y;
}

std::array<QZLine, QZPaintWaveRule::waveRule.size()> QZPaintWaveRule::ticks() const
{
    std::array<QZLine, waveRule.size()> ticks;
    std::ranges::transform(waveRule, ticks.begin(), [this](float ratio) {
        return tickFrom({points()[2].x, levelY(static_cast<double>(ratio))});
    });
    return ticks;
}

QZLine QZPaintWaveRule::spine() const
{
    // In double, a hair off the top tick's 32-bit ratio.
    constexpr double top = 2.618;
    const double x = points()[2].x + tickLength / 2.0;
    return {{x, levelY(0.0)}, {x, levelY(top)}};
}

double QZPaintWaveRule::minDistanceFromPoint(QZPoint point)
{
    const double toWave = distanceToPolyline(point, points());
    return distanceToLines(point, std::array{spine()}, distanceToLines(point, ticks(), toWave));
}

void QZPaintWaveRule::drawFigure(QZGraphicsContext& context)
{
    context.beginPath();
    addPolyline(context, placedPoints());
    if (hasLastPoint()) {
        const double p0 = priceAt(points()[0]);
        const double p1 = priceAt(points()[1]);
        const double p2 = priceAt(points()[2]);
        const auto levels = ticks();
        for (std::size_t i = 0; i < levels.size(); ++i) {
            const float ratio = waveRule[i];
            addLine(context, levels[i]);
            // A projection is written as exact as 32 bits are, about seven digits.
            const auto price = static_cast<float>((p1 - p0) * static_cast<double>(ratio) + p2);
            drawTextInContext(context, levelCaption(chart(), ratio, static_cast<double>(price)), captionFont(),
                              levels[i].end);
        }
        addLine(context, spine());
    }
    context.strokePath();
}

std::array<QZLine, 1 + QZPaintTurnRule::turnRule.size()> QZPaintTurnRule::turns() const
{
    const QZLine measured{points()[0], points()[1]};
    std::array<QZLine, 1 + turnRule.size()> turns{measured};
    std::ranges::transform(turnRule, turns.begin() + 1, [&measured](float ratio) {
        return QZLine{measured.end, turnedBack(measured, ratio)};
    });
    return turns;
}

void QZPaintTurnRule::drawTrunLine(QZGraphicsContext& context, bool isDrawInfo, QZPoint startPoint,
                                   QZPoint endPoint) const
{
    const QZLine leg{startPoint, endPoint};
    addPolyline(context, legsOf(leg));
    const auto ticks = ticksOf(leg);
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        addLine(context, ticks[i]);
        if (isDrawInfo)
            drawTextInContext(context, levelCaption(chart(), turnRule[i], priceAt(ticks[i].start)), captionFont(),
                              ticks[i].end);
    }
}

double QZPaintTurnRule::minTempDistanceFromPoint(QZPoint point, QZPoint startPoint, QZPoint endPoint)
{
    const QZLine leg{startPoint, endPoint};
    return distanceToLines(point, ticksOf(leg), distanceToPolyline(point, legsOf(leg)));
}

double QZPaintTurnRule::minDistanceFromPoint(QZPoint point)
{
    double nearest = missingCoordinate;
    for (const QZLine& turn : turns())
        nearest = std::min(nearest, minTempDistanceFromPoint(point, turn.start, turn.end));
    return nearest;
}

void QZPaintTurnRule::drawFigure(QZGraphicsContext& context)
{
    context.beginPath();
    bool isMain = true;
    for (const QZLine& turn : turns()) {
        drawTrunLine(context, isMain, turn.start, turn.end);
        isMain = false;
    }
    context.strokePath();
}
