#include "model/QZPaintNotifications.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "support/RecordingContext.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "support/widgets/Picture.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintToolTable.h"

#include <functional>
#include <gtest/gtest.h>

TEST(PaintLayer, AClickTakesTheNearestFigureWithinTheRadius)
{
    TestPane pane;
    const auto low = pane.draw(QZSTHorizon, {{100, 100}});
    const auto high = pane.draw(QZSTHorizon, {{100, 112}});
    EXPECT_EQ(pane.graphAt({200, 105.9}), low);
    EXPECT_EQ(pane.graphAt({200, 106.1}), high);
    EXPECT_EQ(pane.click({300, 103}).state(), "active mouse Horizon 100,100 current Horizon 100,112 | strip 90");
    EXPECT_EQ(pane.click({300, 106}).state(), "active mouse Horizon 100,100 Horizon 100,112 |")
        << "on the radius of both is near neither";
    pane.draw(QZSTHorizon, {{100, 104}});
    EXPECT_EQ(pane.graphAt({200, 102}), low) << "of equally near ones the first";
}

TEST(PaintLayer, Keys)
{
    TestPane pane;
    Gesture mouse(pane);
    const std::vector<QZPoint> one{{100, 100}}, both{{100, 100}, {200, 150}};
    const auto graph = pane.draw(QZSTRay, one);
    const NotificationSpy finished(QZPaintGraphFinishedEditingNotification);
    EXPECT_EQ(mouse.key(Qt::Key_Escape).state(), "active mouse |");
    EXPECT_FALSE(graph->isEditing() || graph->isSelected());
    pane.draw(QZSTRay, one);
    EXPECT_EQ(mouse.key(Qt::Key_Delete).state(), "active mouse |");
    EXPECT_EQ(finished.posts.size(), 2U);
    pane.draw(QZSTRay, both);
    EXPECT_EQ(finished.posts.size(), 3U);
    EXPECT_EQ(mouse.key(Qt::Key_Escape).key(Qt::Key_A).state(), "active mouse Ray 100,100 200,150 current | strip 90");
    EXPECT_EQ(mouse.key(Qt::Key_Delete).state(), "active mouse |");
    EXPECT_EQ(finished.posts.size(), 4U);
    pane.draw(QZSTRay, both);
    EXPECT_EQ(mouse.key(Qt::Key_Backspace).state(), "active mouse |");
}

TEST(PaintLayer, WhatIsMeasuredFollowsTheChartBeforeItsFrame)
{
    TestPane pane;
    const auto graph = pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}});
    const auto hidden = pane.draw(QZSTHorizon, {{100, 250}});
    hidden->setHidden(true);
    pane.split().setUpdatesEnabled(false); // no frame from here on
    const auto scrollTo = [&pane](double scroll) {
        pane.chart().scroll = scroll;
        pane.view().displayPaintLayer();
    };
    Gesture mouse(pane);
    scrollTo(100);
    const int calls = pane.chart().fromAxis.calls();
    EXPECT_EQ(pane.graphAt({250, 125}), graph);
    EXPECT_EQ(pane.graphAt({150, 125}), nullptr);
    EXPECT_EQ(pane.chart().fromAxis.calls(), calls + 2) << "two points, once";
    EXPECT_EQ(hidden->points().at(0), (QZPoint{100, 250})) << "what is not drawn is not asked after";

    scrollTo(-50);
    mouse.move({100, 125});
    EXPECT_EQ(pane.view().cursor().shape(), Qt::OpenHandCursor);
    scrollTo(30);
    mouse.click({180, 125});
    EXPECT_EQ(pane.current(), graph);
    mouse.press({230, 150}).move({231, 150});
    scrollTo(50); // bars come in during the drag
    mouse.move({280, 60});
    scrollTo(60);
    mouse.release({280, 60});
    EXPECT_EQ(graph->logicAxises().at(0).date, 20240010) << "the other end stays on its bar";

    pane.draw(QZSTRay, {{100, 100}});
    scrollTo(80);
    pane.click({300, 100});
    EXPECT_EQ(pane.layer().graphs().snapshot()->back()->logicAxises().at(0).date, 20240004);
}

TEST(PaintLayer, OnlyTheLatest300FiguresAreDrawn)
{
    TestPane pane;
    for (int i = 0; i <= 300; ++i) {
        const auto graph = pane.layer().allocGraphWithType(QZSTHorizon);
        graph->mouseDown({100, i + 0.5});
        pane.layer().graphs().add(graph);
    }
    RecordingContext context;
    pane.layer().drawInContext(context);
    EXPECT_EQ(context.count("segment"), 300);
    EXPECT_TRUE(context.lines.front().starts_with("segment 0,1.5-400,1.5")) << context.lines.front();
    EXPECT_EQ(pane.layer().graphs().count(), 301U);
}

