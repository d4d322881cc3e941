#include "tools/QZPaintMeasuring.h"

#include "model/QZPaintChart.h"
#include "platform/QZFont.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZNumberText.h"
#include "tools/QZPaintCaption.h"
#include "tools/QZPaintPickByX.h"
#include "tools/QZPaintStrokes.h"

#include <algorithm>
#include <charconv>

namespace {

/// Between a line and a caption beside it, besides the line's width (px).
constexpr double captionGap = 2.0;

QColor themeColor(const QString& key, Qt::GlobalColor fallback)
{
    return QZGlobalEnv::getShareInstance().paletteLoad().getCustomColor(key).value_or(QColor(fallback));
}

/// The number that a host's text starts with, 0 when it starts with none.
double leadingNumber(const QString& text)
{
    QByteArray latin = text.trimmed().toLatin1();
    if (latin.startsWith('+'))
        latin.remove(0, 1);
    double value = 0.0;
    std::from_chars(latin.constBegin(), latin.constEnd(), value);
    return value;
}

QString percentText(float percent)
{
    return percentCaption(static_cast<double>(percent), 2);
}

QString numberText(float value)
{
    return fixedText(static_cast<double>(value), 2);
}

} // namespace

QZPaintToolRule::QZPaintToolRule()
    : QZPaintGraph(QZSTToolRule),
      riseColor_(themeColor(QStringLiteral("QZLinePaintToolFactory.RiseColor"), Qt::red)),
      dropColor_(themeColor(QStringLiteral("QZLinePaintToolFactory.DropColor"), Qt::green))
{}

void QZPaintToolRule::mouseDown(QZPoint point)
{
    if (!currentPoint())
        return;
    const int last = maxPointCount() - 1;
    const bool isLast = *currentPoint() == last;
    setPoint(*currentPoint(), point);
    const int next = isLast ? 0 : *currentPoint() + 1;
    setPoint(next, point);
    setCurrentPoint(next);
    if (isLast)
        setLogicAxises(convertToLogicAxises());
    requestDisplay();
}

void QZPaintToolRule::applyStyle(QZGraphicsContext& context) const
{
    context.setLineWidth(1.0);
    context.setStrokeColor(strokeColor());
}

void QZPaintToolRule::drawFigure(QZGraphicsContext& context)
{
    context.strokeSegment({points()[0], points()[1]});
    drawInfomation(context);
}

QColor QZPaintToolRule::captionColor(const QZPaintRetangleModel& range) const
{
    if (leadingNumber(range.varyPrice) == 0.0 && range.varyScope == 0.0F)
        return strokeColor();
    return points()[1].y > points()[0].y ? riseColor_ : dropColor_;
}

void QZPaintToolRule::drawInfomation(QZGraphicsContext& context) const
{
    const auto range = rangeOfPoints();
    if (!range || range->varyPrice.isNull())
        return;
    const QString text =
        QStringLiteral("距离: %1 幅度: %2 涨跌: ").arg(range->count).arg(percentText(range->varyScope)) +
        range->varyPrice;
    const QZTextSize size = measureText(text, captionFont());
    context.drawText(text, captionFont(), captionColor(*range),
                     {points()[0].x, points()[0].y, size.width, size.height + 1.0});
}

std::array<QZLine, 2> QZPaintRangeRule::bounds() const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    return {QZLine{p0, {p1.x, p0.y}}, QZLine{{p0.x, p1.y}, p1}};
}

QZLine QZPaintRangeRule::middleLine() const
{
    const double middle = (points()[0].x + points()[1].x) / 2.0;
    return {{middle, points()[0].y}, {middle, points()[1].y}};
}

double QZPaintRangeRule::minDistanceFromPoint(QZPoint point)
{
    const QZLine middle = middleLine();
    return std::min(distanceToLines(point, bounds()), minDistanceFromPointToSegment(point, middle.start, middle.end));
}

void QZPaintRangeRule::drawFigure(QZGraphicsContext& context)
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    strokeLines(context, bounds());
    tintFillColor();
    context.setFillColor(fillColor());
    context.fillRect({p0.x, p0.y, p1.x - p0.x, p1.y - p0.y});
    context.setLineDash(0.0, auxiliaryDash(static_cast<double>(lineWidth())));
    context.strokeSegment(middleLine());
    drawInfomation(context);
}

