#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"
#include "support/widgets/Keyboard.h"
#include "support/widgets/Picture.h"

#include <QAccessible>
#include <QApplication>
#include <QProxyStyle>
#include <QShortcut>
#include <QToolTip>

#include <gtest/gtest.h>
#include <map>

namespace {

class DelegateSpy final : public QZPaintControlWCDelegate {
public:
    void changeShapeTo(std::int64_t type, const QImage& imageThumbnail) override
    {
        thumbnail = imageThumbnail;
        calls += strQZShapeType(type);
    }
    void removeAllGraphs(QZPaintControl& /*sender*/) override { calls += QStringLiteral("remove"); }
    void showOrHiddenAllGraphs(QZPaintControl& sender) override
    {
        calls += sender.isHidden() ? QStringLiteral("hide") : QStringLiteral("show");
    }
    void windowWillClosed(QZPaintControl& sender) override { calls += strQZShapeType(sender.selectedType()); }

    QStringList calls;
    QImage thumbnail;
};

/// A shown palette with a delegate.
class Palette : public testing::Test {
protected:
    void SetUp() override
    {
        palette_.setDelegate(&delegate_);
        palette_.window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&palette_.window()));
        leaveButtons();
    }

    QZPaintControlButton& button(QZShapeType type)
    {
        return *palette_.window().findChild<QZPaintControlButton*>(strQZShapeType(type));
    }
    void click(QZShapeType type) { QTest::mouseClick(&button(type), Qt::LeftButton); }
    void leaveButtons() { QTest::mouseMove(&palette_.window(), QPoint(1, 1)); }
    std::uint64_t enabled() { return maskOf(&QWidget::isEnabled); }
    std::uint64_t selected() { return maskOf(&QZPaintControlButton::isSelected); }
    template <typename Is>
    std::uint64_t maskOf(Is is)
    {
        std::uint64_t mask = 0;
        for (const auto* one : palette_.window().findChildren<QZPaintControlButton*>())
            mask |= (one->*is)() ? static_cast<std::uint64_t>(enumQZShapeType(one->objectName())) : 0U;
        return mask;
    }

    static QColor themeColor(const char* name)
    {
        const auto& theme = QZGlobalEnv::getShareInstance().paletteLoad();
        return *theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.") + QLatin1String(name));
    }

    DelegateSpy delegate_;
    QZPaintControl palette_{QStringLiteral("QZPaintControl")};
};

} // namespace

TEST_F(Palette, OffersEveryToolOnceWithNameAndKeyboard)
{
    QStringList names;
    QStringList tips;
    std::map<int, int> rows; // by their y, how many buttons
    for (const auto* one : palette_.window().findChildren<QZPaintControlButton*>()) {
        SCOPED_TRACE(one->objectName().toStdString());
        names += one->objectName();
        tips += one->toolTip();
        ++rows[one->y()];
        EXPECT_FALSE(one->toolTip().isEmpty() || one->accessibleName().isEmpty());
        EXPECT_EQ(one->focusPolicy(), Qt::TabFocus);
    }
    EXPECT_EQ(names.size(), 42);
    for (int bit = 0; bit < 42; ++bit)
        EXPECT_EQ(names.count(strQZShapeType(std::int64_t(1) << bit)), 1) << bit;
    EXPECT_EQ(tips.removeDuplicates(), 0);
    for (const auto& [y, count] : rows)
        EXPECT_GT(count, 1) << "a button alone at y " << y;
    EXPECT_EQ(enabled(), QZAllEnabledTypes);

    palette_.window().activateWindow();
    ASSERT_TRUE(getsKeyboard(&palette_.window()));
    button(QZSTLineSegment).setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(palette_.selectedType(), QZSTRay);
    QTest::keyClick(&button(QZSTArc), Qt::Key_Return);
    EXPECT_EQ(palette_.selectedType(), QZSTArc);
    auto* actions = QAccessible::queryAccessibleInterface(&button(QZSTCycle))->actionInterface();
    actions->doAction(QAccessibleActionInterface::toggleAction());
    actions->doAction(QAccessibleActionInterface::toggleAction()); // chosen, it stays so
    EXPECT_EQ(palette_.selectedType(), QZSTCycle);
    EXPECT_EQ(selected(), QZSTCycle);
    EXPECT_TRUE(button(QZSTCycle).isChecked());
}

