#include "model/QZPaintDefaults.h"
#include "platform/QZGetFixData.h"
#include "platform/QZHostNotifications.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QPainter>

#include <gtest/gtest.h>

TEST(ManagerView, RedrawsOnAThemeUntilItIsTakenOut)
{
    TestPane pane({.panes = 2});
    const auto layer = pane.view(1).paintLayer();
    const auto style = QZUIOverallStyleDidChangeNotification;
    pane.draw(QZSTHorizon, {{100, 100}}, 1);
    pane.paint();
    QZNotificationCenter::defaultCenter().post(style);
    EXPECT_TRUE(layer->needsDisplay());

    const std::unique_ptr<TestView> view(&pane.view(1));
    view->removeFromSuperview();
    layer->contents(view->size(), 1.0);
    QZNotificationCenter::defaultCenter().post(style);
    EXPECT_FALSE(layer->needsDisplay());
    EXPECT_EQ(layer->managerView(), nullptr);
    // What still holds the layer may go on using it.
    layer->mouseDown({100, 100});
    layer->mouseDragged({120, 120});
    layer->mouseUp({120, 120});
    EXPECT_EQ(layer->contents({20, 20}, 1.0).size(), QSize(20, 20));
}

TEST(ManagerView, ShowsTheRangeBandInOnePaneAtATime)
{
    TestPane pane({.panes = 2});
    const auto band = QZPaintRangeStatistics::sharedGraph();
    const auto show = [&pane](int i, int lastDay) {
        pane.view(i).displayRangeStatisticsGraphFromDate(20240010, 0, 20240000 + lastDay, 0);
    };
    show(0, 20);
    show(0, 30);
    EXPECT_EQ(pane.state(), "ToolRangeStatistics 100,0 300,0 | |");
    show(1, 20);
    EXPECT_EQ(band->layer(), pane.view(1).paintLayer());
    EXPECT_EQ(pane.state(), "ToolRangeStatistics 100,0 200,0 | ToolRangeStatistics 100,0 200,0 |")
        << "in the first until it is removed there";
    pane.view(0).removeRangeStatisticsGraph();
    EXPECT_EQ(pane.state(), "| ToolRangeStatistics 100,0 200,0 |");
    EXPECT_EQ(band->layer(), nullptr);
    pane.view(1).removeRangeStatisticsGraph();

    pane.draw(QZSTHorizon, {{300, 100}});
    show(0, 20);
    EXPECT_EQ(pane.click({150, 50}).state(), "active mouse Horizon 300,100 ToolRangeStatistics 100,0 200,0 current | |")
        << "without a strip: the band has no style";
    const NotificationSpy told(QZRangeStatisticsTimeChangedNotification);
    EXPECT_EQ(Gesture(pane).key(Qt::Key_Delete).state(),
              "active mouse Horizon 300,100 ToolRangeStatistics 100,0 200,0 | |")
        << "it is the host's";
    ASSERT_EQ(told.posts.size(), 1U);
    EXPECT_EQ(told.posts[0].object, &pane.layer());
    EXPECT_EQ(told.posts[0].userInfo, (QVariantMap{{QZRangeStatistics::timeTypeKey, 5U}}));
    pane.click({150, 50});
    auto host = QZNotificationCenter::defaultCenter().observe(
        QZRangeStatisticsTimeChangedNotification,
        [&pane](const QZNotification&) { pane.view().removeRangeStatisticsGraph(); });
    pane.click({192, 292}); // its close button
    host = {};
    show(0, 20);
    Gesture mouse(pane);
    mouse.press({150, 50}).move({151, 50});
    pane.view().removeRangeStatisticsGraph(); // in the middle of a drag
    mouse.release({151, 50});
    show(0, 20);
    EXPECT_EQ(pane.state(), "active mouse OpenHand Horizon 300,100 ToolRangeStatistics 100,0 200,0 | |")
        << "as any other";
    EXPECT_EQ(pane.click({300, 100}).state(),
              "active mouse Horizon 300,100 current ToolRangeStatistics 100,0 200,0 | | strip 90");
    pane.view().removeRangeStatisticsGraph();
    EXPECT_EQ(pane.state(), "active mouse Horizon 300,100 current | | strip 90") << "another figure stays";
}

