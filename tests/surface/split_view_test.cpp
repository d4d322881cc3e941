#include "support/widgets/Gesture.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintSplitView.h"

#include <gtest/gtest.h>

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
    pane.click({200, 99}, 0);
    EXPECT_EQ(pane.current(0), upper);
    EXPECT_TRUE(upper->isSelected());
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

TEST(SplitView, ADragMovesTheSelectedFigureOnly)
{
    TestPane pane({.panes = 2});
    const auto graph = pane.draw(QZSTLineSegment, {{100, 100}, {200, 150}}, 0);
    const auto other = pane.draw(QZSTHorizon, {{100, 250}}, 0);
    Gesture mouse(pane, 0);
    mouse.drag({150, 125}, {170, 115});
    EXPECT_EQ(graph->points(), (std::vector<QZPoint>{{120, 90}, {220, 140}}));
    EXPECT_EQ(other->points(), (std::vector<QZPoint>{{100, 250}}));
    EXPECT_FALSE(pane.view().isDragging());
    mouse.drag({220, 140}, {300, 40});
    EXPECT_EQ(graph->points(), (std::vector<QZPoint>{{120, 90}, {300, 40}}));
    EXPECT_EQ(graph->logicAxises().at(1).date, 20240030);
    EXPECT_EQ(pane.view(0).height(), 300);
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::ArrowCursor);
    mouse.move({301, 41});
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::CrossCursor);
    mouse.move({300, 250});
    EXPECT_EQ(pane.view(0).cursor().shape(), Qt::OpenHandCursor);
}

TEST(SplitView, ADoubleClickPlacesOnePointAndLeavesASelectionAlone)
{
    TestPane pane;
    pane.arm(QZSTLineSegment);
    Gesture mouse(pane);
    mouse.doubleClick({100, 100});
    ASSERT_NE(pane.current(), nullptr);
    EXPECT_EQ(pane.current()->currentPoint(), 1);
    const auto graph = pane.draw(QZSTHorizon, {{100, 200}});
    mouse.doubleClick({300, 200});
    EXPECT_EQ(pane.current(), graph);
    EXPECT_TRUE(graph->isSelected());
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
