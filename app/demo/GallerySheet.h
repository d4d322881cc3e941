#pragma once

#include <QImage>
#include <QString>

#include <vector>

/// A picture of the gallery and what stands under it.
struct GalleryPicture {
    QString name;
    QImage image;
};

/// All pictures on one sheet, reduced, with their names.
QImage gallerySheet(const std::vector<GalleryPicture>& pictures);

/// The same with at most 256 colours, the most frequent ones: PNG files of charts become a third as large.
QImage withFewColors(const QImage& image);
