#include "tools/QZPaintMarks.h"

#include "model/QZPaintGraphOwner.h"
#include "platform/QZFont.h"

namespace {

constexpr double glyphSize = 15.0;
constexpr double glyphDrop = 3.0; // the glyph's own space below it
constexpr double noteFontSize = 12.0;
constexpr double notePadding = 5.0; // left and right of the text
constexpr double noteLeading = 4.0; // above the text

double distanceToBox(QZPoint point, QZRect box)
{
    return box.contains(point) ? 0.0 : maxMinDistance;
}

} // namespace

void QZPaintToolUp::setString(const QString& string)
{
    if (string_ == string && string_.isNull() == string.isNull())
        return;
    string_ = string;
    if (string == upGlyph)
        markType_ = QZSTToolUp;
    else if (string == downGlyph)
        markType_ = QZSTToolDown;
    requestDisplay();
}

QString QZPaintToolUp::glyph() const
{
    return string_.isNull() ? QString::fromUtf16(upGlyph) : string_;
}

QZRect QZPaintToolUp::textRect() const
{
    const QZTextSize size = measureText(glyph(), systemFont(glyphSize));
    const QZPoint at = points()[0];
    return {at.x - 0.5 * size.width, at.y, size.width, size.height};
}

double QZPaintToolUp::minDistanceFromPoint(QZPoint point)
{
    return distanceToBox(point, textRect());
}

void QZPaintToolUp::drawInContext(QZGraphicsContext& context)
{
    if (isHidden())
        return;
    reloadKeyPoints();
    const QZRect box = textRect();
    if (!isPlacingFirstPoint()) {
        if (isContainsInvalidPoint())
            return;
        drawTextInContext(context, glyph(), systemFont(glyphSize), {box.x, box.y - glyphDrop});
    }
    const auto owner = layer();
    const bool isMouseInside = owner && owner->isMouseInside();
    if (isEditing() ? !isMouseInside : !isSelected())
        return;
    context.saveState();
    context.setStrokeColor(strokeColor());
    context.setLineWidth(1.0);
    context.strokeRect(box);
    context.restoreState();
}

QZPaintToolText::QZPaintToolText() : QZPaintGraph(QZSTToolText, 1)
{
    setFillColor(Qt::red);
    setFont(labelFont(noteFontSize));
}

QZRect QZPaintToolText::textBorderRect() const
{
    const QZTextSize size = measureText(text(), font());
    const QZPoint at = points()[0];
    return {at.x, at.y - 0.5 * size.height, size.width + 2.0 * notePadding, size.height + noteLeading};
}

QZPoint QZPaintToolText::topLeftLocation() const
{
    const QZRect box = textBorderRect();
    return {box.minX(), box.maxY()};
}

double QZPaintToolText::minDistanceFromPoint(QZPoint point)
{
    return distanceToBox(point, textBorderRect());
}

void QZPaintToolText::mouseDown(QZPoint point)
{
    const bool wasPlaced = isEditing();
    QZPaintGraph::mouseDown(point);
    const auto owner = layer();
    if (wasPlaced && owner)
        owner->orderFrontPaintTextConfigWindow(*this);
}

void QZPaintToolText::drawInContext(QZGraphicsContext& context)
{
    if (isHidden())
        return;
    reloadKeyPoints();
    if (!isPlacingFirstPoint()) {
        if (isContainsInvalidPoint())
            return;
        const QZRect box = textBorderRect();
        context.saveState();
        context.setStrokeColor(strokeColor());
        setLineDash(context);
        if (isSelected())
            context.strokeRect(box);
        drawTextInContext(context, text(), font(), {box.x + notePadding, box.y});
        context.restoreState();
    }
    drawKeyPoints(context);
}
