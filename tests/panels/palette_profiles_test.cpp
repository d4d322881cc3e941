#include "model/QZDrawingTypes.h"
#include "panels/QZInterfaceLoader.h"
#include "panels/QZPaintControl.h"
#include "platform/QZFrameComFun.h"
#include "support/Spies.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint64_t all = QZAllEnabledTypes;
constexpr std::uint64_t allButFan = 0x3ffffffbfff;
const std::string fanOff = "<key>QZSTGannFan</key><false/>";
const auto xml = [](const std::string& body) { return "<?xml version='1.0'?><!-- < > --><plist>" + body + "</plist>"; };
const auto profile = [](const std::string& rows) { return xml("<dict><key>P</key><dict>" + rows + "</dict></dict>"); };

class PaletteProfiles : public testing::Test {
protected:
    ~PaletteProfiles() override { QZFrameComFun::setRootFolder(rootBefore_); }

    void write(const std::string& bytes)
    {
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(bytes)) >= 0);
    }

    QTemporaryDir root_;
    QString rootBefore_ = QZFrameComFun::setRootFolder(root_.path());
    QString path_ = QZFrameComFun::getStorageFilePath(1, {}, u"QZPaintControl.plist"_s, true);
    LogSpy log_;
};

} // namespace

TEST_F(PaletteProfiles, WhatCannotBeUsedForbidsNothingAndIsLoggedOnce)
{
    const std::string numbers = "<key>QZSTRay</key><integer>2</integer><key>QZSTGannFan</key><integer>0</integer>"
                                "<key>QZSTStraight</key><real>0.5</real><key>QZSTArc</key><real>0</real>";
    // Each with the line that is logged, if any.
    for (const auto& [name, bytes, mask, logged] : {
             std::tuple{"one off", profile("<key>QZSTRay</key><true/>" + fanOff), allButFan, ""},
             {"beyond the mask", profile("<key>QZSTToolRangeStatistics</key><false/>"), all, ""},
             {"text", profile("<key>QZSTRay</key><string>0</string>" + fanOff), allButFan, "neither a boolean"},
             {"numbers", profile(numbers), allButFan & ~QZSTArc, ""},
             {"byte order mark", "\xef\xbb\xbf" + profile(fanOff), allButFan, ""},
             {"misspelt", profile("<key>QZSTGanFan</key><false/>"), all, "QZSTGanFan of P is not a tool"},
             {"no profile", xml("<dict><key>P</key><true/></dict>"), all, "P is not a dictionary"},
             {"binary", "bplist00", all, "only XML"},
             {"empty", "", all, "root is not a dictionary"},
             {"root is an array", xml("<array><true/></array>"), all, "root is not a dictionary"},
             {"malformed", xml("<dict><key>P</dict>"), all, "not a well-formed"},
             {"no text", std::string("\0\xff<dict>\0\xfe", 10), all, "not a well-formed"},
             {"too large", profile(fanOff) + std::string(256 * 1024, ' '), all, "larger than 262144 bytes"},
             {"very deep", xml(QByteArray("<dict><key>P</key>").repeated(9000).toStdString()), all, "more than 256"},
         }) {
        SCOPED_TRACE(name);
        write(bytes);
        log_.lines.clear();
        EXPECT_EQ(QZPaintControlProfiles::readFile(path_).enableTypes(u"P"_s), mask);
        const QString line = log_.lines.join(u'\n');
        EXPECT_EQ(log_.lines.size(), *logged == 0 ? 0 : 1) << line.toStdString();
        EXPECT_TRUE(line.contains(QLatin1String(logged)) && (line.isEmpty() || line.contains(path_)))
            << line.toStdString();
    }
}

TEST_F(PaletteProfiles, AKeyAppliesItsProfileFromAFileReadOnce)
{
    QZPaintControl palette(u"QZPaintControl"_s);
    palette.setControlKey(QZPaintControlRealTimeKey); // the library's own file, since the host brings none
    EXPECT_EQ(palette.enableTypes(), all & ~static_cast<std::uint64_t>(QZSTBoxLine | QZSTFibonacci));
    palette.setControlKey(QZPaintControlCandlestickKey);
    EXPECT_EQ(palette.enableTypes(), all);

    write(profile(fanOff));
    palette.setControlKey(u"P"_s);
    EXPECT_EQ(palette.enableTypes(), all);
    QZPaintControl next(u"QZPaintControl"_s);
    next.setControlKey(u"P"_s);
    EXPECT_FALSE(next.window().findChild<QWidget*>(u"QZSTGannFan"_s)->isEnabled());
    next.setControlKey(u"no such profile"_s);
    EXPECT_EQ(next.enableTypes(), all);
    EXPECT_EQ(log_.lines, QStringList());
}

TEST_F(PaletteProfiles, AHostsOwnFileNamesItsButtonsOnce)
{
    path_ = root_.filePath(u"QZPaintControl.ui"_s);
    QZInterfaceLoader::setHostFolder(root_.path());
    const auto named = [](const std::string& type, const std::string& given) {
        return "<widget class='QZPaintToolCtrlBtn' name='" + type + "'><property name='action' stdset='0'><string>" +
               "changeShape</string></property><property name='" + given + "'><string>A</string></property></widget>";
    };
    write("<ui version='4.0'><widget class='QWidget' name='QZPaintControl'>" + named("QZSTRay", "toolTip") +
          named("QZSTArc", "accessibleName") + named("QZSTCycle", "") + "</widget></ui>");
    QZPaintControl palette(u"QZPaintControl"_s);
    QStringList names;
    for (const auto* one : palette.window().findChildren<QAbstractButton*>())
        names += one->accessibleName() + u'/' + one->toolTip();
    EXPECT_EQ(names.join(u' '), u"A/A A/A QZSTCycle/"_s);
    EXPECT_EQ(log_.lines, QStringList());

    write("<ui>");
    const QZPaintControl fallback(u"QZPaintControl"_s);
    EXPECT_EQ(log_.lines.size(), 1);
    EXPECT_TRUE(log_.lines.value(0).contains(path_)) << "the library's own is taken instead";
    QZInterfaceLoader::setHostFolder({});
}