TEST(PaintLayer, FinishingInOnePaneEndsWhatOthersWereDoing)
{
    TestPane pane({.panes = 2});
    pane.arm(QZSTRay);
    EXPECT_EQ(pane.click({100, 100}, 0).state(), "active mouse Ray 100,100 placing | Ray placing | strip 26 painting");
    EXPECT_EQ(pane.click({100, 100}, 1).state(), "Ray placing | active mouse Ray 100,100 placing | strip 26 painting")
        << "the other starts over";
    EXPECT_EQ(pane.click({200, 150}, 1).state(), "| active mouse Ray 100,100 200,150 current | strip 90");
    pane.draw(QZSTHorizon, {{100, 50}}, 0);
    EXPECT_EQ(pane.click({150, 125}, 1).state(), "Horizon 100,50 | active mouse Ray 100,100 200,150 current | strip 90")
        << "a selection in one pane only";

    EXPECT_EQ(pane.layer(1).allocGraphWithType(QZSTToolRangeStatistics), nullptr);
}

TEST(PaintLayer, RedrawsOnlyWhenSomethingChanged)
{
    TestPane pane;
    pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}});
    pane.split().setUpdatesEnabled(false); // the test paints
    Gesture mouse(pane);
    mouse.move({10, 10});
    const auto redraws = [&pane](auto act) {
        pane.layer().contents(pane.view().size(), 1.0);
        EXPECT_FALSE(pane.layer().needsDisplay());
        act();
        return pane.layer().needsDisplay();
    };
    const auto told = [] { QZNotificationCenter::defaultCenter().post(QZPaintGraphFinishedEditingNotification); };
    EXPECT_FALSE(redraws([&] { mouse.move({150, 125}).move({200, 150}); })) << "over the figure and its handle";
    EXPECT_FALSE(redraws([&] { pane.layer().setMouseInside(true); })) << "still inside";
    EXPECT_TRUE(redraws([&] { pane.layer().setMouseInside(false); }));
    EXPECT_TRUE(redraws([&] { mouse.drag({150, 125}, {160, 125}); }));
    EXPECT_FALSE(redraws([&] { pane.view().setValidateRect({0, 0, 400, 300}); })) << "the same";
    EXPECT_TRUE(redraws([&] { pane.view().setValidateRect({0, 0, 300, 300}); }));
    EXPECT_TRUE(redraws([&] { pane.arm(QZSTRay); }));
    EXPECT_TRUE(redraws([&] { mouse.move({50, 60}); })) << "the first point follows the mouse";
    EXPECT_TRUE(redraws(told)) << "another pane finishes a figure";
    EXPECT_TRUE(redraws([&] { pane.layer().setActive(false); }));
    EXPECT_FALSE(redraws([&] { pane.layer().setActive(false); })) << "not active already";
    EXPECT_FALSE(redraws([&] { pane.layer().setActive(true); }));
    EXPECT_TRUE(redraws([&] { mouse.key(Qt::Key_Delete); })) << "without a figure";
    EXPECT_TRUE(redraws([&] { pane.split().resize(390, 300); }));
    EXPECT_TRUE(redraws([&] { pane.view().displayRangeStatisticsGraphFromDate(20240010, 0, 20240020, 0); }));
    EXPECT_TRUE(redraws([&] { pane.view().removeRangeStatisticsGraph(); }));
    const auto picture = [&pane](double ratio) { return pane.layer().contents({40, 30}, ratio); };
    const auto before = picture(1.0).cacheKey();
    EXPECT_EQ(picture(1.0).cacheKey(), before);
    EXPECT_EQ(picture(2.0).size(), QSize(80, 60));
    EXPECT_EQ(pane.layer().contents({80, 60}, 1.0).devicePixelRatio(), 1.0);
}

