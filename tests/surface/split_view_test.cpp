#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZAlert.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QGuiApplication>
#include <QLabel>
#include <QStyleHints>

#include <gtest/gtest.h>

namespace {

using Points = std::vector<QZPoint>;

bool isStripVisible()
{
    return QZPaintGraphConfigWC::sharedWC().window().isVisible();
}

} // namespace

TEST(SplitView, RoutesToThePaneThatIsClicked)
{
    TestPane pane({.panes = 2});
    EXPECT_EQ(pane.split().activeView(), nullptr);
    const auto upper = pane.draw(QZSTHorizon, {{100, 100}}, 0);
    EXPECT_EQ(pane.split().activeView(), &pane.view(0));
    EXPECT_EQ(upper->points().at(0), (QZPoint{100, 100})) << "in the pane's own coordinates";
    EXPECT_EQ(QZPaintActiveManager::sharedManager().currentActiveLayer(), pane.view(0).paintLayer());

    pane.click({200, 250}, 1);
    EXPECT_EQ(pane.split().activeView(), &pane.view(1));
    EXPECT_FALSE(upper->isSelected());
    EXPECT_TRUE(pane.layer(1).isActive() && !pane.layer(0).isActive());
    EXPECT_TRUE(pane.layer(1).isMouseInside() && !pane.layer(0).isMouseInside());

    pane.view(0).setValidateRect({0, 99, 400, 200});
    pane.click({200, 98}, 0);
    EXPECT_EQ(pane.current(0), nullptr) << "outside the valid area";
    Gesture(pane, 0, Qt::RightButton).click({200, 99});
    EXPECT_EQ(pane.current(0), nullptr);
    pane.click({200, 99}, 0);
    EXPECT_EQ(pane.current(0), upper);
    EXPECT_TRUE(upper->isSelected());

    pane.view(0).hide();
    Gesture(pane, 0).press({200, 99}).release({200, 99});
    EXPECT_EQ(pane.split().activeView(), nullptr) << "where a hidden pane was a moment ago";
    EXPECT_EQ(pane.current(0), nullptr);
}

TEST(SplitView, AHostChoosesThePaneAsAPressDoes)
{
    TestPane pane({.panes = 2});
    const auto upper = pane.draw(QZSTHorizon, {{100, 100}}, 0);
    pane.split().setActiveView(&pane.view(1));
    EXPECT_EQ(pane.split().activeView(), &pane.view(1));
    EXPECT_TRUE(pane.layer(1).isActive() && !pane.layer(0).isActive());
    EXPECT_TRUE(!upper->isSelected() && !pane.current(0) && !isStripVisible());

    TestPane elsewhere;
    const LogSpy log;
    pane.split().setActiveView(&elsewhere.view());
    EXPECT_EQ(log.lines.size(), 1);
    EXPECT_EQ(pane.split().activeView(), &pane.view(1));
    EXPECT_FALSE(elsewhere.layer().isActive());
    pane.split().setActiveView(nullptr);
    EXPECT_EQ(pane.split().activeView(), nullptr);
    EXPECT_FALSE(pane.layer(1).isActive());
}

TEST(SplitView, ADividerBelongsToNoPaneAndStillMoves)
{
    TestPane pane({.panes = 2});
    const auto graph = pane.draw(QZSTHorizon, {{100, 100}}, 0);
    Gesture below(pane, 0);
    below.press({200, -1});
    EXPECT_EQ(pane.split().activeView(), nullptr);
    EXPECT_FALSE(pane.layer(0).isActive() || pane.layer(1).isActive());
    EXPECT_FALSE(graph->isSelected());
    below.move({200, 50}).release({200, 50});
    EXPECT_LT(pane.view(0).height(), 280);
}

TEST(SplitView, TheMouseLeavesAPane)
{
    TestPane pane;
    QLabel label(&pane.split()); // below the pane
    label.show();
    QCoreApplication::processEvents();
    Gesture mouse(pane);
    const auto goesOut = [&](auto leave) {
        mouse.move({200, 20});
        const bool wasInside = pane.layer().isMouseInside();
        leave();
        return wasInside && !pane.layer().isMouseInside();
    };
    EXPECT_TRUE(goesOut([&] { mouse.move({200, -1}); })) << "for the divider";
    EXPECT_TRUE(goesOut([&] { mouse.move({200, -50}); })) << "for a widget that is no pane";
    QEvent leave(QEvent::Leave);
    EXPECT_TRUE(goesOut([&] { QCoreApplication::sendEvent(pane.split().windowHandle(), &leave); })) << "for good";
}