void QZPaintRangeRule::drawInfomation(QZGraphicsContext& context) const
{
    const auto range = rangeOfPoints();
    if (!range)
        return;
    const auto width = static_cast<double>(lineWidth());
    const auto [low, high] = std::minmax(points()[0].y, points()[1].y);
    // The count is not written here, but its line sets the spacing.
    const double textHeight = measureText(countCaption(range->identify, range->count), captionFont()).height;
    const double x = middleLine().start.x + width;
    drawTextInContext(context, percentText(range->varyScope), {x, high - textHeight - width});
    drawTextInContext(context, range->varyPrice, {x, low + width});
}

bool QZPaintBoxLine::selectKeyPointNearPoint(QZPoint point)
{
    return takeHoldOf(pointNearX(points(), point.x));
}

QZRect QZPaintBoxLine::generateBoxRect(const QZBoxLineCalcData& data)
{
    return {data.x1, data.firstEdgeY, data.x2 - data.x1, data.secondEdgeY - data.firstEdgeY};
}

std::optional<QZBoxLineCalcData> QZPaintBoxLine::boxData() const
{
    const auto [left, right] = std::minmax(points()[0].x, points()[1].x);
    QZBoxLineCalcData data{.x1 = left, .x2 = right};
    const QZPaintChart* host = chart();
    return host != nullptr && host->calcBoxLineData(data) ? std::optional(data) : std::nullopt;
}

double QZPaintBoxLine::minDistanceFromPoint(QZPoint point)
{
    const auto data = boxData();
    if (!data)
        return maxMinDistance;
    const QZPoint first{data->x1, data->firstEdgeY};
    const QZPoint second{data->x2, data->secondEdgeY};
    const std::array outline{first, QZPoint{second.x, first.y}, second, QZPoint{first.x, second.y}, first};
    const QZLine cost{{data->x1, data->averageCostY}, {data->x2, data->averageCostY}};
    return std::min({distanceToPolyline(point, outline, maxMinDistance),
                     minDistanceFromPointToSegment(point, cost.start, cost.end), distanceOfPoints(point, points()[0]),
                     distanceOfPoints(point, points()[1])});
}

void QZPaintBoxLine::drawInContext(QZGraphicsContext& context)
{
    if (isHidden())
        return;
    reloadKeyPoints();
    if (!isPlacingFirstPoint()) {
        if (isContainsInvalidPoint())
            return;
        const auto data = boxData();
        if (!data)
            return;
        context.saveState();
        applyStyle(context);
        drawBox(context, *data);
        context.restoreState();
    }
    drawKeyPoints(context);
}

void QZPaintBoxLine::drawBox(QZGraphicsContext& context, const QZBoxLineCalcData& data)
{
    if (lineWidth() > 3) {
        context.setLineJoin(QZLineJoin::Round);
        context.setLineCap(QZLineCap::Round);
    }
    const QZRect box = generateBoxRect(data);
    context.strokeRect(box);
    tintFillColor();
    context.setFillColor(fillColor());
    context.fillRect(box);
    context.setLineDash(0.0, auxiliaryDash(static_cast<double>(lineWidth())));
    context.strokeSegment({{data.x1, data.averageCostY}, {data.x2, data.averageCostY}});
    drawInfomation(context, data);
}

void QZPaintBoxLine::drawInfomation(QZGraphicsContext& context, const QZBoxLineCalcData& data) const
{
    const QZRect box = generateBoxRect(data);
    const auto width = static_cast<double>(lineWidth());
    const double textHeight = measureText(QStringLiteral("aaa"), captionFont()).height;
    const double above = captionGap + width;
    const double below = -textHeight - width;
    const double inside = data.x1 + captionGap + width;
    const double beside = data.x2 + captionGap + width;
    const QString amplitude = percentText(data.amplitude);
    const auto priceText = [host = chart()](float price) {
        const auto caption = host == nullptr ? std::nullopt : host->captionOfPrice(static_cast<double>(price));
        return caption ? *caption : numberText(price);
    };
    const QString difference = priceText(data.difference);
    const QString cost = QStringLiteral("成本均价: ") + priceText(data.averageCost);

    drawTextInContext(context, QStringLiteral("K 线数: %1").arg(data.count), {inside, box.maxY() + below});
    drawTextInContext(context, amplitude, {beside, box.maxY() + below});
    drawTextInContext(context, difference, {beside, box.minY() + above});
    drawTextInContext(context, cost, {inside, data.averageCostY + below});
    drawTextInContext(context, QStringLiteral("振幅:%1 差价:%2 %3").arg(amplitude, difference, cost),
                      {inside, box.minY() + below});
}
