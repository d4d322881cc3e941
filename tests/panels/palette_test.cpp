#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

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
    for (const auto* one : palette_.window().findChildren<QZPaintControlButton*>()) {
        SCOPED_TRACE(one->objectName().toStdString());
        names += one->objectName();
        tips += one->toolTip();
        EXPECT_FALSE(one->toolTip().isEmpty() || one->accessibleName().isEmpty());
        EXPECT_EQ(one->focusPolicy(), Qt::TabFocus);
    }
    EXPECT_EQ(names.size(), 42);
    for (int bit = 0; bit < 42; ++bit)
        EXPECT_EQ(names.count(strQZShapeType(std::int64_t(1) << bit)), 1) << bit;
    EXPECT_EQ(tips.removeDuplicates(), 0);
    EXPECT_EQ(enabled(), QZAllEnabledTypes);

    palette_.window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&palette_.window()));
    button(QZSTLineSegment).setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(palette_.selectedType(), QZSTRay);
}

TEST_F(Palette, AClickChoosesAToolAndGivesTheMainWindowTheKeyboard)
{
    QWindow mainWindow;
    mainWindow.show();
    QZGlobalEnv::getShareInstance().setMainWindow(&mainWindow);
    for (int count = 0; count < 2; ++count) {
        palette_.window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&palette_.window()));
        click(QZSTGannFan);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&mainWindow));
        EXPECT_EQ(selected(), QZSTGannFan);
    }
    EXPECT_EQ(delegate_.thumbnail, button(QZSTGannFan).images()[0]);
    click(QZSTRay);
    EXPECT_EQ(delegate_.calls.join(u' '), QStringLiteral("QZSTGannFan QZSTRay"));
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
    EXPECT_EQ(fan.image(), fan.images()[1]);
    EXPECT_NE(fan.images()[0], fan.images()[1]);

    QZPaintControlButton& magnet = button(QZSTToolMagnet);
    ASSERT_EQ(magnet.images().size(), 3U);
    QTest::mouseMove(&magnet);
    EXPECT_EQ(magnet.image(), magnet.images()[2]);
    click(QZSTToolMagnet);
    EXPECT_EQ(magnet.image(), magnet.images()[1]);
    click(QZSTToolMagnet);
    EXPECT_EQ(magnet.image(), magnet.images()[2]) << "deselected under the pointer";
    leaveButtons();
    EXPECT_EQ(magnet.image(), magnet.images()[0]);
    EXPECT_FALSE(magnet.backgroundColor().isValid());
}
