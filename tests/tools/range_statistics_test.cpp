#include "support/Spies.h"
#include "support/ToolDrawing.h"
#include "tools/QZPaintRangeStatistics.h"

namespace {

using QZRangeStatistics::dragTypeKey;

/// The band from bar 10 (x = 100) to bar 20 (x = 200), selected, over a chart rectangle of height 200.
class RangeStatistics : public ToolDrawing {
protected:
    RangeStatistics()
    {
        chart.rect = {0, 10, 400, 200};
        band->setLayer(owner);
        show(10, 20);
        band->setSelected(true);
    }
    void TearDown() override
    {
        band->mouseUp({});
        band->setSelected(false);
        band->setLayer(nullptr);
    }

    void show(int from, int to) const
    {
        band->setLogicAxises({{TestChart::firstDate + from}, {TestChart::firstDate + to}});
        band->convertToKeyPoint();
    }

    std::shared_ptr<QZPaintRangeStatistics> band = QZPaintRangeStatistics::sharedGraph();
};

} // namespace

TEST_F(RangeStatistics, DrawsItselfEvenWhenHiddenButNotWithoutALayer)
{
    band->setHidden(true);
    EXPECT_EQ(drawn(*band), (Lines{"fill 100,10 100x200 #243f649c", "segment 100,10-100,210 w1 #3f649c dash 5,3",
                                   "segment 200,10-200,210 w1 #3f649c dash 5,3", "fill 95.5,105.5 9x9 #3f649c",
                                   "fill 195.5,105.5 9x9 #3f649c", "fill 187,197 10x10 #3f649c",
                                   "segment 188,198-196,206 w2 #ffffff", "segment 188,206-196,198 w2 #ffffff"}));
    band->setHidden(false);
    band->setLayer(nullptr);
    EXPECT_EQ(drawn(*band), Lines{});
    EXPECT_EQ(band->minDistanceFromPoint({150, 50}), 6) << "nor to hit";
    EXPECT_FALSE(band->isNearKeyPoint({100, 50}));
}

TEST_F(RangeStatistics, ComesBackFromOffTheChart)
{
    chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return unplaceablePoint; });
    show(10, 20);
    chart.fromAxis.answerWith([](const QZPaintLogicAxis& axis) { return QZPoint{axis.time * 1.0, 0}; });
    band->place({1, 50}, {1, 70});
    EXPECT_EQ(band->getRightPoint(), (QZPoint{70, 0}));
}

TEST_F(RangeStatistics, HitsAndCursors)
{
    const std::vector<std::pair<QZPoint, double>> distances{
        {{90, 50}, 10},  {{102, 50}, 2}, {{106, 50}, 0},   {{194, 50}, 0},
        {{195, 50}, -5}, {{207, 50}, 7}, {{150, 5000}, 0}, {{195, 200}, 0}, // within the close button
        {{197, 200}, -3}};
    for (const auto& [at, distance] : distances)
        EXPECT_DOUBLE_EQ(band->minDistanceFromPoint(at), distance) << at.x;
    EXPECT_FALSE(band->isNearKeyPoint({206, 50}));
    EXPECT_TRUE(band->isNearKeyPoint({205.5, 5000})) << "by x alone";
    EXPECT_EQ(owner->cursor, QZCursor::ResizeLeftRight);
    show(20, 20);
    EXPECT_TRUE(band->isNearKeyPoint({195, 50}));
    EXPECT_EQ(owner->cursor, QZCursor::ResizeLeft) << "no width";
    chart.fromAxis.answerWith([](const QZPaintLogicAxis& axis) { return QZPoint{axis.time * 1.0, 0}; });
    band->place({1, 200}, {1, 201});
    EXPECT_TRUE(band->isNearKeyPoint({195, 50}));
    EXPECT_EQ(owner->cursor, QZCursor::ResizeLeftRight) << "1 px is a width";
}

TEST_F(RangeStatistics, ReportsDragsAndItsCloseButton)
{
    const auto dragged = [](double x1, double x2, unsigned type) {
        return QVariantMap{{QStringLiteral("timeType"), 4U},
                           {QStringLiteral("x1"), x1},
                           {QStringLiteral("x2"), x2},
                           {QStringLiteral("dragType"), type}};
    };
    Points pixelByPixel;
    for (int x = 200; x >= 60; --x)
        pixelByPixel.push_back({1.0 * x, 50});
    // Where it is pressed and dragged, and the last report.
    using Row = std::tuple<const char*, QZPoint, Points, QVariantMap>;
    for (const auto& [name, down, drag, report] :
         {Row{"first edge", {100, 50}, {{100, 50}, {120, 50}}, dragged(120, 200, 0)},
          Row{"second edge past the first", {200, 50}, {{200, 50}, {60, 50}}, dragged(60, 100, 1)},
          Row{"second edge over the first, pixel by pixel", {200, 50}, pixelByPixel, dragged(60, 100, 1)},
          Row{"band to the left", {150, 50}, {{130, 60}}, dragged(80, 180, 2)},
          Row{"band to the right", {150, 50}, {{170, 50}}, dragged(120, 220, 3)},
          Row{"band only up", {150, 50}, {{150, 60}}, dragged(100, 200, 3)},
          Row{"close button", {190, 200}, {}, {{QStringLiteral("timeType"), 5U}}}}) {
        SCOPED_TRACE(name);
        show(10, 20);
        const NotificationSpy spy(QZRangeStatisticsTimeChangedNotification);
        band->setDragStartPoint(down);
        band->mouseDown(down);
        for (const QZPoint point : drag)
            band->mouseDragged(point);
        band->mouseUp({});
        ASSERT_EQ(spy.posts.size(), std::max<std::size_t>(1, drag.size()));
        for (const auto& post : spy.posts)
            EXPECT_EQ(post.userInfo.value(dragTypeKey), report.value(dragTypeKey)) << "the same point all the way";
        EXPECT_EQ(spy.posts.back().userInfo, report);
        EXPECT_EQ(spy.posts.back().object, band.get());
    }
}
