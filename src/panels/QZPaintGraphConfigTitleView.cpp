#include "panels/QZPaintGraphConfigTitleView.h"

#include "platform/QZGlobalEnv.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace {

constexpr double dotDiameter = 2.0;
constexpr double dotSpacing = 4.0;
constexpr int dotRows = 4;

/// What marks a grip when the theme has no picture of it: two columns of dots.
void drawDots(QPainter& painter, const QRectF& bounds, const QColor& color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double top = bounds.center().y() - (dotRows - 1) * dotSpacing / 2.0;
    for (int row = 0; row < dotRows; ++row) {
        for (const double side : {-0.5, 0.5}) {
            const QPointF center(bounds.center().x() + side * dotSpacing, top + row * dotSpacing);
            painter.drawEllipse(center, dotDiameter / 2.0, dotDiameter / 2.0);
        }
    }
}

} // namespace

QZPaintGraphConfigTitleView::QZPaintGraphConfigTitleView(QWidget* parent) : QWidget(parent)
{
    setCursor(Qt::SizeAllCursor);
    loadImage();
}

void QZPaintGraphConfigTitleView::loadImage()
{
    image_ = QZGlobalEnv::getShareInstance().paletteLoad().getCustomImage(
        QStringLiteral("QZPaintGraphConfigWC.ConfigTitle"));
    update();
}

void QZPaintGraphConfigTitleView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (image_.isNull()) {
        drawDots(painter, rect(), palette().color(QPalette::Dark));
    } else {
        painter.drawImage(rect(), image_);
    }
}

void QZPaintGraphConfigTitleView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    // Where windows may not place themselves the desktop has to move it; where it cannot, we do.
    if (QWindow* handle = window()->windowHandle(); handle != nullptr && handle->startSystemMove()) {
        return;
    }
    grabOffset_ = event->globalPosition().toPoint() - window()->pos();
}

void QZPaintGraphConfigTitleView::mouseMoveEvent(QMouseEvent* event)
{
    if (grabOffset_) {
        window()->move(event->globalPosition().toPoint() - *grabOffset_);
    }
}

void QZPaintGraphConfigTitleView::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    grabOffset_.reset();
}
