#pragma once

#include <QPainter>
#include <QPointF>
#include <QTransform>

/// The device pixels under a painter, for pictures made pixel by pixel. They are within reach on raster devices whose
/// painter scales by nothing but the device's pixel ratio.
class QZDevicePixels {
public:
    /// `painter` is borrowed and keeps its transform; `ratio` is device pixels per px, 0 for vectors.
    QZDevicePixels(QPainter& painter, double ratio);

    [[nodiscard]] bool areReached() const { return areReached_; }
    /// The place, in device pixels, of a point in the painter's coordinates.
    [[nodiscard]] QPointF at(QPointF point) const { return combined_.map(point); }
    /// Blends `part` of `image` pixel by pixel, its top left one on `corner`.
    void blend(const QImage& image, const QRect& part, QPoint corner) const;

private:
    QPainter& painter_;
    QTransform combined_;
    QTransform world_;
    QTransform onDevice_; // a world transform that undoes all others
    bool areReached_;
};
