#include "platform/QZFont.h"

#include "platform/QZTextCache.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr double minPixelSize = 1;
constexpr double maxPixelSize = 2000;

/// The Linux faces first, then what other desktops have.
const QStringList& fontFamilies()
{
    static const QStringList families{QStringLiteral("DejaVu Sans"),      QStringLiteral("WenQuanYi Micro Hei"),
                                      QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Noto Sans"),
                                      QStringLiteral("Microsoft YaHei"),  QStringLiteral("PingFang SC"),
                                      QStringLiteral("Segoe UI Symbol"),  QStringLiteral("Apple Symbols")};
    return families;
}

} // namespace

QFont systemFont(double size)
{
    QFont font;
    font.setFamilies(fontFamilies());
    // Not-a-number too ends up as the smallest size.
    font.setPixelSize(qRound(size > minPixelSize ? std::min(size, maxPixelSize) : minPixelSize));
    return font;
}

QFont labelFont(double size)
{
    return systemFont(size);
}

QZTextSize measureText(const QString& text, const QFont& font)
{
    return QZTextCache::ofThread().size(text, font);
}