TEST_F(Palette, GivesTheKeyboardBackToTheChartWhereItsShortcutsWork)
{
    QWidget chart;
    const QShortcut quit(QKeySequence(Qt::CTRL | Qt::Key_Q), &chart);
    int quits = 0;
    QObject::connect(&quit, &QShortcut::activated, &chart, [&quits] { ++quits; });
    chart.show();
    QZGlobalEnv::getShareInstance().setMainWindow(chart.windowHandle());
    palette_.window().addToWindowOf(chart);
    button(QZSTArc).setEnabled(false);
    int expected = 0;
    for (const QZShapeType type : {QZSTGannFan, QZSTGannFan, QZSTToolMagnet, QZSTToolEye, QZSTToolEye, QZSTToolDelete,
                                   QZSTRay, QZSTArc}) { // the last one is disabled
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        palette_.window().activateWindow();
        ASSERT_TRUE(getsKeyboard(&palette_.window()));
        if (type == QZSTArc) {
            QTest::mouseClick(palette_.window().windowHandle(), Qt::LeftButton, {}, button(type).geometry().center());
            palette_.window().activateWindow(); // a window manager that is late
            QCoreApplication::processEvents();
        } else {
            QTest::keyClick(&button(type), Qt::Key_Space);
        }
        EXPECT_TRUE(getsKeyboard(&chart));
        QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(quits, ++expected);
    }
    EXPECT_EQ(selected(), QZSTRay);
    EXPECT_EQ(delegate_.thumbnail, button(QZSTRay).images()[0]);
    EXPECT_EQ(delegate_.calls.join(u' '), QStringLiteral("QZSTGannFan hide show remove QZSTRay"));
}

TEST_F(Palette, TooltipsShowWhileTheChartHasTheKeyboard)
{
    /// Takes no tool window for active only because its application is, and shows tooltips at once.
    struct Style final : QProxyStyle {
        int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                      QStyleHintReturn* data) const override
        {
            const bool isChanged = hint == SH_Widget_ShareActivation || hint == SH_ToolTip_WakeUpDelay;
            return isChanged ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
        }
    };
    QApplication::setStyle(new Style);
    QWidget chart;
    chart.show();
    chart.activateWindow();
    ASSERT_TRUE(getsKeyboard(&chart));
    button(QZSTArc).setEnabled(false);
    for (const QZShapeType type : {QZSTRay, QZSTArc}) {
        const QZPaintControlButton& one = button(type);
        QTest::mouseMove(palette_.window().windowHandle(), one.geometry().center());
        EXPECT_TRUE(QTest::qWaitFor([&one] { return QToolTip::isVisible() && QToolTip::text() == one.toolTip(); }));
    }
    QToolTip::hideText();
    QApplication::setStyle(QStringLiteral("fusion"));
}

TEST_F(Palette, MasksEnableButtons)
{
    palette_.setEnableTypes(QZSTToolRangeStatistics | QZSTRay);
    EXPECT_EQ(enabled(), QZSTRay);
    palette_.setHidden(true);
    palette_.setEnableTypes(QZSTArc);
    EXPECT_EQ(enabled(), 0U) << "the eye itself is masked";
    button(QZSTArc).setEnabled(true);
    palette_.setEnableTypes(QZSTArc);
    EXPECT_EQ(enabled(), QZSTArc) << "the present mask again must change nothing";
}

TEST_F(Palette, TheEyeLeavesOnlyItselfUntilPressedAgain)
{
    constexpr std::uint64_t mask = QZAllEnabledTypes & ~QZSTArc;
    palette_.setEnableTypes(mask);
    click(QZSTToolMagnet);
    click(QZSTGannFan);
    click(QZSTToolEye);
    EXPECT_EQ(enabled(), QZSTToolEye);
    EXPECT_EQ(selected(), QZSTToolEye);
    EXPECT_EQ(palette_.selectedType(), QZShapeTypeNone);
    click(QZSTRay);
    click(QZSTToolEye);
    EXPECT_EQ(enabled(), mask);
    EXPECT_EQ(selected(), 0U);
    EXPECT_EQ(delegate_.calls.join(u' '), QStringLiteral("QZSTGannFan hide show"));
    // Deselected by the eye but still on: from here on the button shows the opposite of the flag.
    EXPECT_TRUE(palette_.isMagnet());
    click(QZSTToolMagnet);
    EXPECT_FALSE(palette_.isMagnet());
    EXPECT_EQ(selected(), QZSTToolMagnet);
}

