#include "app/demo/GallerySheet.h"

#include "app/chart/ChartTheme.h"
#include "platform/QZFont.h"

#include <QHash>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr int columns = 5;
constexpr QSize thumbnail(384, 240);
constexpr int gap = 10;
constexpr int nameHeight = 26;
constexpr double nameSize = 15;
constexpr qsizetype colorCount = 256;

} // namespace

QImage gallerySheet(const std::vector<GalleryPicture>& pictures)
{
    const int rows = (static_cast<int>(pictures.size()) + columns - 1) / columns;
    const QSize cell = thumbnail + QSize(gap, gap + nameHeight);
    QImage sheet(columns * cell.width() + gap, rows * cell.height() + gap, QImage::Format_RGB32);
    const ChartTheme theme = ChartTheme::current();
    sheet.fill(theme.background);
    QPainter painter(&sheet);
    painter.setFont(systemFont(nameSize));
    for (int i = 0; i < static_cast<int>(pictures.size()); ++i) {
        const GalleryPicture& picture = pictures[static_cast<std::size_t>(i)];
        const QRect place({gap + i % columns * cell.width(), gap + i / columns * cell.height()}, thumbnail);
        painter.drawImage(place.topLeft(),
                          picture.image.scaled(thumbnail, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        painter.setPen(theme.grid);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
        painter.setPen(theme.axisText);
        painter.drawText(QRect(place.left(), place.bottom() + 1, place.width(), nameHeight), Qt::AlignCenter,
                         picture.name);
    }
    return sheet;
}

QImage withFewColors(const QImage& image)
{
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    for (int y = 0; y < source.height(); ++y) {
        for (int x = 0; x < source.width(); ++x)
            ++counts[source.pixel(x, y)];
    }
    std::vector<std::pair<int, QRgb>> frequent;
    frequent.reserve(static_cast<std::size_t>(counts.size()));
    for (auto each = counts.cbegin(); each != counts.cend(); ++each)
        frequent.emplace_back(each.value(), each.key());
    std::ranges::sort(frequent, std::greater());
    QList<QRgb> table;
    for (std::size_t i = 0; i < frequent.size() && table.size() < colorCount; ++i)
        table.append(frequent[i].second);
    return source.convertToFormat(QImage::Format_Indexed8, table, Qt::AvoidDither);
}
