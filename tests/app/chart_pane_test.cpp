#include "ChartFixture.h"
#include "app/chart/ChartPalette.h"
#include "app/chart/CustomPlot.h"
#include "model/QZPlaneGeometry.h"
#include "support/Contrast.h"

#include <QAbstractButton>
#include <QLabel>
#include <QStatusBar>
#include <QWindow>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST_F(ChartTest, ConvertsPointsOfThePastThePresentAndTheFutureThereAndBack)
{
    const TradingCalendar& calendar = candles.chartData()->calendar;
    for (const int bar : {-500, -1, 0, 150, 299, 300, 900}) {
        SCOPED_TRACE(bar);
        const QZPoint point{scale.xOf(bar + 0.4), 123.4567};
        const auto axis = candles.convertFromPoint(point);
        ASSERT_TRUE(axis);
        EXPECT_EQ((BarTime{axis->date, axis->time}), calendar.at(bar));
        const QZPoint back = candles.convertFromLogicAxis(*axis);
        EXPECT_NEAR(back.x, scale.xOf(bar), 1e-9);
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

TEST_F(ChartTest, FindsBarsFarBeyondWhatScrollingReachesAndSnapsToThem)
{
    const auto location = static_cast<float>(scale.xOf(250.2));
    EXPECT_DOUBLE_EQ(candles.getXPointWithLocation(location, 7), scale.xOf(257));
    EXPECT_DOUBLE_EQ(candles.getXPointWithLocation(location, -260), scale.xOf(-10));
    EXPECT_EQ(candles.getXPointWithLocation(location, 100000), missingCoordinate);
    EXPECT_EQ(candles.getXPointWithLocation(location, std::numeric_limits<int>::min()), missingCoordinate);
    // A step on the way back from far left is no reason to stop.
    EXPECT_NE(candles.getXPointWithLocation(static_cast<float>(scale.xOf(-5000)), 10), missingCoordinate);

    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(304.3), true), scale.xOf(304));
    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(304.3), false), scale.xOf(299));
    EXPECT_DOUBLE_EQ(candles.convertXForMagnet(scale.xOf(-9), false), scale.xOf(0));

    const double high = scale.yOf(bars()[250].high);
    const double x = scale.xOf(250.3);
    EXPECT_EQ(candles.convertPointForMagnet({x, high + 11}, 0), (QZPoint{scale.xOf(250), high}));
    EXPECT_EQ(candles.convertPointForMagnet({x, high + 13}, 0), (QZPoint{scale.xOf(250), high + 13}));
    EXPECT_EQ(candles.convertPointForMagnet({scale.xOf(302.3), high}, 0), (QZPoint{scale.xOf(302), high}));
}

TEST_F(ChartTest, TellsWhatTheChosenToolWaitsFor)
{
    const auto told = [this] { return window.statusBar()->findChild<QLabel*>()->text().toStdString(); };
    const std::string idle = told();
    user.key(Qt::Key_1);
    EXPECT_EQ(told(), "Trend segment: click point 1 of 2; Escape cancels");
    user.click(at(250, 100));
    EXPECT_EQ(told(), "Trend segment: click point 2 of 2; Escape cancels");
    user.click(at(260, 101));
    EXPECT_EQ(told(), idle);
    EXPECT_TRUE(figure()->isSelected());
    user.key(Qt::Key_Escape);
    EXPECT_FALSE(figure()->isSelected());
    ChartPalette::button(QZSTToolUp)->click();
    EXPECT_EQ(told(), "Rise mark: click its place; Escape cancels");
    user.key(Qt::Key_Escape);
    EXPECT_EQ(told(), idle);
    for (const bool isHidden : {true, false}) {
        ChartPalette::button(QZSTToolEye)->click();
        EXPECT_EQ(told().starts_with("The drawings are hidden"), isHidden);
    }
}

