#include "app/bars/BarStatistics.h"
#include "app/bars/CivilDate.h"
#include "app/chart/ChartSplitView.h"
#include "app/chart/ChartWindow.h"
#include "app/chart/CustomPlot.h"
#include "app/demo/UserInput.h"
#include "model/QZPlaneGeometry.h"
#include "support/Contrast.h"
#include "surface/QZPaintLayer.h"

#include <QTest>
#include <QWindow>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Weekdays from 2020-01-01 on; closes run up and down between 90 and 110, volumes grow by one a bar.
BarReadResult market(int count, const char* name = "waves")
{
    std::vector<Bar> bars;
    for (std::int64_t day = dayNumber(20200101); static_cast<int>(bars.size()) < count; ++day) {
        if (weekdayOfDay(day) >= 5)
            continue;
        const auto index = static_cast<double>(bars.size());
        const double close = 100 + 10 * std::sin(index / 9);
        bars.push_back({dateOfDay(day), 0, close - 1, close + 2, close - 2, close, 1000 + index});
    }
    BarReadResult result;
    result.series = BarSeries(QString::fromLatin1(name), bars);
    return result;
}

class ChartTest : public ::testing::Test {
protected:
    ChartTest()
    {
        // A stock of its own, as its figures are kept.
        window.showBars(market(300, ::testing::UnitTest::GetInstance()->current_test_info()->name()));
        window.resize(1000, 700);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        QTest::mouseMove(window.windowHandle(), at({400, 300}));
    }

    /// A pane's point (px, y upwards) in the window.
    QPoint at(QZPoint point) const
    {
        return candles.mapTo(&window, QPointF(point.x, candles.height() - point.y)).toPoint();
    }
    QPoint at(int bar, double price) const { return at({candles.scale().xOf(bar), candles.scale().yOf(price)}); }

    void click(QPoint position) { QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, position); }
    /// Presses and moves there in `steps`; the button stays down.
    void grab(QPoint from, QPoint to, int steps = 2)
    {
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(window.windowHandle(), from + (to - from) * step / steps);
        QTest::qWait(0);
    }
    void drop(QPoint at) { QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, at); }
    void drag(QPoint from, QPoint to)
    {
        grab(from, to);
        drop(to);
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.windowHandle(), code, modifiers);
    }

    void drawSegment(int firstBar, int lastBar)
    {
        key(Qt::Key_1);
        click(at(firstBar, 100));
        click(at(lastBar, 105));
        ASSERT_EQ(candles.paintLayer()->graphs().count(), 1U);
    }
    std::shared_ptr<QZPaintGraph> figure() const { return candles.paintLayer()->graphs().snapshot()->front(); }

    ChartWindow window;
    ChartSplitView& chart = window.chart();
    ChartViewport& viewport = chart.viewport();
    const ChartPane& candles = *chart.panes()[0];
    const ChartPane& volumes = *chart.panes()[1];
};

} // namespace

TEST_F(ChartTest, ConvertsPointsOfThePastThePresentAndTheFutureThereAndBack)
{
    const TradingCalendar& calendar = candles.chartData()->calendar;
    for (const int bar : {-500, -1, 0, 150, 299, 300, 900}) {
        SCOPED_TRACE(bar);
        const QZPoint point{candles.scale().xOf(bar + 0.4), 123.4567};
        const auto axis = candles.convertFromPoint(point);
        ASSERT_TRUE(axis);
        EXPECT_EQ((BarTime{axis->date, axis->time}), calendar.at(bar));
        const QZPoint back = candles.convertFromLogicAxis(*axis);
        EXPECT_NEAR(back.x, candles.scale().xOf(bar), 1e-9);
        EXPECT_NEAR(back.y, point.y, 1e-9);
    }
}

