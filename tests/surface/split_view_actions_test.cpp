#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZAlert.h"
#include "support/widgets/Gesture.h"

#include <QAbstractButton>

#include <gtest/gtest.h>

namespace {

/// Two panes that the shared palette and strip serve, a level in each.
class SplitViewActions : public testing::Test {
protected:
    SplitViewActions()
    {
        panes.split().setEnablePaintControl(true);
        panes.split().setSupportPaint(true);
        for (int i = 0; i < 2; ++i)
            levels[i] = panes.draw(QZSTHorizon, {{100, 200}}, i);
    }
    void TearDown() override { QZPaintControl::sharedManager().resetAllButtons(true); }

    static void press(QWidget& panel, const QString& name)
    {
        QTest::mouseClick(panel.findChild<QAbstractButton*>(name), Qt::LeftButton);
    }
    static void pressPalette(QZShapeType type)
    {
        press(QZPaintControl::sharedManager().window(), strQZShapeType(type));
    }
    std::size_t count() { return panes.layer(0).graphs().count() + panes.layer(1).graphs().count(); }

    TestPane panes{{.panes = 2}};
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    std::shared_ptr<QZPaintGraph> levels[2];
};

} // namespace

TEST_F(SplitViewActions, DeleteAllAsksFirst)
{
    int answer = 1000;
    QString asked;
    const auto previous = QZAlert::setRunner([&](const QZAlertRequest& request) {
        asked = request.message + request.buttons.join(u'/');
        return answer;
    });
    pressPalette(QZSTRay);
    pressPalette(QZSTToolDelete);
    EXPECT_EQ(asked, QStringLiteral("您要删除所有画线吗？取消/确定"));
    EXPECT_EQ(count(), 2U);
    EXPECT_TRUE(panes.current(0) && panes.current(1)) << "the tool stays armed";
    answer = 1001;
    pressPalette(QZSTToolDelete);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(panes.current(0) || panes.current(1));
    EXPECT_EQ(QZPaintControl::sharedManager().selectedType(), QZShapeTypeNone);
    QZAlert::setRunner(previous);
}

TEST_F(SplitViewActions, TheEyeHidesAndShowsEveryPane)
{
    for (const bool hidden : {true, false}) {
        pressPalette(QZSTToolEye);
        EXPECT_EQ(levels[0]->isHidden(), hidden);
        EXPECT_EQ(levels[1]->isHidden(), hidden);
        EXPECT_EQ(panes.current(1), nullptr);
    }
}

TEST_F(SplitViewActions, TheStripServesTheActivePane)
{
    EXPECT_EQ(strip.enabledConfigs(), 26U + 64U);
    panes.split().paintGraphConfigStrokeColorDidChange(strip, Qt::blue);
    panes.split().paintGraphConfigFillColorDidChange(strip, Qt::green);
    panes.split().paintGraphConfigLineTypeDidChange(strip, 3);
    panes.split().paintGraphConfigLineWidthDidChange(strip, 2.9);
    panes.split().paintGraphConfigIsLockedDidChange(strip, true);
    EXPECT_EQ(levels[1]->strokeColor(), QColor(Qt::blue));
    EXPECT_EQ(levels[1]->fillColor(), QColor(Qt::green));
    EXPECT_EQ(levels[1]->lineType(), 3U);
    EXPECT_EQ(levels[1]->lineWidth(), 2U);
    EXPECT_TRUE(levels[1]->isLocked());
    EXPECT_NE(levels[0]->strokeColor(), QColor(Qt::blue));
    press(strip.window(), QStringLiteral("btnDelete"));
    EXPECT_EQ(count(), 1U);
    EXPECT_FALSE(strip.window().isVisible());
    // The next figure takes the style of the last one that was selected.
    strip.setLineWidth(4);
    pressPalette(QZSTRay);
    EXPECT_EQ(panes.current(0)->lineWidth(), 4U);
    QZPaintControl::sharedManager().window().show();
    QZPaintControl::sharedManager().window().close();
    EXPECT_FALSE(panes.current(0) || panes.current(1)) << "closing the palette cancels what it armed";
}
