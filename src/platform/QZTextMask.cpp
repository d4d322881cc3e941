#include "platform/QZTextMask.h"

#include "platform/QZTextLayout.h"

#include <QPainter>

#include <cmath>

namespace {

// The text engine counts in 64ths of a pixel and cuts off what lies between.
constexpr double halfOfItsUnit = 1.0 / 128.0;

bool isBlack(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if ((row[x] & RGB_MASK) != 0)
                return false;
        }
    }
    return true;
}

QRect inkOf(const QImage& image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(row[x]) != 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

std::optional<QZTextMask> textMask(const QString& text, const QFont& font, double ratio, int phase)
{
    const QZTextLayout layout(text, font);
    // A glyph may reach out of its line: accents upwards, italics to the side.
    const int margin = static_cast<int>(std::ceil(layout.size().height * ratio)) + 1;
    const QPoint pen(margin, margin + static_cast<int>(std::ceil(layout.baseline() * ratio)));
    QImage image(static_cast<int>(std::ceil(layout.size().width * ratio)) + 2 * margin, 3 * margin,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio, ratio);
    painter.setPen(Qt::black);
    const QPointF start(pen.x() + static_cast<double>(phase) / QZTextMask::phaseCount + halfOfItsUnit,
                        pen.y() + halfOfItsUnit);
    layout.draw(painter, start / ratio - QPointF(0.0, layout.baseline()));
    painter.end();
    if (!isBlack(image))
        return std::nullopt;

    const QRect ink = inkOf(image);
    QZTextMask mask{ink.topLeft() - pen, ink.size(), {}};
    mask.ink.reserve(static_cast<std::size_t>(ink.width()) * static_cast<std::size_t>(ink.height()));
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = ink.left(); x <= ink.right(); ++x)
            mask.ink.push_back(static_cast<uchar>(qAlpha(row[x])));
    }
    return mask;
}