TEST_F(ChartTest, SurvivesPointsThatAreNoNumbers)
{
    for (const ChartPane* pane : chart.panes()) {
        EXPECT_FALSE(pane->convertFromPoint({notANumber, 10}));
        EXPECT_FALSE(pane->canBeDraggedToLeft({notANumber, notANumber}));
        EXPECT_TRUE(std::isnan(pane->convertXForMagnet(notANumber, true)));
        EXPECT_EQ(pane->getXPointWithLocation(std::numeric_limits<float>::quiet_NaN(), 1), missingCoordinate);
        QZRegressionCalcData regression{.x1 = notANumber, .x2 = 500};
        EXPECT_FALSE(pane->calcRegressionData(regression));
        QZBoxLineCalcData box{.x1 = 10, .x2 = notANumber};
        EXPECT_FALSE(pane->calcBoxLineData(box));
        EXPECT_FALSE(pane->infomationForRetangle({notANumber, 1}, {2, 3}, 0));
        EXPECT_TRUE(std::isnan(pane->convertPointForMagnet({500, notANumber}, 0).y));
        EXPECT_TRUE(pane->convertFromPoint({std::numeric_limits<double>::infinity(), 1}));
    }
}

TEST_F(ChartTest, FindsBarsByTheirDistanceUntilFarBeyondWhatScrollingReaches)
{
    const PaneScale& scale = candles.scale();
    const auto location = static_cast<float>(scale.xOf(250.2));
    EXPECT_DOUBLE_EQ(candles.getXPointWithLocation(location, 7), scale.xOf(257));
    EXPECT_DOUBLE_EQ(candles.getXPointWithLocation(location, -260), scale.xOf(-10));
    EXPECT_EQ(candles.getXPointWithLocation(location, 100000), missingCoordinate);
    EXPECT_EQ(candles.getXPointWithLocation(location, std::numeric_limits<int>::min()), missingCoordinate);
    // A step on the way back from far left is no reason to stop.
    EXPECT_NE(candles.getXPointWithLocation(static_cast<float>(scale.xOf(-5000)), 10), missingCoordinate);
}

TEST_F(ChartTest, SnapsToBarsAndPrices)
{
    const PaneScale& scale = candles.scale();
    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(304.3), true), scale.xOf(304));
    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(304.3), false), scale.xOf(299));
    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(-9), false), scale.xOf(0));

    const double high = scale.yOf(candles.chartData()->series.at(250).high);
    const double x = scale.xOf(250.3);
    EXPECT_EQ(candles.convertPointForMagnet({x, high + 11}, 0), (QZPoint{scale.xOf(250), high}));
    EXPECT_EQ(candles.convertPointForMagnet({x, high + 13}, 0), (QZPoint{scale.xOf(250), high + 13}));
    EXPECT_EQ(candles.convertPointForMagnet({scale.xOf(302.3), high}, 0), (QZPoint{scale.xOf(302), high}));
}

TEST_F(ChartTest, AnswersStatisticsOfTheLoadedBarsBetweenTwoPoints)
{
    const PaneScale& scale = candles.scale();
    QZRegressionCalcData lines{.x1 = scale.xOf(280.2), .x2 = scale.xOf(310)};
    ASSERT_TRUE(candles.calcRegressionData(lines));
    EXPECT_DOUBLE_EQ(lines.x1, scale.xOf(280));
    EXPECT_DOUBLE_EQ(lines.x2, scale.xOf(299));
    const auto channel = regressionChannel(std::span(candles.chartData()->series.bars()).subspan(280));
    EXPECT_NEAR(scale.valueAt(lines.line1Y2), channel->atLast, 1e-9);

    // Volumes 1250 to 1259 count alike.
    QZBoxLineCalcData box{.x1 = volumes.scale().xOf(250), .x2 = volumes.scale().xOf(259)};
    ASSERT_TRUE(volumes.calcBoxLineData(box));
    EXPECT_NEAR(box.firstEdgeY, volumes.scale().yOf(1250), 1e-9);
    EXPECT_NEAR(box.secondEdgeY, volumes.scale().yOf(1259), 1e-9);
    EXPECT_EQ(box.count, 10);
    EXPECT_FLOAT_EQ(box.averageCost, 1254.5F);

    const auto range =
        candles.infomationForRetangle({scale.xOf(290), scale.yOf(100)}, {scale.xOf(280), scale.yOf(99.5)}, 0);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->count, -11);
    EXPECT_NEAR(range->varyScope, -0.5, 1e-5);
    EXPECT_EQ(range->varyPrice, QStringLiteral("-0.50"));
}

