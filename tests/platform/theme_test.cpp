#include "platform/QZGlobalEnv.h"
#include "support/Contrast.h"
#include "support/Spies.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

TEST(Theme, ShippedThemesHaveTheSameKeysAndReadWell)
{
    QStringList keys;
    for (const QString& name : {u"light"_s, u"dark"_s}) {
        SCOPED_TRACE(name.toStdString());
        QZPaletteLoad theme;
        ASSERT_TRUE(theme.loadTheme(u":/qz/themes/%1.json"_s.arg(name), nullptr));
        EXPECT_TRUE(keys.isEmpty() || keys == theme.colorKeys());
        keys = theme.colorKeys();
        const auto color = [&](const QString& key) { return theme.getCustomColor(key).value_or(QColor()); };
        const auto icon = [&](const char* key) { return color(u"QZLinePaintToolFactory."_s + QLatin1String(key)); };
        EXPECT_LT(color(u"RangeStatisticsLayer.RangeRectBkColor"_s).alpha(), 128) << "candles must show through";
        const QColor panel = icon("PanelBackgroundColor");
        const QColor chart = color(u"qzchart.background"_s);
        for (const char* key : {"IconNormalColor", "IconHoverColor", "IconActiveColor", "ControlButtonSelectedColor"})
            EXPECT_GE(contrast(icon(key), panel), 3) << key;
        EXPECT_GE(contrast(icon("ControlButtonHoverColor"), panel), 1.4) << "a tint, seen beside its neighbours";
        EXPECT_GE(contrast(icon("ControlButtonHoverColor"), icon("IconNormalColor")), 3);
        EXPECT_GE(contrast(icon("ControlButtonSelectedColor"), icon("IconSelectedColor")), 3);
        EXPECT_GE(contrast(icon("KeyPointColor"), chart), 3);
        EXPECT_GE(contrast(color(u"qzchart.axisText"_s), chart), 4.5);
        // Orange beside blue is told apart by everyone.
        const int turn = std::abs(icon("IconHoverColor").hue() - icon("IconActiveColor").hue());
        EXPECT_GT(std::min(turn, 360 - turn), 120);
    }
}

TEST(Theme, AHostsFileColoursItsPicturesAndABrokenOneLeavesItAlone)
{
    const QTemporaryDir folder;
    QZPaletteLoad palette;
    QString error;
    const auto load = [&](const char* json) {
        QFile file(folder.filePath(u"t.json"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(json) > 0 && file.flush());
        return palette.loadTheme(file.fileName(), &error);
    };
    QFile svg(folder.filePath(u"p.svg"_s));
    ASSERT_TRUE(svg.open(QIODevice::WriteOnly));
    svg.write(
        "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><rect width='40' height='20' fill='blue'/>"
        "<rect width='20' height='20' fill='theme(ink)'/></svg>");
    svg.close();
    ASSERT_TRUE(load(R"({"name": "host", "colors": {"ink": "#80FF0000"}, "images":)"
                     R"({"picture": "p.svg", "raster": "p.png", "gone": "none.svg"}})"));
    for (const auto& [json, hint] : {std::pair{"{", "offset"},
                                     {"[]", "name"},
                                     {R"({"name":1,"colors":{}})", "name"},
                                     {R"({"name":"x"})", "colors"},
                                     {R"({"name":"x","colors":{"k":"red"}})", "\"k\""},
                                     {R"({"name":"x","colors":{},"images":[]})", "images"},
                                     {R"({"name":"x","colors":{"k":"#000000"},"images":{"p":3}})", "\"p\""}}) {
        EXPECT_FALSE(load(json));
        EXPECT_TRUE(error.contains(QLatin1String(hint))) << json << ": " << error.toStdString();
        EXPECT_EQ(palette.name() + palette.colorKeys().join(u' '), u"hostink"_s);
    }
    const QImage own = palette.getCustomImage(u"picture"_s);
    EXPECT_EQ(own.deviceIndependentSize(), QSizeF(40, 20));
    EXPECT_EQ(own.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(own.pixelColor(own.width() - 3, 5), QColor(Qt::blue));
    ASSERT_TRUE(own.save(folder.filePath(u"p.png"_s)));
    EXPECT_EQ(palette.getCustomImage(u"raster"_s), own.convertToFormat(QImage::Format_ARGB32));
    for (const QString& key : {u"picture"_s, u"raster"_s})
        EXPECT_EQ(palette.getCustomImage(key, 50).deviceIndependentSize(), QSizeF(100, 50));
    palette.setColor(u"ink"_s, Qt::green);
    EXPECT_EQ(palette.getCustomImage(u"picture"_s).pixelColor(5, 5), QColor(Qt::green)) << "a stale picture";
    const LogSpy log;
    EXPECT_TRUE(palette.getCustomImage(u"gone"_s).isNull() && palette.getCustomImage(u"gone"_s).isNull());
    EXPECT_EQ(log.lines.size(), 1) << "what fails is logged once";
}

TEST(Theme, CutsStripsIntoScaledPictures)
{
    QImage two(72, 36, QImage::Format_ARGB32_Premultiplied);
    two.fill(Qt::blue);
    QPainter(&two).fillRect(0, 0, 36, 36, Qt::red);
    two.setDevicePixelRatio(2.0);
    const auto sizes = [&](int count, int scaleType, double scaleValue) {
        std::vector<QSizeF> all; // logical px
        for (const QImage& image : QZPaletteLoad::getImagesInGroupByScale(two, count, scaleType, scaleValue))
            all.push_back(image.deviceIndependentSize());
        return all;
    };
    EXPECT_EQ(sizes(2, 1, 9), std::vector(2, QSizeF(9, 9)));
    EXPECT_EQ(sizes(2, 0, 9), std::vector(2, QSizeF(18, 18))) << "no scaling";
    EXPECT_EQ(sizes(5, 0, 0), std::vector(5, QSizeF(7, 18))) << "uneven cut";
    for (const auto& [count, height] : {std::pair{0, 9.0}, {73, 9.0}, {2, std::nan("")}, {2, 1e9}})
        EXPECT_TRUE(sizes(count, 1, height).empty()) << count << " of " << height;
    // A neighbour's colour must not shine into the edge, enlarged or not.
    const QImage right = QZPaletteLoad::getImageInGroupByScale(two, 2, 1, 1, 36);
    EXPECT_EQ(right.pixelColor(0, 40), QColor(Qt::blue));
}
