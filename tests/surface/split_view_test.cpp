#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QStyleHints>

#include <gtest/gtest.h>

TEST(SplitView, ThePaneThatIsPressedOrThatTheHostChooses)
{
    TestPane pane({.panes = 2});
    pane.arm(QZSTRay);
    Gesture mouse(pane);
    EXPECT_EQ(mouse.key(Qt::Key_Delete).state(), "Ray placing | Ray placing | strip 26 painting")
        << "no pane to delete from";
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
    QCoreApplication::sendEvent(&pane.split(), &escape);
    EXPECT_FALSE(escape.isAccepted()) << "the window hears of it too";
    EXPECT_EQ(pane.state(), "chosen | |") << "Escape goes to the first and leaves no strip";

    pane.view().setValidateRect({0, 99, 400, 200});
    pane.draw(QZSTHorizon, {{100, 100}});
    EXPECT_EQ(pane.state(), "active mouse Horizon 100,100 current | | strip 90");
    pane.click({200, 150});
    EXPECT_EQ(pane.click({200, 250}, 1).state(), "served Horizon 100,100 | chosen live mouse |");
    EXPECT_EQ(pane.click({200, 98}).state(), "active mouse Horizon 100,100 | |") << "outside the valid area";
    EXPECT_EQ(Gesture(pane, 0, Qt::RightButton).click({200, 99}).state(), "active mouse OpenHand Horizon 100,100 | |");
    EXPECT_EQ(mouse.click({200, 99}).state(), "active mouse Horizon 100,100 current | | strip 90");

    pane.split().setActiveView(&pane.view(1));
    EXPECT_EQ(pane.state(), "served mouse Horizon 100,100 | chosen live |");
    TestPane elsewhere;
    const LogSpy log;
    pane.split().setActiveView(&elsewhere.view());
    EXPECT_EQ(log.lines.size(), 1);
    EXPECT_EQ(elsewhere.state(), "|");
    pane.split().setActiveView(nullptr);
    EXPECT_EQ(pane.state(), "served mouse Horizon 100,100 | |");

    EXPECT_EQ(mouse.click({200, 99}).press({200, -1}).state(), "served Horizon 100,100 | |")
        << "a divider belongs to no pane";
    mouse.move({200, 50}).release({200, 50});
    EXPECT_LT(pane.view(0).height(), 280) << "and still moves";

    mouse.move({200, 99});
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(pane.split().windowHandle(), &leave);
    EXPECT_EQ(pane.state(), "served OpenHand Horizon 100,100 | |") << "the mouse is gone";
    QLabel label(&pane.split()); // below the panes
    label.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(mouse.click({200, 99}).move({200, pane.view().height() - label.y() - 1.0}).state(),
              "active Horizon 100,100 current | | strip 90")
        << "over a widget that is no pane";
    pane.view().hide();
    EXPECT_EQ(mouse.press({200, 99}).release({200, 99}).state(), "served OpenHand Horizon 100,100 | |")
        << "where a hidden pane was a moment ago";
}

TEST(SplitView, ADragMovesTheSelectedFigureOnly)
{
    TestPane pane;
    const auto line = pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}});
    pane.draw(QZSTHorizon, {{100, 250}});
    Gesture mouse(pane);
    Gesture right(pane, 0, Qt::RightButton);
    EXPECT_EQ(mouse.click({150, 125}).drag({150, 125}, {170, 115}).state(),
              "active mouse LineSegment 120,90 220,140 current Horizon 100,250 | strip 90");
    EXPECT_EQ(mouse.drag({220, 140}, {300, 40}).state(),
              "active mouse LineSegment 120,90 300,40 current Horizon 100,250 | strip 90");
    EXPECT_EQ(mouse.move({301, 41}).state(),
              "active mouse Cross LineSegment 120,90 300,40 current Horizon 100,250 | strip 90");
    EXPECT_EQ(mouse.move({300, 250}).state(),
              "active mouse OpenHand LineSegment 120,90 300,40 current Horizon 100,250 | strip 90");
    EXPECT_EQ(right.drag({210, 65}, {250, 65}).state(),
              "active mouse OpenHand LineSegment 120,90 300,40 current Horizon 100,250 | strip 90")
        << "the left button drags";
    mouse.press({210, 65}).move({220, 65});
    EXPECT_EQ(right.press({220, 65}).release({220, 65}).state(),
              "active mouse OpenHand LineSegment 130,90 310,40 current dragged Horizon 100,250 | strip 90")
        << "and its release ends it";
    pane.view().setValidateRect({0, 30, 400, 270});
    EXPECT_EQ(mouse.move({240, 29}).state(),
              "active mouse OpenHand LineSegment 130,90 310,40 current dragged Horizon 100,250 | strip 90")
        << "held at the edge of the valid area";
    QMouseEvent move(QEvent::MouseMove, {200, 100}, {200, 100}, Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&pane.split(), &move);
    EXPECT_EQ(pane.state(), "active mouse LineSegment 130,90 310,40 current Horizon 100,250 | strip 90")
        << "the release was lost";
    EXPECT_EQ(line->logicAxises().at(1).date, 20240031);
    EXPECT_EQ(mouse.release({240, 29}).press({129, 91}).move({309, 41}).move({200, 60}).release({200, 60}).state(),
              "active mouse LineSegment 200,60 310,40 current Horizon 100,250 | strip 90")
        << "over the other handle at once";
}