TEST_F(ChartTest, LeavesAThirdOfTheScreenFilledAtBothEnds)
{
    viewport.scrollBy(1e9);
    EXPECT_NEAR(299.5 - viewport.first(), viewport.span() / 3, 1e-9);
    viewport.scrollBy(-1e9);
    EXPECT_NEAR(viewport.last() + 0.5, viewport.span() / 3, 1e-9);
    viewport.scrollBy(notANumber);
    EXPECT_FALSE(std::isnan(viewport.first()));
}

// The last bars fill 185.5 to 305.5; the wheel is turned at 275.5, three quarters of the screen.
TEST_F(ChartTest, ZoomsAboutThePointerAndTheMiddleAndScrolls)
{
    UserInput user(window);
    const auto turn = [&](QPoint angleDelta, Qt::KeyboardModifiers modifiers = {}) {
        user.wheel(user.positionOf(candles, {candles.scale().xOf(275.5), 200}), angleDelta, modifiers);
    };
    struct Row {
        const char* name;
        std::function<void()> gesture;
        double first;
        double span;
    };
    for (const Row& row :
         {Row{"wheel away",
              [&] {
                  turn({0, 120});
              },
              275.5 - 75, 100},
          Row{"wheel near",
              [&] {
                  turn({0, -120});
              },
              275.5 - 108, 144},
          Row{"two notches at once",
              [&] {
                  turn({0, 240});
              },
              275.5 - 62.5, 120 / 1.44},
          Row{"Ctrl and wheel away",
              [&] {
                  turn({0, 120}, Qt::ControlModifier);
              },
              179.5, 120},
          Row{"sideways wheel, left",
              [&] {
                  turn({120, 60});
              },
              179.5, 120},
          Row{"sideways wheel, right",
              [&] {
                  turn({-120, 60});
              },
              191.5, 120},
          Row{"+", [&] { key(Qt::Key_Plus); }, 245.5 - 50, 100},
          Row{"= on a + key", [&] { key(Qt::Key_Equal); }, 245.5 - 50, 100},
          Row{"-", [&] { key(Qt::Key_Minus); }, 245.5 - 72, 144}, Row{"Left", [&] { key(Qt::Key_Left); }, 179.5, 120},
          Row{"Right", [&] { key(Qt::Key_Right); }, 191.5, 120},
          Row{"Shift and Left", [&] { key(Qt::Key_Left, Qt::ShiftModifier); }, 65.5, 120},
          Row{"Shift and Right, which stops", [&] { key(Qt::Key_Right, Qt::ShiftModifier); }, 259.5, 120},
          Row{"Home", [&] { key(Qt::Key_Home); }, -6.5, 120}}) {
        SCOPED_TRACE(row.name);
        viewport.reset(300);
        row.gesture();
        EXPECT_NEAR(viewport.first(), row.first, 1e-6);
        EXPECT_NEAR(viewport.span(), row.span, 1e-9);
    }
}

TEST_F(ChartTest, KeepsAFigureOnItsCandlesWhateverTheChartDoes)
{
    drawSegment(250, 303);
    const auto stored = figure()->logicAxises();
    const auto expectInPlace = [&](const char* after) {
        SCOPED_TRACE(after);
        QTest::qWait(0);
        for (std::size_t i = 0; i < 2; ++i) {
            const auto now = candles.convertFromPoint(figure()->points()[i]);
            ASSERT_TRUE(now);
            EXPECT_EQ(now->date, stored[i].date);
            EXPECT_NEAR(now->price, stored[i].price, 1e-9);
        }
    };
    EXPECT_EQ(stored[0].date, candles.chartData()->series.at(250).date);
    drag(at({500, 30}), at({700, 30}));
    expectInPlace("dragging the chart");
    EXPECT_LT(viewport.last(), 290);
    key(Qt::Key_Minus);
    key(Qt::Key_End);
    expectInPlace("zooming out");
    window.resize(800, 600);
    expectInPlace("a smaller window");
    BarReadResult shorter = market(300, window.windowTitle().section(u' ', 0, 0).toLatin1());
    const std::vector<Bar>& all = shorter.series.bars();
    shorter.series = BarSeries(shorter.series.name(), std::vector<Bar>(all.begin() + 260, all.end() - 10));
    window.showBars(shorter);
    expectInPlace("a shorter history");
    window.showBars(market(300, "another"));
    EXPECT_EQ(candles.paintLayer()->graphs().count(), 0U);
}

