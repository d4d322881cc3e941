#include "tools/QZPaintRegression.h"

#include "model/QZPaintChart.h"
#include "tools/QZPaintPickByX.h"
#include "tools/QZPaintStrokes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double guideWidth = 1.0;
constexpr std::array guideDash{5.0, 3.0};

std::array<QZLine, 3> linesOf(const QZRegressionCalcData& data)
{
    return {QZLine{{data.x1, data.line1Y1}, {data.x2, data.line1Y2}},
            QZLine{{data.x1, data.line2Y1}, {data.x2, data.line2Y2}},
            QZLine{{data.x1, data.line3Y1}, {data.x2, data.line3Y2}}};
}

double distanceToInfiniteLines(QZPoint point, std::span<const QZLine> lines)
{
    double nearest = missingCoordinate;
    for (const QZLine& line : lines)
        nearest = std::min(nearest, minDistanceFromPointToLine(point, line.start, line.end));
    return nearest;
}

} // namespace

bool QZPaintRegressionTool::selectKeyPointNearPoint(QZPoint point)
{
    return takeHoldOf(pointNearX(points(), point.x));
}

std::optional<QZRegressionCalcData> QZPaintRegressionTool::regressionData() const
{
    const auto [left, right] = std::minmax(points()[0].x, points()[1].x);
    QZRegressionCalcData data{.x1 = left, .x2 = right};
    const QZPaintChart* host = chart();
    return host != nullptr && host->calcRegressionData(data) ? std::optional(data) : std::nullopt;
}

void QZPaintRegressionTool::takeOverRange(const QZRegressionCalcData& data)
{
    const bool isLeftToRight = points()[1].x > points()[0].x;
    setPoint(0, {isLeftToRight ? data.x1 : data.x2, points()[0].y});
    setPoint(1, {isLeftToRight ? data.x2 : data.x1, points()[1].y});
}

void QZPaintRegressionTool::drawInContext(QZGraphicsContext& context)
{
    if (isHidden())
        return;
    context.setStrokeColor(strokeColor());
    reloadKeyPoints();
    if (isContainsInvalidPoint())
        return;
    const auto data = regressionData();
    if (!data || isPlacingFirstPoint()) {
        drawTimeRangeInContext(context);
        return;
    }
    takeOverRange(*data);
    if (isEditing() || isSelected())
        drawTimeRangeInContext(context);
    context.setLineWidth(static_cast<double>(lineWidth()));
    // Handles come first here: the lines run over them.
    drawKeyPoints(context);
    drawLines(context, linesOf(*data));
}

void QZPaintRegressionTool::drawTimeRangeInContext(QZGraphicsContext& context) const
{
    const QZRect valid = validateRect();
    context.setLineWidth(guideWidth);
    context.setLineDash(0.0, guideDash);
    for (const QZPoint point : points())
        context.strokeSegment({{point.x, valid.minY()}, {point.x, valid.maxY()}});
}

double QZPaintRegressionTool::minDistanceFromPoint(QZPoint point)
{
    const auto [left, right] = std::minmax(points()[0].x, points()[1].x);
    const double toGuides = std::min(std::abs(left - point.x), std::abs(right - point.x));
    const bool isInReach = left - maxMinDistance < point.x && point.x < right + maxMinDistance;
    const auto data = isInReach || reachesBeyondRange() ? regressionData() : std::nullopt;
    return std::min(toGuides, data ? distanceToLines(point, linesOf(*data)) : maxMinDistance);
}

void QZPaintRegressionLine::drawLines(QZGraphicsContext& context, const Lines& lines) const
{
    setLineDash(context);
    context.strokeSegment(lines[0]);
}

double QZPaintRegressionLine::distanceToLines(QZPoint point, const Lines& lines) const
{
    return distanceToInfiniteLines(point, std::span(lines).first(1));
}

void QZPaintRegressionRegion::drawLines(QZGraphicsContext& context, const Lines& lines) const
{
    setLineDash(context);
    strokeLines(context, lines);
}

double QZPaintRegressionRegion::distanceToLines(QZPoint point, const Lines& lines) const
{
    return distanceToInfiniteLines(point, lines);
}

QZPoint QZPaintRegressionPipe::endOfContinuation(const QZLine& line) const
{
    return getPointFromLine(validateRect().maxX(), line.start, line.end);
}

void QZPaintRegressionPipe::drawRegressionLine(QZGraphicsContext& context, const QZLine& points) const
{
    setLineDash(context);
    context.strokeSegment(points);
    context.setLineDash(0.0, auxiliaryDash(static_cast<double>(lineWidth())));
    context.strokeSegment({points.end, endOfContinuation(points)});
}

void QZPaintRegressionPipe::drawLines(QZGraphicsContext& context, const Lines& lines) const
{
    for (const QZLine& line : lines)
        drawRegressionLine(context, line);
}

double QZPaintRegressionPipe::distanceToLines(QZPoint point, const Lines& lines) const
{
    Lines drawn = lines;
    for (QZLine& line : drawn)
        line.end = endOfContinuation(line);
    return ::distanceToLines(point, drawn);
}
