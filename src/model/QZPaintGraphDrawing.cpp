#include "model/QZPaintGraph.h"
#include "model/QZPaintGraphOwner.h"
#include "platform/QZFont.h"

#include <array>

namespace {

constexpr double keyPointSide = 6.0;
constexpr double keyPointLineWidth = 2.0;
constexpr double thumbnailSide = 20.0;
constexpr double thumbnailOffset = 5.0;
constexpr std::array solidDash{1.0, 0.0};

} // namespace

void QZPaintGraph::drawInContext(QZGraphicsContext& context)
{
    if (isHidden())
        return;
    reloadKeyPoints();
    if (!isPlacingFirstPoint()) {
        if (isContainsInvalidPoint())
            return;
        context.saveState();
        applyStyle(context);
        drawFigure(context);
        context.restoreState();
    }
    drawKeyPoints(context);
}

void QZPaintGraph::drawFigure(QZGraphicsContext& /*context*/) {}

void QZPaintGraph::drawKeyPoints(QZGraphicsContext& context) const
{
    const auto owner = layer();
    if (editing_ && !(owner && owner->isMouseInside()))
        return;
    const int count = editing_ ? placedPointCount() : (isSelected() ? maxPointCount() : 0);
    for (int i = 0; i < count; ++i)
        drawKeyPoint(points_[static_cast<std::size_t>(i)], context);
    if (count == 1 && !thumbnail_.isNull() && currentPoint_ == 0 && points_[0] != QZPoint{})
        drawThumbnail(thumbnail_, points_[0], context);
}

void QZPaintGraph::drawKeyPoint(QZPoint point, QZGraphicsContext& context) const
{
    const QZRect square = squareAround(point, keyPointSide);
    context.saveState();
    context.setLineWidth(keyPointLineWidth);
    context.setLineDash(0.0, solidDash);
    context.setStrokeColor(keyPointColor_);
    // The handle is hollow down to the chart: whatever figure lies under it is punched out.
    context.clearRect(square);
    context.strokeEllipse(square);
    context.restoreState();
}

void QZPaintGraph::drawThumbnail(const QImage& image, QZPoint location, QZGraphicsContext& context)
{
    if (image.isNull())
        return;
    context.saveState();
    context.drawImage(image,
                      {location.x + thumbnailOffset, location.y + thumbnailOffset, thumbnailSide, thumbnailSide});
    context.restoreState();
}

void QZPaintGraph::drawTextInContext(QZGraphicsContext& context, const QString& text, const QFont& font,
                                     QZPoint point) const
{
    const QZTextSize size = measureText(text, font);
    context.drawText(text, font, strokeColor_, {point.x, point.y, size.width, size.height + 1.0});
}

void QZPaintGraph::drawTextInContext(QZGraphicsContext& context, const QString& stringText, QZPoint point) const
{
    if (!stringText.isNull())
        drawTextInContext(context, stringText, captionFont(), point);
}

void QZPaintGraph::setDefaultConfig(QZGraphicsContext& context) const
{
    if (lineWidth_ >= 5 && maxPointCount() >= 3) {
        context.setLineJoin(QZLineJoin::Round);
        context.setLineCap(QZLineCap::Round);
    }
    context.setLineWidth(static_cast<double>(lineWidth_));
    context.setStrokeColor(strokeColor_);
    setLineDash(context);
}

void QZPaintGraph::setLineDash(QZGraphicsContext& context) const
{
    const auto w = static_cast<double>(lineWidth_);
    const double shortDash = 3.0 * w;
    const double longDash = 10.0 * w;
    switch (lineType()) {
    case 0:
        context.setLineDash(0.0, solidDash);
        break;
    case 1:
        context.setLineDash(0.0, std::array{longDash, 5.0 * w});
        break;
    case 2:
        context.setLineDash(0.0, std::array{shortDash, shortDash});
        break;
    // Odd counts: dashes and gaps change places at each repeat.
    case 3:
        context.setLineDash(0.0, std::array{shortDash, longDash, shortDash});
        break;
    case 4:
        context.setLineDash(0.0, std::array{shortDash, shortDash, shortDash, shortDash, longDash});
        break;
    default:
        break;
    }
}