TEST_F(Palette, AFinishedFigureReleasesItsTool)
{
    QZPaintGraph fan(QZSTGannFan);
    QZPaintGraph band(QZSTToolRangeStatistics);
    band.setEditing(false);
    click(QZSTGannFan);
    for (QZPaintGraph* still : {&fan, &band, static_cast<QZPaintGraph*>(nullptr)}) {
        QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, still);
        EXPECT_EQ(palette_.selectedType(), QZSTGannFan);
    }
    fan.setEditing(false);
    QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, &fan);
    EXPECT_EQ(palette_.selectedType(), QZShapeTypeNone);
    EXPECT_EQ(selected(), 0U);
}

TEST_F(Palette, ClosingReleasesTheToolAndKeepsTheFunctions)
{
    click(QZSTToolMagnet);
    click(QZSTGannFan);
    click(QZSTToolDelete);
    palette_.window().close();
    EXPECT_EQ(selected(), QZSTToolMagnet);
    EXPECT_TRUE(palette_.isMagnet());
    EXPECT_EQ(delegate_.calls.join(u' '), QStringLiteral("QZSTGannFan remove QZShapeTypeNone"));
    palette_.resetAllButtons(true);
    EXPECT_EQ(selected(), 0U);
}

TEST_F(Palette, AToolIsToldByItsBackgroundAFunctionByItsPicture)
{
    QZPaintControlButton& fan = button(QZSTGannFan);
    QTest::mouseMove(&fan);
    EXPECT_EQ(fan.backgroundColor(), themeColor("ControlButtonHoverColor"));
    fan.setEnabled(false);
    leaveButtons();
    EXPECT_EQ(fan.backgroundColor(), themeColor("PanelBackgroundColor")) << "left while disabled";
    QTest::mouseMove(&fan);
    EXPECT_EQ(fan.backgroundColor(), themeColor("PanelBackgroundColor")) << "entered while disabled";
    fan.setEnabled(true);
    click(QZSTGannFan);
    leaveButtons();
    EXPECT_EQ(fan.backgroundColor(), themeColor("ControlButtonSelectedColor"));
    EXPECT_EQ(fan.grab().toImage().pixelColor(2, 13), themeColor("ControlButtonSelectedColor"));
    EXPECT_EQ(fan.image(), fan.images()[1]);
    EXPECT_NE(fan.images()[0], fan.images()[1]);

    const auto shape = [this](QZShapeType type, std::size_t index) {
        return button(type).images().at(index).convertToFormat(QImage::Format_Alpha8);
    };
    for (const QZShapeType type : {QZSTToolMagnet, QZSTToolEye}) {
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        EXPECT_EQ(shape(type, 0), shape(type, 2));
        EXPECT_NE(shape(type, 1), shape(type, 2)) << "on and off differ under the pointer, in any colour";
    }
    QZPaintControlButton& magnet = button(QZSTToolMagnet);
    QTest::mouseMove(&magnet);
    EXPECT_EQ(magnet.image(), magnet.images()[2]);
    click(QZSTToolMagnet);
    EXPECT_EQ(magnet.image(), magnet.images()[1]);
    click(QZSTToolMagnet);
    EXPECT_EQ(magnet.image(), magnet.images()[2]) << "deselected under the pointer";
    leaveButtons();
    EXPECT_EQ(magnet.image(), magnet.images()[0]);
    EXPECT_FALSE(magnet.backgroundColor().isValid());

    Picture picture;
    for (const QZShapeType type : {QZSTArc, QZSTRay, QZSTToolMagnet, QZSTToolEye, QZSTToolDelete}) {
        button(type).setEnabled(type != QZSTRay);
        picture.add(button(type));
        QTest::mouseMove(&button(type));
        picture.add(button(type));
        click(type);
        picture.add(button(type));
    }
    palette_.window().activateWindow();
    ASSERT_TRUE(getsKeyboard(&palette_.window()));
    button(QZSTToolEye).setFocus();
    picture.add(button(QZSTToolEye));
    EXPECT_TRUE(picture.isLike(QStringLiteral("panels/buttons.png")));
}
