#include "platform/QZDashStrips.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int shiftsPerPixel = 32;
// Strips grow by as many pixels, so that lines of many lengths share one.
constexpr int growth = 512;
constexpr double mostBytes = 128.0 * 1024.0;
constexpr int bytesPerPixel = 4;
// What a cache's own node and the heap take (bytes).
constexpr qsizetype overhead = 300;

} // namespace

QZDashStrips& QZDashStrips::ofThread()
{
    thread_local QZDashStrips strips;
    return strips;
}

bool QZDashStrips::draw(const QZDevicePixels& pixels, double ratio, const Stretch& stretch, const QZLineDash& dash,
                        const QColor& color)
{
    Key key{dash.scaled(ratio), stretch.width, 0, stretch.isVertical, stretch.isBack, color.rgba()};
    const double period = key.dash.period();
    // The strip's pixel that shows what is `way` into the pattern; a strip is shifted by the part of a pixel that
    // remains.
    const double way = std::fmod(stretch.way, period) + (stretch.way < 0.0 ? period : 0.0);
    int first = static_cast<int>(std::ceil(std::min(way, mostBytes)));
    key.shift = static_cast<int>(std::lround((first - way) * shiftsPerPixel));
    if (key.shift == shiftsPerPixel) {
        key.shift = 0;
        --first;
    }
    const double needed = std::ceil((stretch.length + period + 1.0) / growth) * growth;
    const double bytes = needed * stretch.width * bytesPerPixel;
    if (bytes > mostBytes)
        return false;
    const auto lengthOf = [&](const QImage& image) { return stretch.isVertical ? image.height() : image.width(); };
    const QImage* strip = strips_.object(key);
    if (strip == nullptr || lengthOf(*strip) < first + stretch.length) {
        auto* made = new QImage(painted(key, static_cast<int>(needed)));
        strip = made;
        if (!strips_.insert(key, made, static_cast<qsizetype>(bytes) + overhead))
            return false;
    }
    const auto placed = [&stretch](int along, int across) {
        return stretch.isVertical ? QPoint(across, along) : QPoint(along, across);
    };
    const QPoint size = placed(stretch.length, stretch.width);
    pixels.blend(*strip, QRect(placed(first, 0), QSize(size.x(), size.y())), placed(stretch.start, stretch.side));
    return true;
}

QImage QZDashStrips::painted(const Key& key, int length)
{
    QImage strip(key.isVertical ? QSize(key.width, length) : QSize(length, key.width),
                 QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(key.color), key.width, Qt::SolidLine, Qt::FlatCap));
    const double middle = key.width / 2.0;
    const auto lengths = key.dash.lengths();
    std::vector<QLineF> lines;
    double start = static_cast<double>(key.shift) / shiftsPerPixel - key.dash.period();
    while (start < length) {
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            // Backwards, a period begins with the gap that ends it.
            const double end = start + lengths[key.isBack ? lengths.size() - 1 - i : i];
            if ((i % 2 == 1) == key.isBack)
                lines.push_back(key.isVertical ? QLineF(middle, start, middle, end)
                                               : QLineF(start, middle, end, middle));
            start = end;
        }
    }
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
    painter.end();
    return strip;
}
