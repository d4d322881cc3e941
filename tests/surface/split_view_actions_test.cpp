#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"
#include "platform/QZAlert.h"
#include "support/widgets/Gesture.h"
#include "tools/QZPaintMarks.h"

#include <QAbstractButton>

#include <array>
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
    void TearDown() override { palette.resetAllButtons(true); }

    static void press(QWidget& panel, const QString& name)
    {
        QTest::mouseClick(panel.findChild<QAbstractButton*>(name), Qt::LeftButton);
    }
    void pressPalette(QZShapeType type) { press(palette.window(), strQZShapeType(type)); }
    std::size_t count() { return panes.layer(0).graphs().count() + panes.layer(1).graphs().count(); }

    TestPane panes{{.panes = 2}};
    QZPaintControl& palette = QZPaintControl::sharedManager();
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
    EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    QZAlert::setRunner(previous);
}

TEST_F(SplitViewActions, TheEyeHidesAndShowsEveryPaneOfEveryWindow)
{
    TestPane other; // a second window, which the palette does not even serve
    const auto level = other.draw(QZSTHorizon, {{100, 200}});
    for (const bool hidden : {true, false}) {
        pressPalette(QZSTToolEye);
        for (const auto& each : {levels[0], levels[1], level})
            EXPECT_EQ(each->isHidden(), hidden);
        EXPECT_FALSE(panes.current(1) || other.current());
    }
}

TEST_F(SplitViewActions, AToolIsArmedWhereItIsAccepted)
{
    const auto& button = *palette.window().findChild<QZPaintControlButton*>(strQZShapeType(QZSTHorizon));
    ASSERT_FALSE(button.images().front().isNull());
    constexpr std::array types{QZSTHorizon, QZSTRay}; // what a pane accepts
    for (const auto& [first, second] : {std::pair(0, 0), std::pair(0, 1), std::pair(1, 1)}) {
        SCOPED_TRACE(std::to_string(first) + std::to_string(second));
        panes.view(0).types = types[static_cast<std::size_t>(first)];
        panes.view(1).types = types[static_cast<std::size_t>(second)];
        pressPalette(QZSTHorizon);
        EXPECT_EQ(panes.current(0) && panes.current(0)->thumbnail() == button.images().front(), first == 0);
        EXPECT_EQ(panes.current(1) && panes.current(1)->isEditing(), second == 0);
        EXPECT_EQ(strip.enabledConfigs(), first == 0 ? 26U : 64U);
        EXPECT_EQ(strip.window().isVisible(), first == 0);
        EXPECT_EQ(TestPane::isPaintEditing(), first == 0);
        palette.resetAllButtons(false);
    }
}

TEST_F(SplitViewActions, TheChosenToolGoesAlongWithTheActiveWindow)
{
    auto other = std::make_unique<TestPane>();
    other->split().setEnablePaintControl(true);
    pressPalette(QZSTRay);
    other->split().resetPiantConfigDelegate();
    EXPECT_FALSE(panes.current(0) || panes.current(1));
    ASSERT_TRUE(other->current());
    EXPECT_FALSE(other->current()->thumbnail().isNull());
    EXPECT_EQ(strip.window().chartWindow(), &other->split());
    EXPECT_EQ(strip.delegate(), &other->split());
    for (const bool isAgain : {false, true}) {
        pressPalette(QZSTRay);
        EXPECT_TRUE(TestPane::isPaintEditing()) << isAgain;
        other->click({100, 100});
        other->click({200, 150});
        EXPECT_EQ(other->layer().graphs().count(), isAgain ? 2U : 1U);
        EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    }
    pressPalette(QZSTRay);
    other.reset();
    EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    EXPECT_FALSE(TestPane::isPaintEditing() || strip.window().isVisible());
}

