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

    static void press(QWidget& panel, const QString& name) { panel.findChild<QAbstractButton*>(name)->click(); }
    void pressPalette(QZShapeType type) { press(palette.window(), strQZShapeType(type)); }

    TestPane panes{{.panes = 2}};
    QZPaintControl& palette = QZPaintControl::sharedManager();
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    std::shared_ptr<QZPaintGraph> levels[2];
};

} // namespace

TEST_F(SplitViewActions, TheEyeServesEveryWindowAndDeleteAllAsksFirst)
{
    TestPane other; // a second window, which the palette does not even serve
    other.draw(QZSTHorizon, {{100, 200}});
    pressPalette(QZSTToolEye);
    EXPECT_EQ(panes.state() + other.state(),
              "Horizon 100,200 hidden | chosen mouse Horizon 100,200 hidden |active mouse Horizon 100,200 hidden |");
    pressPalette(QZSTToolEye);
    EXPECT_EQ(panes.state() + other.state(),
              "Horizon 100,200 | chosen mouse Horizon 100,200 |active mouse Horizon 100,200 |");

    panes.click({300, 200}, 1);
    int answer = 1000;
    QString asked;
    const auto previous = QZAlert::setRunner([&](const QZAlertRequest& request) {
        asked = request.message + request.buttons.join(u'/');
        return answer;
    });
    pressPalette(QZSTRay);
    pressPalette(QZSTToolDelete);
    EXPECT_EQ(asked, QStringLiteral("您要删除所有画线吗？取消/确定"));
    EXPECT_EQ(panes.state(),
              "Horizon 100,200 Ray placing | active mouse Horizon 100,200 Ray placing | strip 26 painting")
        << "the tool stays armed";
    answer = 1001;
    pressPalette(QZSTToolDelete);
    EXPECT_EQ(panes.state(), "| active mouse |");
    EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    QZAlert::setRunner(previous);
}

TEST_F(SplitViewActions, AToolIsArmedWhereItIsAccepted)
{
    const auto& button = *palette.window().findChild<QZPaintControlButton*>(strQZShapeType(QZSTHorizon));
    ASSERT_FALSE(button.images().front().isNull());
    const auto armed = [this, &button](QZShapeType first, QZShapeType second) {
        panes.view(0).types = first;
        panes.view(1).types = second;
        pressPalette(QZSTHorizon);
        EXPECT_TRUE(!panes.current(0) || panes.current(0)->thumbnail() == button.images().front());
        const std::string state = panes.state();
        EXPECT_TRUE(strip.window().isVisible() || strip.enabledConfigs() == 64U);
        palette.resetAllButtons(false);
        return state;
    };
    EXPECT_EQ(armed(QZSTHorizon, QZSTHorizon),
              "Horizon 100,200 Horizon placing | active mouse Horizon 100,200 Horizon placing | strip 26 painting");
    EXPECT_EQ(armed(QZSTHorizon, QZSTRay),
              "Horizon 100,200 Horizon placing | active mouse Horizon 100,200 | strip 26 painting");
    EXPECT_EQ(armed(QZSTRay, QZSTRay), "Horizon 100,200 | active mouse Horizon 100,200 |");
}

TEST_F(SplitViewActions, TheChosenToolGoesAlongWithTheActiveWindow)
{
    auto other = std::make_unique<TestPane>();
    other->split().setEnablePaintControl(true);
    pressPalette(QZSTRay);
    other->split().resetPiantConfigDelegate();
    EXPECT_EQ(panes.state(), "Horizon 100,200 | active mouse Horizon 100,200 | strip 26 painting");
    EXPECT_EQ(other->state(), "Ray placing | strip 26 painting");
    EXPECT_FALSE(other->current()->thumbnail().isNull());
    EXPECT_EQ(strip.window().chartWindow(), &other->split());
    EXPECT_EQ(strip.delegate(), &other->split());
    for (const char* state : {"active mouse Ray 100,100 200,150 current | strip 90",
                              "active mouse Ray 100,100 200,150 Ray 150,100 200,150 current | strip 90"}) {
        pressPalette(QZSTRay);
        EXPECT_TRUE(TestPane::isPaintEditing()) << state;
        other->click({other->layer().graphs().count() == 0 ? 100.0 : 150.0, 100});
        other->click({200, 150});
        EXPECT_EQ(other->state(), state);
        EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    }
    panes.split().resetPiantConfigDelegate(); // its window becomes active
    panes.split().paintGraphConfigDidDelete(strip);
    EXPECT_EQ(strip.delegate(), &other->split()) << "over the other window";
    press(strip.window(), QStringLiteral("btnDelete"));
    EXPECT_EQ(other->state(), "active mouse Ray 100,100 200,150 |");
    panes.split().resetPiantConfigDelegate();
    EXPECT_EQ(strip.delegate(), &panes.split());
    other->split().resetPiantConfigDelegate();
    pressPalette(QZSTRay);
    other.reset();
    EXPECT_EQ(palette.selectedType(), QZShapeTypeNone);
    EXPECT_FALSE(TestPane::isPaintEditing() || strip.window().isVisible());
}

TEST_F(SplitViewActions, TheStripServesTheActivePane)
{
    palette.window().show();
    palette.window().close();
    EXPECT_EQ(panes.state(), "Horizon 100,200 | active mouse Horizon 100,200 current | strip 90")
        << "nothing was armed";
    panes.split().paintGraphConfigStrokeColorDidChange(strip, Qt::blue);
    panes.split().paintGraphConfigFillColorDidChange(strip, Qt::green);
    panes.split().paintGraphConfigLineTypeDidChange(strip, 3);
    panes.split().paintGraphConfigLineWidthDidChange(strip, 2.9);
    panes.split().paintGraphConfigIsLockedDidChange(strip, true);
    EXPECT_EQ(std::tuple(levels[1]->strokeColor(), levels[1]->fillColor(), levels[1]->lineType(),
                         levels[1]->lineWidth(), levels[1]->isLocked()),
              std::tuple(QColor(Qt::blue), QColor(Qt::green), 3U, 2U, true));
    EXPECT_NE(levels[0]->strokeColor(), QColor(Qt::blue));
    press(strip.window(), QStringLiteral("btnDelete"));
    EXPECT_EQ(panes.state(), "Horizon 100,200 | active mouse |");
    // The next figure takes the style of the last one that was selected.
    strip.setLineWidth(4);
    pressPalette(QZSTRay);
    EXPECT_EQ(panes.current(0)->lineWidth(), 4U);
    panes.split().setActiveView(nullptr);
    panes.split().paintGraphConfigStrokeColorDidChange(strip, Qt::red);
    for (const int i : {0, 1})
        EXPECT_EQ(panes.current(i)->strokeColor(), QColor(Qt::red)) << "of every pane, without an active one";
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
