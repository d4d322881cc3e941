#include "model/QZDrawingTypes.h"
#include "panels/QZInterfaceLoader.h"
#include "panels/QZPaintControl.h"
#include "platform/QZFrameComFun.h"
#include "support/Spies.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>

namespace {

constexpr std::uint64_t all = QZAllEnabledTypes;
constexpr std::uint64_t allButFan = 0x3ffffffbfff;
const std::string fanOff = "<key>QZSTGannFan</key><false/>";
const std::string numbers = "<key>QZSTRay</key><integer>2</integer><key>QZSTGannFan</key><integer>0</integer>"
                            "<key>QZSTStraight</key><real>0.5</real><key>QZSTArc</key><real>0</real>";

class PaletteProfiles : public testing::Test {
protected:
    void SetUp() override
    {
        rootBefore_ = QZFrameComFun::setRootFolder(root_.path());
        path_ = QZFrameComFun::getStorageFilePath(1, {}, QStringLiteral("QZPaintControl.plist"), true);
    }
    void TearDown() override { QZFrameComFun::setRootFolder(rootBefore_); }

    void write(const std::string& bytes)
    {
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }

    QTemporaryDir root_;
    QString rootBefore_;
    QString path_;
    LogSpy log_;
};

std::string xml(const std::string& body)
{
    return R"(<?xml version="1.0"?><!-- < > --><plist version="1.0">)" + body + "</plist>";
}

std::string profile(const std::string& entries)
{
    return xml("<dict><key>P</key><dict>" + entries + "</dict></dict>");
}

} // namespace

TEST_F(PaletteProfiles, WhatCannotBeUsedForbidsNothingAndIsLoggedOnce)
{
    struct Row {
        const char* name;
        std::string bytes;
        std::uint64_t mask;
        const char* logged; // empty for no line
    };
    for (const Row& row : {
             Row{"one off", profile("<key>QZSTRay</key><true/>" + fanOff), allButFan, ""},
             Row{"beyond the mask", profile("<key>QZSTToolRangeStatistics</key><false/>"), all, ""},
             Row{"text", profile("<key>QZSTRay</key><string>0</string>" + fanOff), allButFan, "neither a boolean"},
             Row{"numbers", profile(numbers), allButFan & ~QZSTArc, ""},
             Row{"byte order mark", "\xef\xbb\xbf" + profile(fanOff), allButFan, ""},
             Row{"misspelt", profile("<key>QZSTGanFan</key><false/>"), all, "QZSTGanFan of P is not a tool"},
             Row{"binary", "bplist00", all, "only XML"},
             Row{"empty", "", all, "root is not a dictionary"},
             Row{"root is an array", xml("<array><true/></array>"), all, "root is not a dictionary"},
             Row{"malformed", xml("<dict><key>P</dict>"), all, "not a well-formed"},
             Row{"no text", std::string("\0\xff<dict>\0\xfe", 10), all, "not a well-formed"},
             Row{"too large", profile(fanOff) + std::string(256 * 1024, ' '), all, "larger than 262144 bytes"},
             Row{"very deep", xml(QByteArray("<dict><key>P</key>").repeated(9000).toStdString()), all, "more than 256"},
         }) {
        SCOPED_TRACE(row.name);
        write(row.bytes);
        log_.lines.clear();
        EXPECT_EQ(QZPaintControlProfiles::readFile(path_).enableTypes(QStringLiteral("P")), row.mask);
        const QString line = log_.lines.join(u'\n');
        EXPECT_EQ(log_.lines.size(), *row.logged == 0 ? 0 : 1) << line.toStdString();
        EXPECT_TRUE(line.contains(QLatin1String(row.logged))) << line.toStdString();
        EXPECT_TRUE(line.isEmpty() || line.contains(path_)) << line.toStdString();
    }
}

TEST_F(PaletteProfiles, AKeyAppliesItsProfileFromAFileReadOnce)
{
    QZPaintControl palette(QStringLiteral("QZPaintControl"));
    palette.setControlKey(QZPaintControlRealTimeKey); // the library's own file, since the host brings none
    EXPECT_EQ(palette.enableTypes(), all & ~static_cast<std::uint64_t>(QZSTBoxLine | QZSTFibonacci));
    palette.setControlKey(QZPaintControlCandlestickKey);
    EXPECT_EQ(palette.enableTypes(), all);

    write(profile(fanOff));
    palette.setControlKey(QStringLiteral("P"));
    EXPECT_EQ(palette.enableTypes(), all);
    QZPaintControl next(QStringLiteral("QZPaintControl"));
    next.setControlKey(QStringLiteral("P"));
    EXPECT_FALSE(next.window().findChild<QWidget*>(QStringLiteral("QZSTGannFan"))->isEnabled());
    next.setControlKey(QStringLiteral("no such profile"));
    EXPECT_EQ(next.enableTypes(), all);
    EXPECT_EQ(log_.lines, QStringList());
}

TEST_F(PaletteProfiles, AHostsOwnFileNamesItsButtonsOnce)
{
    path_ = root_.filePath(QStringLiteral("QZPaintControl.ui"));
    QZInterfaceLoader::setHostFolder(root_.path());
    std::string ui = R"(<ui version="4.0"><widget class="QWidget" name="QZPaintControl">)";
    for (const auto& [type, given] :
         {std::pair{"QZSTRay", "toolTip"}, {"QZSTArc", "accessibleName"}, {"QZSTCycle", ""}})
        ui += std::string(R"(<widget class="QZPaintToolCtrlBtn" name=")") + type + R"("><property name=")" + given +
              R"("><string>its name</string></property>)"
              R"(<property name="action" stdset="0"><string>changeShape</string></property></widget>)";
    write(ui + "</widget></ui>");
    QZPaintControl palette(QStringLiteral("QZPaintControl"));
    QStringList names;
    for (const auto* one : palette.window().findChildren<QAbstractButton*>())
        names += one->accessibleName() + u'/' + one->toolTip();
    EXPECT_EQ(names.join(u' '), QStringLiteral("its name/its name its name/its name QZSTCycle/"));
    EXPECT_EQ(log_.lines, QStringList());

    write("<ui>");
    const QZPaintControl fallback(QStringLiteral("QZPaintControl"));
    EXPECT_EQ(log_.lines.size(), 1);
    EXPECT_TRUE(log_.lines.value(0).contains(path_)) << "the library's own is taken instead";
    QZInterfaceLoader::setHostFolder({});
}