TEST(PaintLayer, WhatChangesDuringADragShowsInItsNextFrame)
{
    struct Drag {
        TestPane pane;
        std::shared_ptr<QZPaintGraph> under = pane.draw(QZSTHorizon, {{100, 100}});
        std::shared_ptr<QZPaintGraph> graph = pane.draw(QZSTLineSegment, {{100, 60}, {200, 150}});
        std::shared_ptr<QZPaintGraph> over = pane.draw(QZSTToolText, {{150, 105}});
        void scroll()
        {
            pane.chart().scroll = 50;
            pane.view().displayPaintLayer();
        }
    };
    struct Row {
        const char* name;
        std::function<void(Drag&)> act;
    };
    const std::vector<Row> rows{
        {"scroll", [](Drag& drag) { drag.scroll(); }},
        {"scroll by a hook of the drag itself",
         [](Drag& drag) { drag.pane.chart().mayGoRight.answerWith([&drag](QZPoint) { return drag.scroll(), true; }); }},
        {"theme",
         [](Drag& drag) {
             drag.pane.chart().scroll = 50;
             drag.pane.view().appSkinStyleHasChanged();
         }},
        {"chart area",
         [](Drag& drag) {
             drag.pane.view().setValidateRect({0, 0, 180, 300});
         }},
        {"size", [](Drag& drag) { drag.pane.split().resize(390, 280); }},
        {"style", [](Drag& drag) { drag.over->setStrokeColor(Qt::blue); }},
        {"hidden", [](Drag& drag) { drag.under->setHidden(true); }},
        {"font", [](Drag& drag) { drag.over->setFont(QFont(QString(), 40)); }},
        {"place",
         [](Drag& drag) {
             drag.under->setLogicAxises({*drag.pane.chart().fromPoint(QZPoint{90, 40})});
         }},
        {"selected", [](Drag& drag) { drag.over->setSelected(true); }},
        {"removed", [](Drag& drag) { drag.pane.layer().graphs().remove(drag.over.get()); }},
        {"added", [](Drag& drag) {
             const auto added = drag.pane.layer().allocGraphWithType(QZSTHorizon);
             drag.pane.layer().graphs().add(added);
             added->mouseDown({0, 200});
         }}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Drag drag;
        TestPane& pane = drag.pane;
        pane.split().setUpdatesEnabled(false); // the test paints
        pane.layer().setCurrentGraph(drag.graph);
        drag.graph->setSelected(true);
        drag.graph->setDragStartPoint({});
        const auto frameAt = [&pane](double x) {
            pane.layer().mouseDragged({x, 0});
            return pane.layer().contents(pane.view().size(), 1.0);
        };
        frameAt(1);
        const QImage before = frameAt(2);
        row.act(drag);
        const QImage after = frameAt(2);
        EXPECT_TRUE(after.size() != before.size() || Picture::farthest(after, before) > 9);
        frameAt(1);
        const QImage later = frameAt(2);
        pane.view().displayPaintLayer();
        const QImage whole = frameAt(2);
        EXPECT_LE(std::max(Picture::farthest(after, whole), Picture::farthest(later, whole)), 2);
    }
}

TEST(PaintLayer, OutsideASplitViewTheStripStillShowsTheCurrentFigure)
{
    TestView view;
    QZPaintLayer& layer = *view.paintLayer();
    layer.setActive(true);
    const auto graph = layer.allocGraphWithType(QZSTHorizon);
    layer.setCurrentGraph(graph);
    layer.mouseDown({100, 100});
    QZPaintActiveManager::sharedManager().setCurrentActiveLayer(nullptr);
    graph->setStrokeColor(Qt::red);
    graph->setFillColor(Qt::green);
    graph->setLineType(2);
    graph->setLineWidth(3);
    graph->setLocked(true);
    layer.setActive(true);
    layer.mouseDown({300, 100});
    const QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    EXPECT_EQ(std::tuple(strip.strokeColor(), strip.fillColor(), strip.lineType(), strip.lineWidth(), strip.isLocked(),
                         strip.enabledConfigs()),
              std::tuple(QColor(Qt::red), QColor(Qt::white), 2U, 3.0, true, 90U))
        << "the fill is never the figure's own";
    EXPECT_TRUE(layer.currentGraph() == graph && !graph->isSelected()) << "it is no split view's active pane";
    EXPECT_FALSE(QZPaintActiveManager::sharedManager().currentActiveLayer() || layer.closeConfigWindows());
}

TEST(PaintLayer, ActivationHidesTheStripUnlessItIsOfUse)
{
    const auto staysOpen = [](QZShapeType chosen, std::int64_t accepted, bool isArmed) {
        TestPane pane;
        pane.draw(QZSTHorizon, {{100, 100}});
        pane.layer().setActive(false);
        EXPECT_EQ(pane.current(), nullptr);
        QZPaintControl& palette = QZPaintControl::sharedManager();
        if (chosen != QZShapeTypeNone)
            palette.window().findChild<QAbstractButton*>(strQZShapeType(chosen))->click();
        pane.view().types = accepted;
        if (isArmed)
            pane.arm(chosen);
        QZPanelWindow& strip = QZPaintGraphConfigWC::sharedWC().window();
        strip.addToWindowOf(pane.view());
        pane.layer().setActive(true);
        palette.resetAllButtons(true);
        return strip.isVisible();
    };
    EXPECT_FALSE(staysOpen(QZShapeTypeNone, 0, false)) << "no tool";
    EXPECT_FALSE(staysOpen(QZSTRay, QZSTRay | QZSTHorizon, false)) << "a tool that the pane takes";
    EXPECT_TRUE(staysOpen(QZSTRay, QZSTHorizon, false)) << "a tool for other panes";
    EXPECT_TRUE(staysOpen(QZSTRay, QZSTRay, true)) << "a figure in creation";
}
