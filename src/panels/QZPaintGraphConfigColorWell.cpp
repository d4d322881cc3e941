#include "panels/QZPaintGraphConfigColorWell.h"

#include <QPainter>

namespace {

constexpr double wellShare = 0.6;

} // namespace

QZPaintGraphConfigColorWell::QZPaintGraphConfigColorWell(QWidget* parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
}

void QZPaintGraphConfigColorWell::setColor(const QColor& color)
{
    if (color_ == color)
        return;
    color_ = color;
    setAccessibleDescription(color.isValid() ? color.name(QColor::HexArgb) : QString());
    update();
}

void QZPaintGraphConfigColorWell::setActive(bool isActive)
{
    if (isActive_ == isActive)
        return;
    isActive_ = isActive;
    update();
}

QRectF QZPaintGraphConfigColorWell::wellRectForBounds(const QRectF& bounds)
{
    const QSizeF size = bounds.size() * wellShare;
    return {bounds.center() - QPointF(size.width(), size.height()) / 2.0, size};
}

QSize QZPaintGraphConfigColorWell::sizeHint() const
{
    return {30, 30};
}

void QZPaintGraphConfigColorWell::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (isActive_) {
        painter.fillRect(rect(), palette().highlight());
    } else if (underMouse()) {
        painter.fillRect(rect(), palette().midlight());
    }
    const QRectF well = wellRectForBounds(rect());
    painter.fillRect(well, palette().base());
    painter.fillRect(well, color_.isValid() ? color_ : QColor(Qt::transparent));
    // Half a px inwards, so that the outline of a whole px stays sharp and inside the well.
    const QRectF outline = well.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(palette().color(QPalette::Dark), 1.0));
    if (!color_.isValid())
        painter.drawLine(outline.bottomLeft(), outline.topRight());
    painter.drawRect(outline);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
    }
}
