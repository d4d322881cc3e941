#include "model/QZPaintGraph.h"
#include "panels/QZInterfaceLoader.h"
#include "panels/QZPaintControl.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "support/Spies.h"
#include "support/widgets/Keyboard.h"
#include "support/widgets/Picture.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct DelegateSpy final : QZPaintControlWCDelegate {
    using Panel = QZPaintControl;
    QStringList calls;
    QImage thumbnail;

    void changeShapeTo(std::int64_t type, const QImage& image) override
    {
        thumbnail = image;
        calls += strQZShapeType(type);
    }
    void removeAllGraphs(Panel&) override { calls += u"remove"_s; }
    void showOrHiddenAllGraphs(Panel& sender) override { calls += sender.isHidden() ? u"hide"_s : u"show"_s; }
    void windowWillClosed(Panel& sender) override { calls += strQZShapeType(sender.selectedType()); }

    QString taken() { return std::exchange(calls, {}).join(u' '); }
};

class Palette : public testing::Test {
protected:
    void SetUp() override
    {
        palette_.setDelegate(&delegate_);
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        leaveButtons();
    }

    auto& button(QZShapeType type) { return *window_.findChild<QZPaintControlButton*>(strQZShapeType(type)); }
    void click(QZShapeType type) { QTest::mouseClick(&button(type), Qt::LeftButton); }
    void leaveButtons() { QTest::mouseMove(&window_, QPoint(1, 1)); }
    std::uint64_t enabled() { return maskOf(&QWidget::isEnabled); }
    std::uint64_t selected() { return maskOf(&QZPaintControlButton::isSelected); }
    template <typename Is>
    std::uint64_t maskOf(Is is)
    {
        std::uint64_t mask = 0;
        for (const auto* one : window_.findChildren<QZPaintControlButton*>())
            mask |= (one->*is)() ? static_cast<std::uint64_t>(enumQZShapeType(one->objectName())) : 0U;
        return mask;
    }

    DelegateSpy delegate_;
    QZPaintControl palette_{u"QZPaintControl"_s};
    QZPanelWindow& window_ = palette_.window();
};

constexpr std::uint64_t all = QZAllEnabledTypes;
constexpr std::uint64_t allButFan = 0x3ffffffbfff;
const std::string fanOff = "<key>QZSTGannFan</key><false/>";
const auto xml = [](const std::string& body) { return "<?xml version='1.0'?><!-- < > --><plist>" + body + "</plist>"; };
const auto profile = [](const std::string& rows) { return xml("<dict><key>P</key><dict>" + rows + "</dict></dict>"); };

class PaletteProfiles : public testing::Test {
protected:
    void TearDown() override { QZFrameComFun::setRootFolder(rootBefore_); }

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

TEST_F(Palette, OffersEveryToolOnceWithNameAndKeyboard)
{
    QSet<QString> tips;
    for (int bit = 0; bit < 42; ++bit) {
        const auto found = window_.findChildren<QZPaintControlButton*>(strQZShapeType(std::int64_t(1) << bit));
        ASSERT_EQ(found.size(), 1) << bit;
        EXPECT_FALSE(found[0]->toolTip().isEmpty() || found[0]->accessibleName().isEmpty()) << bit;
        tips += found[0]->toolTip();
    }
    EXPECT_EQ(tips.size(), 42);
    EXPECT_TRUE(window_.testAttribute(Qt::WA_AlwaysShowToolTips)) << "the chart, not the palette, is active";

    window_.activateWindow();
    ASSERT_TRUE(getsKeyboard(&window_));
    button(QZSTLineSegment).setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(&button(QZSTArc), Qt::Key_Return);
    auto* actions = QAccessible::queryAccessibleInterface(&button(QZSTCycle))->actionInterface();
    actions->doAction(QAccessibleActionInterface::toggleAction());
    actions->doAction(QAccessibleActionInterface::toggleAction()); // chosen, it stays so
    EXPECT_EQ(delegate_.taken(), u"QZSTRay QZSTArc QZSTCycle"_s);
    EXPECT_EQ(palette_.selectedType(), QZSTCycle);
    EXPECT_EQ(selected(), QZSTCycle);
    EXPECT_TRUE(button(QZSTCycle).isChecked());
}

TEST_F(Palette, GivesTheKeyboardBackToTheChart)
{
    QWidget chart;
    chart.show();
    QZGlobalEnv::getShareInstance().setMainWindow(chart.windowHandle());
    window_.addToWindowOf(chart);
    button(QZSTArc).setEnabled(false);
    for (const QZShapeType type : {QZSTGannFan, QZSTGannFan, QZSTToolMagnet, QZSTToolEye, QZSTToolEye, QZSTToolDelete,
                                   QZSTRay, QZSTArc}) { // the last one is disabled
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        window_.activateWindow();
        ASSERT_TRUE(getsKeyboard(&window_));
        if (type == QZSTArc) {
            QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, button(type).geometry().center());
            window_.activateWindow(); // a window manager that is late
            QCoreApplication::processEvents();
        } else {
            QTest::keyClick(&button(type), Qt::Key_Space);
        }
        EXPECT_TRUE(getsKeyboard(&chart));
    }
    EXPECT_EQ(selected(), QZSTRay);
    EXPECT_EQ(delegate_.thumbnail, button(QZSTRay).images()[0]);
    EXPECT_EQ(delegate_.taken(), u"QZSTGannFan hide show remove QZSTRay"_s);
}