TEST(ManagerView, ABareOneIsNeutral)
{
    QWidget window;
    window.resize(500, 400);
    auto bare = std::make_unique<QZPaintManagerView>(&window);
    const QZPaintManagerView& view = *bare;
    EXPECT_EQ(view.validateRect(), (QZRect{0, 370, 100, 30})) << "its frame in its parent";
    EXPECT_EQ(view.enableTypes(), 0x3ffffffffff);
    EXPECT_EQ(view.convertFromPoint({10, 20}).value().description(), QZPaintLogicAxis{}.description());
    EXPECT_EQ(view.convertFromLogicAxis({20240010, 0, 5.0}), QZPoint{});
    EXPECT_TRUE(view.canBeDraggedToLeft({1, 2}) && view.canBeDraggedToRight({1, 2}));
    EXPECT_EQ(view.convertXForMagnet(12.5, true), 12.5);
    EXPECT_EQ(view.convertPointForMagnet({10, 20}, 0), (QZPoint{10, 20}));
    EXPECT_EQ(view.getXPointWithLocation(12.0F, 1), 3.4028234663852886e38);
    QZRegressionCalcData regression{};
    QZBoxLineCalcData box{};
    EXPECT_FALSE(view.calcRegressionData(regression) || view.calcBoxLineData(box));
    const auto range = view.infomationForRetangle({1, 2}, {3, 4}, 5).value();
    EXPECT_EQ(std::tuple(range.count, range.varyScope, range.varyPrice, range.identify),
              std::tuple(0, 0.0F, QStringLiteral("0.0"), QStringLiteral("Unknow")));
    EXPECT_FALSE(view.isDragging());
    const auto layer = view.paintLayer();
    bare.reset();
    EXPECT_EQ(layer->managerView(), nullptr);
}

TEST(ManagerView, WhatTheHostChoseStaysWhenASplitViewIsMade)
{
    auto own = std::make_unique<QZPaintDefaults>();
    QZPaintDefaults::setCurrent(own.get());
    setFixDataFormatter([](double value, int option) { return QString::number(value + option); });
    const TestPane pane;
    EXPECT_EQ(&QZPaintDefaults::current(), own.get());
    EXPECT_EQ(QZGetFixData(2.5e6, 3), QStringLiteral("2.5e+06"));
    EXPECT_TRUE(setFixDataFormatter({}));
    EXPECT_EQ(QZGetFixData(2.5e6, 3), QStringLiteral("250.000万"));
    const void* gone = own.get();
    own.reset();
    EXPECT_NE(&QZPaintDefaults::current(), gone);
}

TEST(Overlay, ShowsFiguresAboveTheChartWithinTheValidArea)
{
    TestPane pane;
    QWidget chart(&pane.view());
    chart.setAttribute(Qt::WA_TransparentForMouseEvents);
    chart.setAutoFillBackground(true);
    chart.setPalette(QPalette(Qt::yellow));
    chart.resize(400, 300);
    chart.show(); // added and raised later than the figures' overlay, and yet below it
    chart.raise();
    const auto graph = pane.draw(QZSTHorizon, {{100, 100}});
    graph->setStrokeColor(Qt::blue);
    graph->setLineWidth(4);
    pane.view().setValidateRect({50, 0, 350, 300});

    const QImage picture = pane.paint();
    const auto at = [&picture](int x, int y) { return picture.pixelColor(x, 300 - y); };
    EXPECT_EQ(at(50, 100), QColor(Qt::blue));
    for (const QPoint aside : {QPoint(49, 100), QPoint(100, 100), QPoint(300, 110)}) // beyond the valid area, a handle
        EXPECT_EQ(at(aside.x(), aside.y()), QColor(Qt::yellow)) << aside.x() << ',' << aside.y();

    // A picture has the screen's pixels without the handle, and nothing of the figure that is being drawn.
    const auto pictured = [&pane] {
        QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::yellow);
        QPainter painter(&image);
        pane.view().drawGraphs(painter);
        EXPECT_FALSE(painter.hasClipping());
        return image.convertToFormat(QImage::Format_RGB32);
    };
    const QImage selected = pictured();
    EXPECT_EQ(selected.pixelColor(100, 200), QColor(Qt::blue));
    EXPECT_TRUE(graph->isSelected());
    pane.arm(QZSTRay);
    pane.click({200, 250});
    Gesture(pane).move({300, 280});
    EXPECT_EQ(pictured(), selected);
    pane.layer().cancelCurrentGraph();
    EXPECT_EQ(selected, pane.paint().convertToFormat(QImage::Format_RGB32));
    graph->setHidden(true);
    EXPECT_EQ(pictured().pixelColor(100, 200), QColor(Qt::yellow));
}
