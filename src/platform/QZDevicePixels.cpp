#include "platform/QZDevicePixels.h"

#include <QPaintEngine>

QZDevicePixels::QZDevicePixels(QPainter& painter, double ratio)
    : painter_(painter),
      combined_(painter.combinedTransform()),
      world_(painter.worldTransform()),
      onDevice_(combined_.inverted() * world_),
      areReached_(ratio > 0.0 && painter.paintEngine()->type() == QPaintEngine::Raster &&
                  combined_.type() <= QTransform::TxScale && combined_.m11() == ratio && combined_.m22() == ratio)
{}

void QZDevicePixels::blend(const QImage& image, const QRect& part, QPoint corner) const
{
    if (combined_.isIdentity()) {
        painter_.drawImage(corner, image, part);
        return;
    }
    painter_.setWorldTransform(onDevice_);
    painter_.drawImage(corner, image, part);
    painter_.setWorldTransform(world_);
}
