#include "platform/QZPaletteLoad.h"

#include "platform/QZLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <utility>

// A static library's resources must be asked for by name, and the macro works only outside any namespace.
static void initThemeResources()
{
    Q_INIT_RESOURCE(qz_platform);
}

namespace {

constexpr int scaleToHeight = 1;
constexpr double maxImageSide = 4096.0; // real px; a picture beyond it is a mistake, not an icon

std::optional<QColor> colorFromText(const QString& text)
{
    if (!text.startsWith(u'#') || (text.size() != 7 && text.size() != 9))
        return std::nullopt;
    const QColor color(text);
    return color.isValid() ? std::optional(color) : std::nullopt;
}

/// Size in real px for a picture of `size` logical px, optionally brought to a height; empty when it is unusable.
QSize pixelSize(const QSizeF& size, double logicalHeight, double ratio)
{
    const double scale = ratio * logicalHeight / size.height();
    const double width = size.width() * scale;
    const double height = size.height() * scale;
    if (!(width > 0 && height > 0 && width <= maxImageSide && height <= maxImageSide))
        return {};
    return {qMax(1, qRound(width)), qMax(1, qRound(height))};
}

QImage scaledTo(const QImage& image, const QSize& size)
{
    QImage scaled = image.size() == size ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(image.devicePixelRatio());
    return scaled;
}

QImage loadRaster(const QString& path, double logicalHeight, double ratio)
{
    QImage image(path);
    if (image.isNull() || !(logicalHeight > 0))
        return image;
    const QSize size = pixelSize(image.size(), logicalHeight, ratio);
    if (size.isEmpty())
        return {};
    image = scaledTo(image, size);
    image.setDevicePixelRatio(ratio);
    return image;
}

QImage renderPicture(const QByteArray& svg, double logicalHeight, double ratio)
{
    QSvgRenderer renderer(svg);
    const QSize ownSize = renderer.defaultSize();
    if (!renderer.isValid() || ownSize.isEmpty())
        return {};
    const QSize size = pixelSize(ownSize, logicalHeight > 0 ? logicalHeight : ownSize.height(), ratio);
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    image.setDevicePixelRatio(ratio);
    return image;
}

/// Pictures of one size as one strip; null when one of them is.
QImage sideBySide(const std::vector<QImage>& pictures)
{
    const QImage& first = pictures.front();
    if (pictures.size() == 1 || std::ranges::any_of(pictures, &QImage::isNull))
        return first;
    QImage strip(first.width() * static_cast<int>(pictures.size()), first.height(), first.format());
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        QImage picture = pictures[i];
        picture.setDevicePixelRatio(1.0);
        painter.drawImage(first.width() * static_cast<int>(i), 0, picture);
    }
    painter.end();
    strip.setDevicePixelRatio(first.devicePixelRatio());
    return strip;
}

} // namespace

QZPaletteLoad::QZPaletteLoad()
{
    initThemeResources();
}

std::optional<QColor> QZPaletteLoad::getCustomColor(const QString& key) const
{
    const auto found = theme_.colors.constFind(key);
    return found == theme_.colors.constEnd() ? std::nullopt : std::optional(*found);
}

QImage QZPaletteLoad::getCustomImage(const QString& key) const
{
    return getCustomImage(key, 0);
}

QImage QZPaletteLoad::getCustomImage(const QString& key, double logicalHeight) const
{
    const QString ours = QStringLiteral(":/qz/images/%1.svg").arg(key);
    const QString path = theme_.imagePaths.value(key, ours);
    if (path == ours && !QFile::exists(path))
        return {};
    const double ratio = qGuiApp != nullptr ? qMax(1.0, qGuiApp->devicePixelRatio()) : 1.0;
    const QString cacheKey = QStringLiteral("%1x%2@").arg(logicalHeight).arg(ratio) + key;
    const auto cached = imageCache_.constFind(cacheKey);
    if (cached != imageCache_.constEnd())
        return *cached;
    const bool isSvg = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
    QImage image = isSvg ? renderSvg(path, logicalHeight, ratio) : loadRaster(path, logicalHeight, ratio);
    if (image.isNull()) {
        writeBusCommonLog(QStringLiteral("Load theme image %1 failed: %2").arg(key, path));
        if (path != ours && QFile::exists(ours))
            image = renderSvg(ours, logicalHeight, ratio);
    }
    // A failure is kept too, so that it is logged once and not at every redraw.
    imageCache_.insert(cacheKey, image);
    return image;
}

QByteArray QZPaletteLoad::withThemeColors(const QString& svg, const QString& state) const
{
    static const QRegularExpression placeholder(QStringLiteral("theme\\(([^()]*)\\)"));
    QString result;
    qsizetype done = 0;
    for (auto matches = placeholder.globalMatch(svg); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(1).trimmed();
        const QString key = name == QLatin1String("state") ? state : name;
        const auto color = getCustomColor(key);
        if (!color)
            writeBusCommonLog(QStringLiteral("Theme image uses unknown colour %1").arg(key));
        result += QStringView(svg).mid(done, match.capturedStart() - done);
        // QSvgRenderer knows no translucent colours, only fill-opacity and stroke-opacity: the alpha is left out.
        result += color.value_or(QColor(Qt::black)).name(QColor::HexRgb);
        done = match.capturedEnd();
    }
    result += QStringView(svg).mid(done);
    return result.toUtf8();
}

