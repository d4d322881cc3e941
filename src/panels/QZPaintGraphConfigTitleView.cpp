#include "panels/QZPaintGraphConfigTitleView.h"

#include "platform/QZGlobalEnv.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

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
    painter.drawImage(rect(), image_);
}

void QZPaintGraphConfigTitleView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    // Where windows may not place themselves the desktop has to move it; where it cannot, we do.
    if (QWindow* handle = window()->windowHandle(); handle != nullptr && handle->startSystemMove())
        return;
    grabOffset_ = event->globalPosition().toPoint() - window()->pos();
}

void QZPaintGraphConfigTitleView::mouseMoveEvent(QMouseEvent* event)
{
    if (grabOffset_)
        window()->move(event->globalPosition().toPoint() - *grabOffset_);
}

void QZPaintGraphConfigTitleView::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    grabOffset_.reset();
}