TEST_F(ChartTest, TellsOfTheBarUnderTheMouse)
{
    const auto told = [this] {
        QStringList texts;
        for (const LegendPart& part : candles.reading().legend())
            texts << part.text;
        const auto& cross = candles.reading().crosshair();
        return texts.join(QStringLiteral(" ")).toStdString() +
               (cross ? " | " + std::to_string(qRound(scale.indexAt(cross->x))) + " " + cross->valueTag.toStdString()
                      : "");
    };
    // Closes are 100 + 10 sin(bar / 9), highs and lows 2 from them: those of bars 249 and 250 are 105.71 and 104.76.
    const std::string bar250 = "2020-12-16 C 104.76 -0.95 (-0.89%) O 103.76 H 106.76 L 102.76"
                               " MA5 106.50 MA10 107.97 MA20 108.07 MA60 100.34";
    const double y = scale.yOf(101);
    user.moveTo(at({scale.xOf(250), std::round(y)}));
    EXPECT_EQ(told(), bar250 + " | 250 " + priceText(scale.valueAt(std::round(y)), 2).toStdString());
    EXPECT_EQ(volumes.reading().legend().front().text, QStringLiteral("V 1.25K"));
    EXPECT_EQ(volumes.reading().crosshair()->dateTag, QStringLiteral("2020-12-16"));
    EXPECT_FALSE(volumes.reading().crosshair()->y);
    user.key(Qt::Key_Left); // six bars: the same place is another bar
    EXPECT_EQ(told().substr(0, 10), "2020-12-08");
    user.moveTo(at(303, 101)); // in the future the newest bar is told of
    EXPECT_EQ(told().substr(0, 10), "2021-02-23");
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&chart, &leave);
    EXPECT_EQ(told().find('|'), std::string::npos);
}

// The last bars fill 185.5 to 305.5; the wheel is turned at 275.5, three quarters of the screen.
TEST_F(ChartTest, ZoomsAboutThePointerAndTheLastBarAndScrolls)
{
    constexpr double x = 275.5;
    constexpr double untilLast = 299 - 185.5;
    using Row = std::tuple<const char*, QPoint, Qt::Key, Qt::KeyboardModifiers, double, double>;
    for (const auto& [name, wheel, code, modifiers, first, span] :
         {Row{"wheel away", {0, 120}, {}, {}, x - 75, 100}, Row{"wheel near", {0, -120}, {}, {}, x - 108, 144},
          Row{"two notches at once", {0, 240}, {}, {}, x - 62.5, 120 / 1.44},
          Row{"Ctrl and wheel away", {0, 120}, {}, Qt::ControlModifier, 179.5, 120},
          Row{"sideways wheel, left", {120, 60}, {}, {}, 179.5, 120},
          Row{"sideways wheel, right", {-120, 60}, {}, {}, 191.5, 120},
          Row{"+", {}, Qt::Key_Plus, {}, 299 - untilLast / 1.2, 100},
          Row{"= on a + key", {}, Qt::Key_Equal, {}, 299 - untilLast / 1.2, 100},
          Row{"-", {}, Qt::Key_Minus, {}, 299 - untilLast * 1.2, 144}, Row{"Left", {}, Qt::Key_Left, {}, 179.5, 120},
          Row{"Right", {}, Qt::Key_Right, {}, 191.5, 120}, Row{"Home", {}, Qt::Key_Home, {}, -6.5, 120},
          Row{"Shift and Left", {}, Qt::Key_Left, Qt::ShiftModifier, 65.5, 120},
          Row{"Shift and Right, which stops", {}, Qt::Key_Right, Qt::ShiftModifier, 259.5, 120}}) {
        SCOPED_TRACE(name);
        viewport.reset(300);
        if (wheel.isNull())
            user.key(code, modifiers);
        else
            user.wheel(user.positionOf(candles, {scale.xOf(x), 200}), wheel, modifiers);
        EXPECT_NEAR(viewport.first(), first, 1e-6);
        EXPECT_NEAR(viewport.span(), span, 1e-9);
    }
    user.key(Qt::Key_Home);
    user.key(Qt::Key_Plus);
    EXPECT_NEAR(viewport.first(), -6.5 + 10, 1e-6) << "about the middle, as the last bar is out of sight";
    viewport.zoom(1.2, 0);
    viewport.scrollBy(1e9);
    EXPECT_NEAR(299.5 - viewport.first(), viewport.span() / 3, 1e-9) << "a third of the screen stays filled";
    viewport.scrollBy(-1e9);
    EXPECT_NEAR(viewport.last() + 0.5, viewport.span() / 3, 1e-9);
    viewport.scrollBy(notANumber);
    EXPECT_FALSE(std::isnan(viewport.first()));
}