QImage QZPaletteLoad::renderSvg(const QString& path, double logicalHeight, double ratio) const
{
    static const QRegularExpression statesAttribute(QStringLiteral("\\bdata-states=\"([^\"]*)\""));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString svg = QString::fromUtf8(file.readAll());
    QStringList states = statesAttribute.match(svg).captured(1).split(u' ', Qt::SkipEmptyParts);
    if (states.isEmpty())
        states.append(QString());
    std::vector<QImage> pictures;
    for (const QString& state : states)
        pictures.push_back(renderPicture(withThemeColors(svg, state), logicalHeight, ratio));
    return sideBySide(pictures);
}

std::vector<QImage> QZPaletteLoad::getImagesInGroupByScale(const QImage& strip, int groupCount, int scaleType,
                                                           double scaleValue)
{
    if (strip.isNull() || groupCount <= 0 || strip.width() < groupCount)
        return {};
    const int width = strip.width() / groupCount;
    QSize size(width, strip.height());
    if (scaleType == scaleToHeight) {
        size = pixelSize(size, scaleValue, strip.devicePixelRatio());
        if (size.isEmpty())
            return {};
    }
    std::vector<QImage> images;
    images.reserve(static_cast<std::size_t>(groupCount));
    for (int index = 0; index < groupCount; ++index) {
        // Cut before scaling, or the neighbour's edge would shine through. A width that does not divide evenly (a
        // fractional device pixel ratio) spreads its rest between the pictures.
        const int left = static_cast<int>(qint64(strip.width()) * index / groupCount);
        images.push_back(scaledTo(strip.copy(left, 0, width, strip.height()), size));
    }
    return images;
}

QImage QZPaletteLoad::getImageInGroupByScale(const QImage& strip, int groupCount, int indexInGroup, int scaleType,
                                             double scaleValue)
{
    const std::vector<QImage> images = getImagesInGroupByScale(strip, groupCount, scaleType, scaleValue);
    const auto index = static_cast<std::size_t>(indexInGroup);
    return indexInGroup >= 0 && index < images.size() ? images[index] : QImage();
}

bool QZPaletteLoad::loadTheme(const QString& jsonPath, QString* error)
{
    QFile file(jsonPath);
    Theme theme;
    const QString problem = file.open(QIODevice::ReadOnly)
                                ? parseTheme(file.readAll(), QFileInfo(jsonPath).path(), theme)
                                : file.errorString();
    if (!problem.isEmpty()) {
        if (error != nullptr)
            *error = QStringLiteral("%1: %2").arg(jsonPath, problem);
        return false;
    }
    theme_ = std::move(theme);
    imageCache_.clear();
    return true;
}

/// Fills `theme` and returns an empty text, or what is wrong with the file.
QString QZPaletteLoad::parseTheme(const QByteArray& json, const QString& folder, Theme& theme)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return QStringLiteral("%1 at offset %2").arg(parseError.errorString()).arg(parseError.offset);
    const QJsonObject root = document.object();
    const QJsonValue colors = root[QLatin1String("colors")];
    const QJsonValue images = root[QLatin1String("images")];
    theme.name = root[QLatin1String("name")].toString();
    if (theme.name.isEmpty())
        return QStringLiteral("\"name\" is not a text");
    if (!colors.isObject())
        return QStringLiteral("\"colors\" is not an object");
    if (!images.isObject() && !images.isUndefined())
        return QStringLiteral("\"images\" is not an object");
    const QJsonObject colorTable = colors.toObject();
    for (auto row = colorTable.begin(); row != colorTable.end(); ++row) {
        const auto color = colorFromText(row.value().toString());
        if (!color)
            return QStringLiteral("colour \"%1\" is not \"#AARRGGBB\"").arg(row.key());
        theme.colors.insert(row.key(), *color);
    }
    const QJsonObject imageTable = images.toObject();
    for (auto row = imageTable.begin(); row != imageTable.end(); ++row) {
        const QString path = row.value().toString();
        if (path.isEmpty())
            return QStringLiteral("image \"%1\" is not a path").arg(row.key());
        theme.imagePaths.insert(row.key(), QDir(folder).filePath(path));
    }
    return {};
}

void QZPaletteLoad::setColor(const QString& key, const QColor& color)
{
    if (color.isValid()) {
        theme_.colors.insert(key, color);
    } else {
        theme_.colors.remove(key);
    }
    imageCache_.clear();
}

QStringList QZPaletteLoad::colorKeys() const
{
    QStringList keys = theme_.colors.keys();
    keys.sort();
    return keys;
}