TEST_F(Palette, MasksEnableButtonsOfWhichTheEyeLeavesOnlyItself)
{
    EXPECT_EQ(enabled(), QZAllEnabledTypes);
    palette_.setEnableTypes(QZSTToolRangeStatistics | QZSTRay);
    EXPECT_EQ(enabled(), QZSTRay);
    palette_.setHidden(true);
    palette_.setEnableTypes(QZSTArc);
    EXPECT_EQ(enabled(), 0U) << "the eye itself is masked";
    button(QZSTArc).setEnabled(true);
    palette_.setEnableTypes(QZSTArc);
    EXPECT_EQ(enabled(), QZSTArc) << "the present mask again must change nothing";

    constexpr std::uint64_t mask = QZAllEnabledTypes & ~QZSTArc;
    palette_.setHidden(false);
    palette_.setEnableTypes(mask);
    for (const QZShapeType type : {QZSTToolMagnet, QZSTGannFan, QZSTToolEye})
        click(type);
    EXPECT_EQ(enabled(), QZSTToolEye);
    EXPECT_EQ(selected(), QZSTToolEye);
    EXPECT_EQ(palette_.selectedType(), QZShapeTypeNone);
    click(QZSTRay);
    click(QZSTToolEye);
    EXPECT_EQ(enabled(), mask);
    EXPECT_EQ(selected(), 0U);
    EXPECT_EQ(delegate_.taken(), u"QZSTGannFan hide show"_s);
    // Deselected by the eye but still on: from here on the button shows the opposite of the flag.
    EXPECT_TRUE(palette_.isMagnet());
    click(QZSTToolMagnet);
    EXPECT_FALSE(palette_.isMagnet());
    EXPECT_EQ(selected(), QZSTToolMagnet);
    click(QZSTRay);
    palette_.setEnableTypes(mask & ~static_cast<std::uint64_t>(QZSTRay));
    click(QZSTToolEye);
    EXPECT_EQ(selected(), QZSTToolEye) << "the chosen tool is let go of though the mask has lost it";
}

TEST_F(Palette, AFinishedFigureOrClosingReleasesTheTool)
{
    QZPaintGraph fan(QZSTGannFan);
    QZPaintGraph band(QZSTToolRangeStatistics);
    band.setEditing(false);
    const auto post = [](auto* graph) {
        QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, graph);
    };
    click(QZSTToolMagnet);
    click(QZSTGannFan);
    for (QZPaintGraph* still : {&fan, &band, static_cast<QZPaintGraph*>(nullptr)}) {
        post(still);
        EXPECT_EQ(palette_.selectedType(), QZSTGannFan);
    }
    fan.setEditing(false);
    post(&fan);
    EXPECT_EQ(palette_.selectedType(), QZShapeTypeNone);
    EXPECT_EQ(selected(), QZSTToolMagnet);
    click(QZSTRay);
    window_.close();
    EXPECT_EQ(selected(), QZSTToolMagnet);
    EXPECT_TRUE(palette_.isMagnet());
    EXPECT_EQ(delegate_.taken(), u"QZSTGannFan QZSTRay QZShapeTypeNone"_s);
    palette_.resetAllButtons(true);
    EXPECT_EQ(selected(), 0U);
}

TEST_F(Palette, AToolIsToldByItsBackgroundAFunctionByItsPicture)
{
    window_.activateWindow();
    ASSERT_TRUE(getsKeyboard(&window_));
    button(QZSTToolEye).setFocus();
    Picture picture;
    const std::array types{QZSTArc, QZSTRay, QZSTToolMagnet, QZSTToolEye, QZSTToolDelete};
    for (const QZShapeType type : types) {
        button(type).setEnabled(type != QZSTRay);
        for (int clicks = 0; clicks < 2; ++clicks) {
            picture.add(button(type));
            QTest::mouseMove(&button(type));
            picture.add(button(type));
            click(type);
            picture.add(button(type));
            leaveButtons();
        }
        picture.add(button(type));
    }
    QZPaintControlButton& fan = button(QZSTGannFan);
    QTest::mouseMove(&fan);
    fan.setEnabled(false);
    leaveButtons();
    picture.add(fan);
    click(QZSTArc);
    QZGlobalEnv::getShareInstance().setTheme(u"dark"_s);
    for (const QZShapeType type : types)
        picture.add(button(type));
    QZGlobalEnv::getShareInstance().setTheme(u"light"_s);
    EXPECT_TRUE(picture.isLike(u"panels/buttons.png"_s));
}

TEST_F(PaletteProfiles, WhatCannotBeUsedForbidsNothingAndIsLoggedOnce)
{
    const std::string numbers = "<key>QZSTRay</key><integer>2</integer><key>QZSTGannFan</key><integer>0</integer>"
                                "<key>QZSTStraight</key><real>0.5</real><key>QZSTArc</key><real>0</real>";
    // Each with the line that is logged, if any.
    for (const auto& [name, bytes, mask, logged] : {
             std::tuple{"one off", profile("<key>QZSTRay</key><true/>" + fanOff), allButFan, ""},
             {"beyond the mask", profile("<key>QZSTToolRangeStatistics</key><false/>"), all, ""},
             {"text", profile("<key>QZSTRay</key><string>0</string>" + fanOff), allButFan, "neither a boolean"},
             {"numbers", profile(numbers), allButFan & ~std::uint64_t{QZSTArc}, ""},
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
