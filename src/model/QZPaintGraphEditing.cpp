#include "model/QZPaintChart.h"
#include "model/QZPaintDefaults.h"
#include "model/QZPaintGraph.h"
#include "model/QZPaintGraphOwner.h"

#include <algorithm>

namespace {

constexpr double handleSide = 6.0;

bool isOnHandle(QZPoint handle, QZPoint point)
{
    return squareAround(handle, handleSide).contains(point);
}

/// How far a figure may move in x, and what its drag goes on from.
struct HorizontalShift {
    double shift = 0.0;
    double newStartX = 0.0;
};

// At the edge of the chart the host may refuse to let a figure go on: the extreme point then lands exactly on the
// edge. Its last word, asked of the extreme point itself, may stop the horizontal movement altogether.
HorizontalShift horizontalShift(const QZPaintChart* chart, QZPoint left, QZPoint right, double dx, double mouseX)
{
    const QZRect valid = chart == nullptr ? QZRect{} : chart->validateRect();
    const auto mayGoLeft = [chart](QZPoint point) { return chart != nullptr && chart->canBeDraggedToLeft(point); };
    const auto mayGoRight = [chart](QZPoint point) { return chart != nullptr && chart->canBeDraggedToRight(point); };

    bool isHeldRight = false;
    if (right.x + dx >= valid.maxX() && !mayGoRight({valid.maxX(), right.y})) {
        dx = valid.maxX() - right.x;
        isHeldRight = true;
    }
    if (!isHeldRight && left.x + dx <= valid.minX() && !mayGoLeft({valid.minX(), left.y}))
        dx = valid.minX() - left.x;

    const bool isBlocked = dx >= 0.0 ? !mayGoRight(right) : !mayGoLeft(left);
    if (isBlocked)
        return {0.0, mouseX - dx};
    return {dx, mouseX};
}

} // namespace

bool QZPaintGraph::isNearSelectionLine(QZPoint point)
{
    if (!(minDistanceFromPoint(point) < maxMinDistance))
        return false;
    setLayerCursor(QZCursor::OpenHand);
    return true;
}

double QZPaintGraph::minDistanceFromPoint(QZPoint /*point*/)
{
    return maxMinDistance;
}

bool QZPaintGraph::isNearKeyPoint(QZPoint point)
{
    if (std::ranges::none_of(points_, [point](QZPoint handle) { return isOnHandle(handle, point); }))
        return false;
    setLayerCursor(QZCursor::Crosshair);
    return true;
}

void QZPaintGraph::setLayerCursor(QZCursor cursor) const
{
    if (const auto owner = layer())
        owner->setCursor(cursor);
}

QZPoint QZPaintGraph::magnetized(QZPoint point) const
{
    const QZPaintChart* host = chart();
    if (host == nullptr || !snapsToMagnet() || !QZPaintDefaults::current().isMagnet())
        return point;
    return host->convertPointForMagnet(point, 0);
}

void QZPaintGraph::mouseDown(QZPoint point)
{
    if (!needsDisplay_ || !editing_ || !currentPoint_)
        return;
    if (const QZPaintChart* host = chart())
        point = magnetized(host->convertToPrecisionPoint(point));
    setPoint(*currentPoint_, point);
    if (*currentPoint_ != maxPointCount() - 1) {
        setLogicAxises(convertToLogicAxises());
        ++*currentPoint_;
        setPoint(*currentPoint_, point);
        requestDisplay();
        return;
    }
    currentPoint_.reset();
    setEditing(false);
    setLogicAxises(convertToLogicAxises());
}

void QZPaintGraph::mouseMoved(QZPoint point)
{
    if (!needsDisplay_)
        return;
    if (currentPoint_) {
        point = magnetized(point);
        if (!isGraphDragging_)
            setPoint(*currentPoint_, point);
    }
    if (editing_)
        requestDisplay();
}

bool QZPaintGraph::takeHoldOf(std::optional<int> handle)
{
    if (editing_)
        return true;
    if (isKeyPointDragging_ || !handle)
        return false;
    currentPoint_ = handle;
    return true;
}

bool QZPaintGraph::selectKeyPointNearPoint(QZPoint point)
{
    const auto handle = std::ranges::find_if(points_, [point](QZPoint p) { return isOnHandle(p, point); });
    const bool isOnOne = handle != points_.end();
    if (!takeHoldOf(isOnOne ? std::optional(static_cast<int>(handle - points_.begin())) : std::nullopt))
        return false;
    if (!editing_)
        setLayerCursor(QZCursor::Crosshair);
    return true;
}

void QZPaintGraph::mouseDragged(QZPoint point)
{
    if (!needsDisplay_ || isFixed())
        return;
    // A point that is held already stays, even over another handle.
    const bool holdsKeyPoint = (isSelected() && currentPoint_) || selectKeyPointNearPoint(point);
    if (holdsKeyPoint && !isGraphDragging_)
        dragKeyPoint(point);
    else if (isSelected() && !editing_ && !isKeyPointDragging_)
        dragGraph(point);
    if (isSelected())
        requestDisplay();
}

// A key point may leave the chart's rectangle: what a point out there means is the host's to say.
void QZPaintGraph::dragKeyPoint(QZPoint point)
{
    isKeyPointDragging_ = true;
    if (!currentPoint_)
        return;
    setPoint(*currentPoint_, magnetized(point));
    if (!editing_)
        setLogicAxises(convertToLogicAxises());
    partDragged(*currentPoint_);
}

void QZPaintGraph::dragGraph(QZPoint point)
{
    isGraphDragging_ = true;
    setLayerCursor(QZCursor::ClosedHand);
    const auto byX = [](QZPoint a, QZPoint b) { return a.x < b.x; };
    // Of several leftmost or rightmost points the first counts.
    const QZPoint left = *std::ranges::min_element(points_, byX);
    const QZPoint right = *std::ranges::max_element(points_, byX);
    const auto [shift, newStartX] = horizontalShift(chart(), left, right, point.x - dragStartPoint_.x, point.x);
    const double dy = point.y - dragStartPoint_.y;
    for (QZPoint& each : points_) {
        each.x += shift;
        each.y += dy;
    }
    dragStartPoint_ = {newStartX, point.y};
    generalDragged(shift);
}

void QZPaintGraph::partDragged(int /*index*/) {}

void QZPaintGraph::generalDragged(double /*shift*/) {}

void QZPaintGraph::mouseUp(QZPoint /*point*/)
{
    const bool wasDragging = isDragging();
    isGraphDragging_ = false;
    isKeyPointDragging_ = false;
    if (!needsDisplay_)
        return;
    if (isSelected() && wasDragging && !editing_) {
        setLogicAxises(convertToLogicAxises());
        currentPoint_.reset();
        requestDisplay();
    }
    setLayerCursor(QZCursor::Arrow);
}
