#include "tools/QZPaintRangeStatistics.h"

#include "platform/QZGlobalEnv.h"
#include "tools/QZPaintPickByX.h"

#include <array>
#include <cmath>

using namespace QZRangeStatistics;

namespace {

constexpr double closeButtonSide = 10.0;
constexpr double closeButtonInset = 3.0;
constexpr double knobSide = 9.0;

void post(QZNotificationObject& band, const QVariantMap& userInfo)
{
    QZNotificationCenter::defaultCenter().post(QZRangeStatisticsTimeChangedNotification, &band, userInfo);
}

} // namespace

const std::shared_ptr<QZPaintRangeStatistics>& QZPaintRangeStatistics::sharedGraph()
{
    // Lives to the end of the process, past Qt's own statics.
    static const auto& band = *new std::shared_ptr<QZPaintRangeStatistics>(new QZPaintRangeStatistics);
    return band;
}

QZPaintRangeStatistics::QZPaintRangeStatistics()
    : QZPaintGraph(QZSTToolRangeStatistics),
      styleObservation_(QZNotificationCenter::defaultCenter().observe(
          QZUIOverallStyleDidChangeNotification,
          [this](const QZNotification&) { handleQZUIOverallStyleDidChangeNotification(); }))
{
    setEditing(false);
    handleQZUIOverallStyleDidChangeNotification();
}

void QZPaintRangeStatistics::handleQZUIOverallStyleDidChangeNotification()
{
    const QZPaletteLoad& palette = QZGlobalEnv::getShareInstance().paletteLoad();
    if (const auto line = palette.getCustomColor(QStringLiteral("RangeStatisticsLayer.DashRulesLineColor")))
        setStrokeColor(*line);
    if (const auto background = palette.getCustomColor(QStringLiteral("RangeStatisticsLayer.RangeRectBkColor")))
        setFillColor(*background);
}

QZPoint QZPaintRangeStatistics::getLeftPoint() const
{
    return points()[1].x > points()[0].x ? points()[0] : points()[1];
}

QZPoint QZPaintRangeStatistics::getRightPoint() const
{
    return points()[1].x > points()[0].x ? points()[1] : points()[0];
}

void QZPaintRangeStatistics::place(const QZPaintLogicAxis& start, const QZPaintLogicAxis& end)
{
    // A point that could not be placed would take the band off the chart before the new one is looked at.
    setPoint(0, {});
    setPoint(1, {});
    setLogicAxises({start, end});
    convertToKeyPoint();
}

QZRect QZPaintRangeStatistics::bounds() const
{
    const QZRect valid = validateRect();
    return {getLeftPoint().x, valid.y, getRightPoint().x - getLeftPoint().x, valid.height};
}

QZRect QZPaintRangeStatistics::closeButtonRect() const
{
    constexpr double fromCorner = closeButtonSide + closeButtonInset;
    const QZRect band = bounds();
    return {band.maxX() - fromCorner, band.maxY() - fromCorner, closeButtonSide, closeButtonSide};
}

bool QZPaintRangeStatistics::selectKeyPointNearPoint(QZPoint point)
{
    return takeHoldOf(pointNearX(points(), point.x));
}

bool QZPaintRangeStatistics::isNearKeyPoint(QZPoint point)
{
    if (!layer() || !pointNearX(points(), point.x))
        return false;
    const bool isClosed = std::abs(points()[0].x - points()[1].x) < 1.0;
    setLayerCursor(isClosed ? QZCursor::ResizeLeft : QZCursor::ResizeLeftRight);
    return true;
}

double QZPaintRangeStatistics::minDistanceFromPoint(QZPoint point)
{
    if (!layer())
        return maxMinDistance; // nor is it drawn
    const double left = getLeftPoint().x;
    const double right = getRightPoint().x;
    if (closeButtonRect().contains(point))
        return 0.0;
    if (point.x < left)
        return left - point.x;
    if (left + maxMinDistance <= point.x && point.x <= right - maxMinDistance && point.x <= right)
        return 0.0;
    return point.x < left + maxMinDistance ? point.x - left : point.x - right;
}

void QZPaintRangeStatistics::mouseDown(QZPoint point)
{
    if (closeButtonRect().contains(point))
        post(*this, {{timeTypeKey, timeTypeClosed}});
    else
        QZPaintGraph::mouseDown(point);
}

void QZPaintRangeStatistics::partDragged(int index)
{
    postDragged(index == 0 ? dragTypeFirstPoint : dragTypeSecondPoint);
}

void QZPaintRangeStatistics::generalDragged(double shift)
{
    postDragged(shift < 0.0 ? dragTypeToLeft : dragTypeToRight);
}

void QZPaintRangeStatistics::postDragged(unsigned dragType)
{
    post(*this, {{timeTypeKey, timeTypeDragged},
                 {x1Key, getLeftPoint().x},
                 {x2Key, getRightPoint().x},
                 {dragTypeKey, dragType}});
}

void QZPaintRangeStatistics::drawInContext(QZGraphicsContext& context)
{
    if (isHidden() || !layer())
        return;
    reloadKeyPoints();
    const QZRect band = bounds();
    context.saveState();
    context.setFillColor(fillColor());
    context.fillRect(band);
    drawLinesInContext(context, band);
    drawKnobInContext(context, band);
    drawCloseButtonInContext(context, closeButtonRect());
    context.restoreState();
}

void QZPaintRangeStatistics::drawLinesInContext(QZGraphicsContext& context, QZRect bandFrame) const
{
    context.setStrokeColor(strokeColor());
    context.setLineWidth(static_cast<double>(lineWidth()));
    context.setLineDash(0.0, std::array{5.0, 3.0});
    for (const double x : {bandFrame.minX(), bandFrame.maxX()})
        context.strokeSegment({{x, bandFrame.minY()}, {x, bandFrame.maxY()}});
}

void QZPaintRangeStatistics::drawKnobInContext(QZGraphicsContext& context, QZRect bandFrame) const
{
    context.setFillColor(strokeColor());
    const double y = bandFrame.y + (bandFrame.height - knobSide) * 0.5;
    for (const double x : {bandFrame.minX(), bandFrame.maxX()})
        context.fillRect({x - knobSide / 2.0, y, knobSide, knobSide});
}

void QZPaintRangeStatistics::drawCloseButtonInContext(QZGraphicsContext& context, QZRect buttonFrame) const
{
    context.setFillColor(strokeColor());
    context.fillRect(buttonFrame);
    context.setStrokeColor(Qt::white);
    context.setLineWidth(2.0);
    context.setLineDash(0.0, {});
    const double left = buttonFrame.minX() + 1.0;
    const double right = buttonFrame.maxX() - 1.0;
    const double bottom = buttonFrame.minY() + 1.0;
    const double top = buttonFrame.maxY() - 1.0;
    context.strokeSegment({{left, bottom}, {right, top}});
    context.strokeSegment({{left, top}, {right, bottom}});
}
