#include "platform/QZGlobalEnv.h"
#include "support/Contrast.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <tuple>

namespace {

QString written(const QTemporaryDir& folder, const QString& name, const QByteArray& text)
{
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    return file.fileName();
}

} // namespace

TEST(Theme, ShippedThemesHaveTheSameKeysAndReadWell)
{
    QStringList keys;
    for (const char* name : {"light", "dark"}) {
        SCOPED_TRACE(name);
        QZPaletteLoad theme;
        ASSERT_TRUE(theme.loadTheme(QStringLiteral(":/qz/themes/%1.json").arg(QLatin1String(name)), nullptr));
        EXPECT_TRUE(keys.isEmpty() || keys == theme.colorKeys());
        keys = theme.colorKeys();
        const auto color = [&](const char* key) { return theme.getCustomColor(QLatin1String(key)).value_or(QColor()); };
        EXPECT_LT(color("RangeStatisticsLayer.RangeRectBkColor").alpha(), 128) << "candles must show through";

        const auto icon = [&](const char* key) {
            return color(qPrintable(QLatin1String("QZLinePaintToolFactory.") + QLatin1String(key)));
        };
        const QColor panel = icon("PanelBackgroundColor");
        for (const auto& [key, background, least] :
             {std::tuple{"IconNormalColor", panel, 3.0},
              {"IconHoverColor", panel, 3.0},
              {"IconActiveColor", panel, 3.0},
              {"ControlButtonSelectedColor", panel, 3.0},
              {"ControlButtonHoverColor", panel, 1.4}, // a tint, seen beside its neighbours
              {"IconNormalColor", icon("ControlButtonHoverColor"), 3.0},
              {"IconSelectedColor", icon("ControlButtonSelectedColor"), 3.0},
              {"KeyPointColor", color("qzchart.background"), 3.0}})
            EXPECT_GE(contrast(icon(key), background), least) << key << " on " << background.name().toStdString();
        EXPECT_GE(contrast(color("qzchart.axisText"), color("qzchart.background")), 4.5);
        // Orange beside blue is told apart by everyone.
        const int turn = std::abs(icon("IconHoverColor").hue() - icon("IconActiveColor").hue());
        EXPECT_GT(std::min(turn, 360 - turn), 120);
    }
}

TEST(Theme, ABrokenFileIsExplainedAndLeavesThePresentThemeAlone)
{
    const QTemporaryDir folder;
    QZPaletteLoad palette;
    ASSERT_TRUE(palette.loadTheme(QStringLiteral(":/qz/themes/dark.json"), nullptr));
    const QStringList keys = palette.colorKeys();
    for (const auto& [json, hint] : {std::pair{"{", "offset"},
                                     {"[]", "name"},
                                     {R"({"name":1,"colors":{}})", "name"},
                                     {R"({"name":"x"})", "colors"},
                                     {R"({"name":"x","colors":{"k":"red"}})", "\"k\""},
                                     {R"({"name":"x","colors":{},"images":[]})", "images"},
                                     {R"({"name":"x","colors":{"k":"#000000"},"images":{"p":3}})", "\"p\""}}) {
        SCOPED_TRACE(json);
        QString error;
        EXPECT_FALSE(palette.loadTheme(written(folder, QStringLiteral("t.json"), json), &error));
        EXPECT_TRUE(error.contains(QLatin1String(hint))) << error.toStdString();
        EXPECT_EQ(palette.name(), QStringLiteral("dark"));
        EXPECT_EQ(palette.colorKeys(), keys);
    }
}

TEST(Theme, DrawsSvgInTheThemesColoursAtTheHeightAskedFor)
{
    const QTemporaryDir folder;
    // clang-format off
    written(folder, QStringLiteral("p.svg"), R"x(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20">
        <rect width="20" height="20" fill="theme(ink)"/><rect x="20" width="20" height="20" fill="#0000ff"/></svg>)x");
    const QString theme = written(folder, QStringLiteral("t.json"), R"({"name": "host",
        "colors": {"ink": "#80FF0000"}, "images": {"picture": "p.svg", "gone": "none.svg"}})");
    // clang-format on
    QZPaletteLoad palette;
    ASSERT_TRUE(palette.loadTheme(theme, nullptr));
    const QString key = QStringLiteral("picture");
    const QImage own = palette.getCustomImage(key);
    EXPECT_EQ(own.deviceIndependentSize(), QSizeF(40, 20));
    EXPECT_EQ(own.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(own.pixelColor(own.width() - 3, 5), QColor(Qt::blue));
    EXPECT_EQ(palette.getCustomImage(key, 50).deviceIndependentSize(), QSizeF(100, 50));
    palette.setColor(QStringLiteral("ink"), Qt::green);
    EXPECT_EQ(palette.getCustomImage(key).pixelColor(5, 5), QColor(Qt::green)) << "the cached picture is stale now";
    EXPECT_TRUE(palette.getCustomImage(QStringLiteral("gone")).isNull());
}

TEST(Theme, CutsStripsIntoScaledPictures)
{
    QImage two(72, 36, QImage::Format_ARGB32_Premultiplied);
    two.fill(Qt::blue);
    QPainter(&two).fillRect(0, 0, 36, 36, Qt::red);
    two.setDevicePixelRatio(2.0);
    struct Row {
        const char* name = "";
        int count = 0, scaleType = 0;
        double scaleValue = 0;
        std::size_t pictures = 0;
        QSize size; // real px
    };
    for (const Row& row : {Row{"to 9 logical px at ratio 2", 2, 1, 9, 2, {18, 18}},
                           Row{"no scaling", 2, 0, 9, 2, {36, 36}}, Row{"uneven cut", 5, 0, 0, 5, {14, 36}},
                           Row{"no pictures", 0, 1, 9, 0, {}}, Row{"more pictures than pixels", 73, 1, 9, 0, {}},
                           Row{"not a number", 2, 1, std::nan(""), 0, {}}, Row{"absurd height", 2, 1, 1e9, 0, {}}}) {
        SCOPED_TRACE(row.name);
        const auto images = QZPaletteLoad::getImagesInGroupByScale(two, row.count, row.scaleType, row.scaleValue);
        ASSERT_EQ(images.size(), row.pictures);
        for (const QImage& image : images) {
            EXPECT_EQ(image.size(), row.size);
            EXPECT_EQ(image.devicePixelRatio(), 2.0);
        }
    }
    // A neighbour's colour must not shine into the edge, enlarged or not.
    const QImage right = QZPaletteLoad::getImageInGroupByScale(two, 2, 1, 1, 36);
    EXPECT_EQ(right.pixelColor(0, 40), QColor(Qt::blue));
}
