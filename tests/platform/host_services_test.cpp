#include "platform/QZAlert.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGetFixData.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"
#include "support/Contrast.h"
#include "support/Spies.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QSet>
#include <QTemporaryDir>

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

TEST(GetFixData, WritesCompactNumbers)
{
    QStringList texts;
    for (const double value : {1234.5, -0.001, 1e4, 9999.996, 9999.994, -2.5e6, 99999999.0, 1.5e13, std::nan("")})
        texts << QZGetFixData(value, 0);
    for (const auto& [value, option] : {std::pair{12345.0, 1}, {9999.96, 1}, {12345.0, -3}, {0.5, 9}, {0.5, 10}})
        texts << QZGetFixData(value, option);
    EXPECT_EQ(texts.join(u' '), u"1234.50 0.00 1.00万 1.00万 9999.99 -250.00万 1.00亿 150000.00亿 -- "
                                "1.2万 1.0万 1.23万 0.500000000 0.50"_s);
}

TEST(Files, LieInTheUsersOwnFolderAndInTheHostsBeforeTheLibrarys)
{
    const QTemporaryDir root;
    const QString before = QZFrameComFun::setRootFolder(root.path());
    const auto pathFor = [](const QString& user, bool isNeedWrite) {
        QZGlobalEnv::getShareInstance().setLoginUser(user);
        return QZFrameComFun::getUserAccountFilePath(u"f.db"_s, isNeedWrite);
    };
    const QString accounts = root.filePath(u"accounts"_s);
    EXPECT_EQ(pathFor(u"ann_b-2"_s, false), accounts + u"/ann_b-2/f.db"_s);
    EXPECT_FALSE(QDir(accounts).exists()) << "reading creates nothing";
    QStringList users = u"%none,.,..,../../x,/etc,a/b,a\\b,a b,bob,Bob,%42ob,用户,con,"_s.split(u',');
    for (const auto& [length, letter] :
         {std::pair{1, u'\xd800'}, {1, u'\xd801'}, {1, u'\0'}, {300, u'户'}, {500, u'x'}, {501, u'x'}})
        users << QString(length, letter);
    QSet<QString> folders;
    for (const QString& user : users) {
        SCOPED_TRACE(user.toStdString());
        const QString folder = QFileInfo(pathFor(user, true)).path();
        EXPECT_EQ(QFileInfo(QDir::cleanPath(folder)).path(), accounts);
        EXPECT_TRUE(QDir(folder).exists());
        folders.insert(folder.toLower());
    }
    EXPECT_EQ(folders.size(), users.size());
    QZGlobalEnv::getShareInstance().setLoginUser({});

    const auto path = [](bool write) { return QZFrameComFun::getStorageFilePath(1, {}, u"p"_s, write); };
    EXPECT_EQ(path(false), u":/qz/storage/p"_s);
    QFile file(path(true));
    EXPECT_EQ(file.fileName(), root.filePath(u"storage/p"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(path(false), file.fileName());
    QZFrameComFun::setRootFolder(before);
}

TEST(Alert, AnswersAButtonOfTheRequest)
{
    const QZAlertRequest request{u"Delete all?"_s, {u"No"_s, u"Yes"_s}};
    QList<int> answers;
    for (const int pressed : {1001, 1002, 999}) {
        QZAlert::setRunner([=](const QZAlertRequest&) { return pressed; });
        answers << QZAlert::run(request);
    }
    QZAlert::setRunner({});
    const LogSpy log;
    answers << QZAlert::run(request);
    EXPECT_EQ(answers, (QList<int>{1001, 1000, 1000, 1000}));
    EXPECT_EQ(log.lines.size(), 1) << "nobody could be asked";
}

TEST(Log, SaysWhatNobodyTakesInOneLine)
{
    static QString said;
    const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) { said = message; });
    writeBusCommonLog(u"a\nb\rc\u2028d\u2029e"_s);
    qInstallMessageHandler(before);
    EXPECT_EQ(said, u"a b c d e"_s);
}

TEST(NotificationCenter, KeepsItsPromisesWhileAPostIsUnderWay)
{
    QZNotificationCenter center;
    QString heard;
    QZObservation self;
    QZObservation victim;
    QZObservation late;
    const auto shared = std::make_shared<QString>(u"a"_s);
    self = center.observe(u"topic"_s, [&, shared](const QZNotification&) {
        self.reset(); // the handler goes on living until it returns
        victim.reset();
        late = center.observe(u"topic"_s, [&](const QZNotification&) { heard += u'l'; });
        heard += *shared;
    });
    victim = center.observe(u"topic"_s, [&](const QZNotification&) { heard += u'v'; });
    center.post(u"topic"_s);
    EXPECT_EQ(heard, u"a"_s) << "a removed observer is not called, nor one added meanwhile";
    EXPECT_EQ(shared.use_count(), 1) << "a dropped handler must let go of what it captured";
    center.post(u"topic"_s);
    EXPECT_EQ(heard, u"al"_s);
}

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
        for (const char* key : {"axisText", "line1", "line2", "line3", "line4"})
            EXPECT_GE(contrast(color(u"qzchart."_s + QLatin1String(key)), chart), 4.5) << key;
        // The band's edges on the chart, and the white cross on its close button.
        for (const QColor& beside : {chart, QColor(Qt::white)})
            EXPECT_GE(contrast(color(u"RangeStatisticsLayer.DashRulesLineColor"_s), beside), 3);
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
        EXPECT_FALSE(load(json) || QZGlobalEnv::getShareInstance().setThemeFile(folder.filePath(u"t.json"_s)));
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