TEST_F(ChartTest, PansOnlyWhereNoFigureTakesThePress)
{
    drawSegment(240, 260);
    const double first = viewport.first();
    drag(at(250, 102.5), at(255, 104));
    EXPECT_EQ(viewport.first(), first);
    EXPECT_EQ(figure()->logicAxises()[0].date, candles.chartData()->series.at(245).date);

    drag(at({500, 30}), at({500 + 4 * candles.scale().barWidth(), 30}));
    EXPECT_LT(viewport.first(), first - 3);
}

// A drag at the mouse's full speed is a single move.
TEST_F(ChartTest, HoldsADraggedFigureAtTheEdgeBeyondWhichNoScreenRemains)
{
    struct Row {
        const char* name;
        Qt::Key start;
        double scrolled; // bars from the start
        int firstBar;    // of a segment of ten bars
        int moved;       // bars
        double expected; // index where its first point is drawn
    };
    for (const Row& row : {Row{"left edge, Home", Qt::Key_Home, 0, 20, -30, -6.5},
                           Row{"right edge, End", Qt::Key_End, 0, 270, 30, 305.5 - 10},
                           Row{"left edge, a screen before it", Qt::Key_Home, 47, 50, -14, 36},
                           Row{"left edge, less than a screen before it", Qt::Key_Home, 45, 50, -14, 38.5},
                           Row{"right edge, a screen after it", Qt::Key_End, -47, 240, 13, 253},
                           Row{"right edge, less than a screen after it", Qt::Key_End, -45, 240, 13, 250.5}}) {
        for (const int steps : {1, 20}) {
            SCOPED_TRACE(std::string(row.name) + ", steps: " + std::to_string(steps));
            key(row.start);
            viewport.scrollBy(row.scrolled);
            drawSegment(row.firstBar, row.firstBar + 10);
            const QPoint end = at(row.firstBar + 5 + row.moved, 101);
            grab(at(row.firstBar + 5, 102.5), end, steps);
            EXPECT_NEAR(candles.scale().indexAt(figure()->points()[0].x), row.expected, 0.1);
            EXPECT_LT(figure()->points()[0].y, candles.scale().yOf(99));
            drop(end);
            key(Qt::Key_Delete);
        }
    }
}

TEST_F(ChartTest, DoesNotPullAFigureBackThatLiesAcrossTheEdge)
{
    drawSegment(280, 304);
    viewport.zoom(0.8, 240);
    ASSERT_LT(viewport.last(), 300);
    for (const auto& [moved, firstBar] : {std::pair(5, 280), std::pair(-5, 275)}) {
        drag(at(285, 101), at(285 + moved, 101));
        EXPECT_EQ(figure()->logicAxises()[0].date, candles.chartData()->series.at(firstBar).date);
    }
}

TEST_F(ChartTest, HandlesAndToolBarFollowTheTheme)
{
    drawSegment(240, 260);
    const QColor light = figure()->keyPointColor();
    // A hovered tool is drawn on the button colour, any other on the window's.
    const auto toolText = [this](QPalette::ColorRole on) {
        return contrast(window.palette().color(QPalette::ButtonText), window.palette().color(on));
    };
    for (const bool isLight : {true, false}) {
        SCOPED_TRACE(isLight);
        EXPECT_EQ(figure()->keyPointColor() == light, isLight);
        EXPECT_GE(toolText(QPalette::Button), 4.5);
        EXPECT_GE(toolText(QPalette::Window), 4.5);
        key(Qt::Key_T);
    }
    EXPECT_EQ(figure()->keyPointColor(), light);
}