TEST(SplitView, ADragMovesTheSelectedFigureOnly)
{
    TestPane pane({.panes = 2});
    const auto graph = pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}}, 0);
    const auto other = pane.draw(QZSTHorizon, {{100, 250}}, 0);
    Gesture mouse(pane, 0);
    Gesture right(pane, 0, Qt::RightButton);
    mouse.drag({150, 125}, {170, 115});
    EXPECT_EQ(graph->points(), (Points{{120, 90}, {220, 140}}));
    EXPECT_EQ(other->points(), (Points{{100, 250}}));
    EXPECT_FALSE(pane.view().isDragging());
    mouse.drag({220, 140}, {300, 40});
    EXPECT_EQ(graph->points(), (Points{{120, 90}, {300, 40}}));
    EXPECT_EQ(graph->logicAxises().at(1).date, 20240030);
    EXPECT_EQ(pane.view(0).height(), 300);
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::ArrowCursor);
    mouse.move({301, 41});
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::CrossCursor);
    mouse.move({300, 250});
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::OpenHandCursor);

    right.drag({210, 65}, {250, 65});
    EXPECT_EQ(graph->points(), (Points{{120, 90}, {300, 40}})) << "the left button drags";
    mouse.press({210, 65}).move({220, 65});
    right.press({220, 65}).release({220, 65});
    EXPECT_TRUE(pane.view().isDragging()) << "and its release ends it";
    pane.view(0).setValidateRect({0, 0, 230, 300});
    mouse.move({240, 65});
    EXPECT_EQ(graph->points(), (Points{{130, 90}, {310, 40}})) << "held at the edge of the valid area";
    QMouseEvent move(QEvent::MouseMove, {200, 100}, {200, 100}, Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&pane.split(), &move);
    EXPECT_FALSE(pane.view().isDragging()) << "the release was lost";
    EXPECT_EQ(graph->logicAxises().at(1).date, 20240031);
    mouse.release({240, 65});
}

TEST(SplitView, ADragTakesHoldWhereItIsPressed)
{
    TestPane pane;
    const auto graph = pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}});
    Gesture mouse(pane);
    mouse.press({199, 151}).move({102, 100}).move({260, 60}).release({260, 60});
    EXPECT_EQ(graph->points(), (Points{{100, 100}, {260, 60}})) << "over the other handle at once";

    pane.view().displayRangeStatisticsGraphFromDate(20240010, 0, 20240020, 0);
    const NotificationSpy told(QZRangeStatisticsTimeChangedNotification);
    mouse.press({150, 20}).move({130, 20});
    ASSERT_EQ(told.posts.size(), 1U);
    EXPECT_EQ(told.posts[0].userInfo[QZRangeStatistics::dragTypeKey], QZRangeStatistics::dragTypeToLeft);
    EXPECT_EQ(told.posts[0].userInfo[QZRangeStatistics::x1Key], 80.0);
    mouse.release({130, 20});
    pane.view().removeRangeStatisticsGraph();
}

TEST(SplitView, FastClicksPlaceOnePointAndLeaveASelectionAlone)
{
    const double near = QGuiApplication::styleHints()->mouseDoubleClickDistance();
    struct Row {
        const char* name = nullptr;
        QZPoint next;
        int lateBy = 0; // ms, after what is still fast
        bool places = false;
    };
    for (const Row& row : {Row{"near", {100 + near, 100}, 0, false}, Row{"far", {100, 101 + near}, 0, true},
                           Row{"late", {100, 100}, QTest::mouseDoubleClickInterval, true}}) {
        SCOPED_TRACE(row.name);
        TestPane pane;
        const auto graph = pane.draw(QZSTLineSegment, {{100, 100}});
        Gesture mouse(pane);
        for (int count = 2; count < 6; ++count) {
            mouse.soon().click({100, 100});
            EXPECT_EQ(graph->currentPoint(), 1) << count;
        }
        mouse.soon();
        QTest::lastMouseTimestamp += row.lateBy;
        mouse.click(row.next);
        EXPECT_NE(graph->isEditing(), row.places);
    }
    TestPane pane;
    const auto level = pane.draw(QZSTHorizon, {{100, 200}});
    Gesture(pane).soon().click({100, 200});
    EXPECT_EQ(pane.current(), level);
    EXPECT_TRUE(level->isSelected());
}