TEST_F(ChartTest, KeepsAFigureOnItsCandlesWhateverTheChartDoes)
{
    drawSegment(245, 298);
    user.drag(at(271, 102.45), at(276, 104));
    EXPECT_EQ(figure()->logicAxises()[0].date, bars()[250].date);
    EXPECT_EQ(viewport.last(), 305.5) << "not panned where a figure takes the press";
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
    user.drag(at({500, 30}), at({700, 30}));
    expectInPlace("dragging the chart");
    EXPECT_LT(viewport.last(), 280);
    user.key(Qt::Key_Minus);
    user.key(Qt::Key_End);
    expectInPlace("zooming out");
    window.resize(800, 600);
    expectInPlace("a smaller window");
    window.showBars({{}, BarSeries(stock, std::vector(bars().begin() + 260, bars().end() - 10)), 0, 0, {}, {}});
    expectInPlace("a shorter history");
}

// A drag at the mouse's full speed is a single move.
TEST_F(ChartTest, HoldsADraggedFigureAtTheEdgeBeyondWhichNoScreenRemains)
{
    // Bars scrolled from the start, first bar of a segment of ten, bars it is moved, index where its first point then
    // is.
    using Row = std::tuple<const char*, Qt::Key, double, int, int, double>;
    for (const auto& [name, start, scrolled, firstBar, moved, expected] :
         {Row{"left edge, Home", Qt::Key_Home, 0, 20, -30, -6.5},
          Row{"right edge, End", Qt::Key_End, 0, 270, 30, 305.5 - 10},
          Row{"left edge, a screen before it", Qt::Key_Home, 47, 50, -14, 36},
          Row{"left edge, less than a screen before it", Qt::Key_Home, 45, 50, -14, 38.5},
          Row{"right edge, a screen after it", Qt::Key_End, -47, 240, 13, 253},
          Row{"right edge, less than a screen after it", Qt::Key_End, -45, 240, 13, 250.5}}) {
        for (const int steps : {1, 20}) {
            SCOPED_TRACE(std::string(name) + ", steps: " + std::to_string(steps));
            user.key(start);
            viewport.scrollBy(scrolled);
            drawSegment(firstBar, firstBar + 10);
            const QPoint from = at(firstBar + 5, 102.5).toPoint();
            const QPoint to = at(firstBar + 5 + moved, 101).toPoint();
            QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
            for (int step = 1; step <= steps; ++step)
                QTest::mouseMove(window.windowHandle(), from + (to - from) * step / steps);
            QTest::qWait(0);
            EXPECT_NEAR(scale.indexAt(figure()->points()[0].x), expected, 0.1);
            EXPECT_LT(figure()->points()[0].y, scale.yOf(99));
            QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, to);
            user.key(Qt::Key_Delete);
        }
    }
}

TEST_F(ChartTest, DrawsALineAtTheLastPriceWhileItIsInSight)
{
    const auto* line = candles.findChild<QCPItemLine*>();
    EXPECT_TRUE(line->visible());
    EXPECT_EQ(line->start->coords().y(), bars().back().close);
    EXPECT_NEAR(line->end->pixelPosition().x(), scale.plot.maxX(), 1);
    user.key(Qt::Key_Home);
    viewport.zoom(0.2, 42); // a trough, down to 90
    EXPECT_FALSE(line->visible());
}

TEST_F(ChartTest, DoesNotPullAFigureBackThatLiesAcrossTheEdge)
{
    drawSegment(280, 304);
    viewport.zoom(0.8, 240);
    ASSERT_LT(viewport.last(), 300);
    for (const auto& [moved, firstBar] : {std::pair(5, 280U), {-5, 275U}}) {
        user.drag(at(285, 101), at(285 + moved, 101));
        EXPECT_EQ(figure()->logicAxises()[0].date, bars().at(firstBar).date);
    }
}

TEST_F(ChartTest, HandlesAndToolBarFollowTheTheme)
{
    drawSegment(240, 260);
    const QColor light = figure()->keyPointColor();
    // A hovered tool is drawn on the button colour, any other on the window's.
    for (const bool isLight : {true, false}) {
        SCOPED_TRACE(isLight);
        EXPECT_EQ(figure()->keyPointColor() == light, isLight);
        for (const auto on : {QPalette::Button, QPalette::Window})
            EXPECT_GE(contrast(window.palette().color(QPalette::ButtonText), window.palette().color(on)), 4.5);
        user.key(Qt::Key_T);
    }
    EXPECT_EQ(figure()->keyPointColor(), light);
}