TEST(SplitView, FastClicksPlaceOnePointAndLeaveASelectionAlone)
{
    const auto afterFastClicks = [](QZPoint next, int lateBy) { // ms, after what is still fast
        TestPane pane;
        pane.draw(QZSTRay, {{100, 100}});
        Gesture mouse(pane);
        for (int count = 2; count < 6; ++count)
            EXPECT_EQ(mouse.soon().click({100, 100}).state(), "active mouse Ray 100,100 placing | strip 26 painting");
        mouse.soon();
        QTest::lastMouseTimestamp += lateBy;
        return mouse.click(next).state();
    };
    const int near = QGuiApplication::styleHints()->mouseDoubleClickDistance();
    EXPECT_EQ(afterFastClicks({100.0 + near, 100}, 0), "active mouse Ray 100,100 placing | strip 26 painting");
    EXPECT_EQ(afterFastClicks({100, 101.0 + near}, 0),
              "active mouse Ray 100,100 100," + std::to_string(101 + near) + " current | strip 90");
    EXPECT_EQ(afterFastClicks({100, 100}, QTest::mouseDoubleClickInterval),
              "active mouse Ray 100,100 100,100 current | strip 90");
    TestPane pane;
    pane.draw(QZSTHorizon, {{100, 200}});
    EXPECT_EQ(Gesture(pane).soon().click({100, 200}).state(), "active mouse Horizon 100,200 current | strip 90");
}

TEST(SplitView, APaneThatGoesTakesItsFigureAndTheStripAlong)
{
    enum Way { Deleted, TakenOut, WithItsWindow };
    const auto left = [](const std::vector<QZPoint>& clicks, Way way) {
        TestPane pane({.panes = 2});
        pane.draw(QZSTRay, clicks, 1);
        std::unique_ptr<TestView> view(way == WithItsWindow ? nullptr : &pane.view(1));
        if (way == WithItsWindow)
            pane.close();
        else if (way == TakenOut)
            view->setParent(nullptr);
        else
            view.reset();
        return pane.state();
    };
    const std::vector<QZPoint> none, one{{100, 100}}, both{{100, 100}, {200, 150}};
    EXPECT_EQ(left(both, Deleted), "|");
    EXPECT_EQ(left(both, TakenOut), "| Ray 100,100 200,150 |");
    EXPECT_EQ(left(both, WithItsWindow), "");
    EXPECT_EQ(left(none, Deleted), "Ray placing | strip 26 painting") << "armed, and so it stays in the other pane";
    EXPECT_EQ(left(one, Deleted), "Ray placing | strip 26 painting");
    EXPECT_EQ(left(one, TakenOut), "Ray placing | | strip 26 painting");
    EXPECT_EQ(left(one, WithItsWindow), "");
}

TEST(SplitView, AFigureInCreationIsTheOnlySelectedOne)
{
    TestPane pane({.panes = 2});
    const auto level = pane.draw(QZSTHorizon, {{100, 100}});
    pane.click({100, 100}, 1); // the level stays behind, out of sight
    pane.draw(QZSTRay, {{100, 200}});
    EXPECT_TRUE(pane.current()->isSelected());
    EXPECT_FALSE(level->isSelected());
}

TEST(SplitView, AWindowThatGoesWhileAFigureIsFinishedLeavesNoneInCreation)
{
    TestPane pane({.panes = 2});
    TestPane other;
    const auto observation = QZNotificationCenter::defaultCenter().observe(
        QZPaintSyncGraphTypeNotification, [&](const QZNotification&) { other.close(); });
    pane.draw(QZSTHorizon, {{100, 100}});
    EXPECT_FALSE(TestPane::isPaintEditing());
}

TEST(SplitView, AnObserverMayDeletePanesAndTheViewItself)
{
    struct Row {
        const char* name = nullptr;
        QLatin1StringView told;
        void (*act)(TestPane& pane) = nullptr;
    };
    static constexpr QZPoint inBand{150, 20}, aside{130, 20};
    const Row rows[] = {
        {"a press", QZPaintGraphFinishedEditingNotification, [](TestPane& pane) { Gesture(pane).press(inBand); }},
        {"a key", QZPaintGraphFinishedEditingNotification, [](TestPane& pane) { Gesture(pane).key(Qt::Key_Delete); }},
        {"a drag", QZRangeStatisticsTimeChangedNotification,
         [](TestPane& pane) { Gesture(pane).press(inBand).move(aside); }},
        {"delete all", QZPaintSyncGraphTypeNotification,
         [](TestPane& pane) { pane.split().removeAllGraphs(QZPaintControl::sharedManager()); }},
    };
    const auto before = QZAlert::setRunner([](const QZAlertRequest&) { return QZAlert::firstButton + 1; });
    constexpr int whole = 2;
    for (const Row& row : rows) {
        for (const int gone : {0, 1, whole}) {
            SCOPED_TRACE(std::string(row.name) + ", pane " + std::to_string(gone));
            TestPane pane({.panes = 2});
            pane.split().setActiveView(&pane.view());
            if (row.told == QZRangeStatisticsTimeChangedNotification)
                pane.view().displayRangeStatisticsGraphFromDate(20240010, 0, 20240020, 0);
            else
                pane.arm(QZSTHorizon);
            const QPointer<QWidget> victim(gone == whole ? static_cast<QWidget*>(&pane.split()) : &pane.view(gone));
            const auto observation = QZNotificationCenter::defaultCenter().observe(
                row.told, [&](const QZNotification&) { gone == whole ? pane.close() : delete victim.data(); });
            row.act(pane);
            EXPECT_EQ(victim, nullptr);
            QTest::mouseRelease(QGuiApplication::topLevelWindows().constFirst(), Qt::LeftButton);
            QZPaintRangeStatistics::sharedGraph()->setLayer(nullptr);
        }
    }
    QZAlert::setRunner(before);
}