TEST_F(SplitViewActions, TheStripServesTheWindowThatItIsOver)
{
    TestPane other;
    other.draw(QZSTHorizon, {{100, 200}});
    panes.split().resetPiantConfigDelegate(); // its window becomes active
    panes.split().paintGraphConfigDidDelete(strip);
    EXPECT_TRUE(strip.window().isVisible()) << "over the other window";
    press(strip.window(), QStringLiteral("btnDelete"));
    EXPECT_EQ(other.layer().graphs().count(), 0U);
    EXPECT_FALSE(strip.window().isVisible());
    panes.split().resetPiantConfigDelegate();
    EXPECT_EQ(strip.delegate(), &panes.split());
}

TEST_F(SplitViewActions, TheStripServesTheActivePane)
{
    palette.window().show();
    palette.window().close();
    EXPECT_TRUE(levels[1]->isSelected()) << "nothing was armed";
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
    panes.split().setActiveView(nullptr);
    panes.split().paintGraphConfigStrokeColorDidChange(strip, Qt::red);
    EXPECT_EQ(panes.current(0)->strokeColor(), QColor(Qt::red)) << "of every pane, without an active one";
    EXPECT_EQ(panes.current(1)->strokeColor(), QColor(Qt::red));
    palette.window().show();
    palette.window().close();
    EXPECT_FALSE(panes.current(0) || panes.current(1)) << "closing the palette cancels what it armed";
}

TEST_F(SplitViewActions, TheEditorWorksOnTheNoteItWasOpenedFor)
{
    auto& editor = QZPaintTextConfigWC::sharedWC();
    auto& field = *editor.window().findChild<QZPaintTextField*>();
    const auto note = panes.draw(QZSTToolText, {{150, 100}});
    ASSERT_TRUE(editor.window().isVisible()) << "opened by placing the note";
    EXPECT_EQ(editor.text(), QStringLiteral("新建"));
    const auto corner = std::static_pointer_cast<QZPaintToolText>(note)->topLeftLocation();
    const QPoint inView(qRound(corner.x), qRound(panes.view().height() - corner.y - 1));
    EXPECT_EQ(editor.window().pos(), panes.view().mapToGlobal(inView));
    QTest::keyClicks(&field, QStringLiteral("top"));
    EXPECT_EQ(note->text(), QStringLiteral("top"));
    editor.setColor(Qt::blue);
    editor.selectedColor();
    EXPECT_EQ(note->strokeColor(), QColor(Qt::blue));
    EXPECT_EQ(strip.strokeColor(), QColor(Qt::blue)) << "the strip agrees";
    editor.setSize(24);
    panes.paint();
    editor.selectedSize();
    EXPECT_EQ(note->font().pixelSize(), 24);
    EXPECT_TRUE(panes.layer().needsDisplay());
    panes.click({100, 200});
    ASSERT_EQ(panes.current(), levels[0]);
    EXPECT_FALSE(editor.window().isVisible()) << "gone when another figure is selected";

    Gesture(panes).click({152, 100}).soon().click({152, 100});
    EXPECT_TRUE(editor.window().isVisible()) << "opened by a double click";
    EXPECT_EQ(editor.size(), 24);
    panes.click({300, 250});
    EXPECT_FALSE(editor.window().isVisible()) << "gone with the selection";

    panes.click({152, 100});
    EXPECT_FALSE(editor.window().isVisible()) << "a click selects";
    press(strip.window(), QStringLiteral("btnEdit"));
    EXPECT_TRUE(editor.window().isVisible()) << "opened by the strip";
    panes.click({100, 200});
    ASSERT_EQ(panes.current(), levels[0]);
    editor.setText(QStringLiteral("no note"));
    editor.setColor(QColor(18, 52, 86));
    panes.split().paintTextConfigTextDidChange(editor, editor.text());
    panes.split().paintTextConfigColorDidChange(editor, editor.color());
    EXPECT_NE(levels[0]->text(), QStringLiteral("no note"));
    EXPECT_NE(levels[0]->strokeColor(), QColor(18, 52, 86));
    editor.setText(QStringLiteral("新建"));
    editor.setSize(12);
}
