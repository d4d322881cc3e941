#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// The theme palette: colours and images by key, read from a JSON file:
///
///     {"name": "light", "colors": {"key": "#AARRGGBB"}, "images": {"key": ":/folder/picture.svg"}}
///
/// "images" may be left out; a colour may also be "#RRGGBB". A relative image path starts at the JSON file's folder. An
/// image that the theme does not name is the resource ":/qz/images/<key>.svg", if there is one.
/// In an SVG picture the text theme(KEY), wherever a colour may stand, is replaced by the theme's colour of that key,
/// so that one picture serves every theme; its alpha is left out, which is fill-opacity's business in SVG. A picture
/// whose root has data-states="KEY1 KEY2 ..." becomes a strip: it is drawn once per state, side by side, and its
/// theme(state) is the colour of that state's key; one whose states differ in shape is drawn as a strip itself. The
/// library's own themes are ":/qz/themes/light.json" and "dark.json".
class QZPaletteLoad {
public:
    QZPaletteLoad();

    /// Nothing when the theme has no such colour; the caller has its own fallback.
    std::optional<QColor> getCustomColor(const QString& key) const;

    /// The picture in its own size (logical px) at the screen's device pixel ratio; null when the theme has none. One
    /// that cannot be read is told in the log, and the resource is taken instead, if there is one.
    QImage getCustomImage(const QString& key) const;

    /// The same drawn `logicalHeight` logical px high, keeping its aspect: an SVG stays sharp at any size.
    QImage getCustomImage(const QString& key, double logicalHeight) const;

    /// Cuts a strip of `groupCount` equal pictures side by side. Scale type 1 makes each `scaleValue` logical px high,
    /// keeping its aspect; other types leave the size. The pictures have the strip's device pixel ratio. Empty when the
    /// strip is null or too narrow, the count is not positive, or the height is not a usable one.
    static std::vector<QImage> getImagesInGroupByScale(const QImage& strip, int groupCount, int scaleType,
                                                       double scaleValue);

    /// One picture of such a strip, `indexInGroup` from 0; null where the vector would be empty or too short.
    static QImage getImageInGroupByScale(const QImage& strip, int groupCount, int indexInGroup, int scaleType,
                                         double scaleValue);

    /// Replaces the whole palette, colours set by hand included. On failure returns false, leaves the palette as it
    /// was and says why in `error` (may be null). Tells no observer: see QZGlobalEnv::setThemeFile().
    bool loadTheme(const QString& jsonPath, QString* error);

    /// Overrides one colour until the next theme is loaded; an invalid colour removes the key.
    void setColor(const QString& key, const QColor& color);

    /// "name" of the loaded theme; empty before the first one.
    const QString& name() const { return theme_.name; }
    /// Sorted keys of all colours.
    QStringList colorKeys() const;

private:
    struct Theme {
        QString name;
        QHash<QString, QColor> colors;
        QHash<QString, QString> imagePaths;
    };

    static QString parseTheme(const QByteArray& json, const QString& folder, Theme& theme);
    QByteArray withThemeColors(const QString& svg, const QString& state) const;
    QImage renderSvg(const QString& path, double logicalHeight, double ratio) const;

    Theme theme_;
    mutable QHash<QString, QImage> imageCache_;
};