TEST(SplitView, EscapeWithoutAnActivePaneGoesToTheFirst)
{
    TestPane pane({.panes = 2});
    pane.arm(QZSTRay);
    Gesture(pane).key(Qt::Key_Delete);
    EXPECT_NE(pane.current(0), nullptr);
    Gesture(pane).key(Qt::Key_Escape);
    EXPECT_EQ(pane.split().activeView(), &pane.view(0));
    EXPECT_EQ(pane.current(0), nullptr);
}

TEST(SplitView, APaneThatGoesTakesItsFigureAndTheStripAlong)
{
    enum Way { Deleted, TakenOut, WithItsWindow };
    struct Row {
        const char* name;
        Points clicks;
        Way way;
        bool goesOn; // the tool stays armed in the other pane
    };
    const Points one{{100, 100}}, both{{100, 100}, {200, 150}};
    for (const Row& row : {Row{"selected, deleted", both, Deleted, false}, Row{"selected, out", both, TakenOut, false},
                           Row{"selected, all", both, WithItsWindow, false}, Row{"armed, deleted", {}, Deleted, true},
                           Row{"creating, deleted", one, Deleted, true}, Row{"creating, out", one, TakenOut, true},
                           Row{"creating, all", one, WithItsWindow, false}}) {
        SCOPED_TRACE(row.name);
        TestPane pane({.panes = 2});
        pane.draw(QZSTLineSegment, row.clicks, 1);
        EXPECT_TRUE(isStripVisible());
        if (row.way == WithItsWindow) {
            pane.close();
        } else {
            std::unique_ptr<TestView> view(&pane.view(1));
            if (row.way == TakenOut)
                view->setParent(nullptr);
            else
                view.reset();
            EXPECT_EQ(pane.split().activeView(), nullptr);
            EXPECT_TRUE(view == nullptr || !view->paintLayer()->currentGraph());
        }
        EXPECT_EQ(isStripVisible(), row.goesOn);
        EXPECT_EQ(TestPane::isPaintEditing(), row.goesOn);
        EXPECT_EQ(QZPaintActiveManager::sharedManager().currentActiveLayer(), nullptr);
    }
}

TEST(SplitView, AnObserverMayDeletePanesAndTheViewItself)
{
    struct Row {
        const char* name = nullptr;
        QLatin1StringView told;
        void (*act)(TestPane& pane) = nullptr;
    };
    const Row rows[] = {
        {"a press", QZPaintGraphFinishedEditingNotification,
         [](TestPane& pane) {
             pane.arm(QZSTHorizon);
             Gesture(pane).press({100, 100});
         }},
        {"a key", QZPaintGraphFinishedEditingNotification,
         [](TestPane& pane) {
             pane.split().setActiveView(&pane.view());
             Gesture(pane).key(Qt::Key_Delete);
         }},
        {"a drag", QZRangeStatisticsTimeChangedNotification,
         [](TestPane& pane) {
             pane.view().displayRangeStatisticsGraphFromDate(20240010, 0, 20240020, 0);
             Gesture(pane).press({150, 20}).move({130, 20});
         }},
        {"delete all", QZPaintSyncGraphTypeNotification,
         [](TestPane& pane) {
             pane.arm(QZSTHorizon);
             pane.split().removeAllGraphs(QZPaintControl::sharedManager());
         }},
    };
    const auto before = QZAlert::setRunner([](const QZAlertRequest&) { return QZAlert::firstButton + 1; });
    constexpr int whole = 2;
    for (const Row& row : rows) {
        for (const int gone : {0, 1, whole}) {
            SCOPED_TRACE(std::string(row.name) + ", pane " + std::to_string(gone));
            TestPane pane({.panes = 2});
            QPointer<QWidget> victim(&pane.split());
            if (gone != whole)
                victim = &pane.view(gone);
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
