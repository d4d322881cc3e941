#include "ChartFixture.h"
#include "app/chart/CustomPlot.h"
#include "app/demo/DemoGestures.h"

#include <QAction>
#include <QStatusBar>
#include <QTemporaryDir>

namespace {

/// Bars of a stock whose closes are `closes`, a day each; highs and lows are the closes.
BarReadResult stockOf(const QString& name, const std::vector<double>& closes)
{
    std::vector<Bar> bars;
    bars.reserve(closes.size());
    for (const double close : closes)
        bars.push_back(
            {dateOfDay(dayNumber(20200101) + static_cast<int>(bars.size())), 0, close, close, close, close, 1});
    return {{}, BarSeries(name, bars), 0, 0, {}, {}};
}

} // namespace

TEST_F(ChartTest, CandlesFiguresAndCrosshairAgreeOnEveryScale)
{
    const QCPAxis& axis = *candles.findChild<QCustomPlot*>()->yAxis2;
    window.showBars(stockOf(stock, {10, 1000, 50, 300, 20, 800, 90, 400, 30, 100, 60, 70, 80, 90, 95}));
    user.key(Qt::Key_1);
    user.click(at(2, 50));
    user.click(at(10, 900));
    const auto stored = figure()->logicAxises();
    const double middle = scale.plot.y + scale.plot.height / 2;
    EXPECT_NEAR(scale.valueAt(middle), 505, 1e-9);
    for (const bool isLogarithmic : {true, false}) {
        SCOPED_TRACE(isLogarithmic);
        user.key(Qt::Key_L);
        EXPECT_EQ(scale.isLogarithmic, isLogarithmic);
        EXPECT_NEAR(scale.valueAt(middle), isLogarithmic ? 100 : 505, 1e-9) << "the root of 10 times 1000";
        for (const double price : {10.0, 33.3, 1000.0})
            EXPECT_NEAR(axis.coordToPixel(price), candles.height() - scale.yOf(price), 1e-9);
        for (const double y : {-3000.0, 0.0, 200.5, 4000.0})
            EXPECT_NEAR(scale.yOf(scale.valueAt(y)), y, 1e-8);
        EXPECT_TRUE(std::isfinite(scale.yOf(-5)) && std::isfinite(scale.valueAt(1e6)));
        EXPECT_LT(scale.yOf(0), isLogarithmic ? -10000 : scale.plot.y + 30);
        QTest::qWait(0);
        for (std::size_t i = 0; i < 2; ++i)
            EXPECT_NEAR(figure()->points()[i].y, scale.yOf(stored[i].price), 1e-9);
        user.moveTo(at({scale.xOf(4), middle}));
        EXPECT_NEAR(candles.reading().crosshair()->valueTag.toDouble(), scale.valueAt(std::round(middle)), 2);
    }
    QZRegressionCalcData lines{.x1 = scale.xOf(0), .x2 = scale.xOf(9)};
    user.key(Qt::Key_L);
    ASSERT_TRUE(candles.calcRegressionData(lines));
    EXPECT_GT(lines.line3Y1, scale.yOf(1)) << "below every candle, but not out of sight";
}

TEST_F(ChartTest, PricesWithoutLogarithmsKeepTheLinearScale)
{
    const auto actions = window.findChildren<QAction*>();
    const auto* log = *std::ranges::find(actions, QStringLiteral("Log"), &QAction::text);
    window.showBars(stockOf(stock, {5, 3, -1, 2}));
    user.key(Qt::Key_L);
    EXPECT_FALSE(scale.isLogarithmic);
    EXPECT_TRUE(log->isChecked() && log->toolTip().contains(QStringLiteral("zero or below")));
    EXPECT_TRUE(window.statusBar()->currentMessage().contains(QStringLiteral("zero or below")));
    window.showBars(stockOf(stock + u'2', {5, 3, 1, 2}));
    EXPECT_TRUE(scale.isLogarithmic);
    EXPECT_FALSE(log->toolTip().contains(QStringLiteral("zero or below")));
}

TEST_F(ChartTest, TheValueAxisStretchesTheScaleAndDoesNothingElse)
{
    drawSegment(245, 270);
    user.key(Qt::Key_1);
    user.click(at(250, 100));
    const auto inCreation = candles.paintLayer()->currentGraph();
    const double low = scale.low;
    const double high = scale.high;
    const double middle = (low + high) / 2;
    const QPointF axis = at({scale.plot.maxX() + 20, scale.plot.y + 100});
    const QPointF up(0, -scale.plot.height / 4);
    user.moveTo(axis);
    EXPECT_EQ(candles.cursor().shape(), Qt::SizeVerCursor);
    user.drag(axis, axis + up);
    EXPECT_NEAR(scale.high - scale.low, (high - low) / std::exp(0.5), 0.1);
    EXPECT_NEAR((scale.high + scale.low) / 2, middle, 1e-9);
    EXPECT_EQ(chart.activeView(), &candles);
    user.drag(user.positionOf(volumes, {volumes.scale().plot.maxX() + 20, 40}), axis);
    EXPECT_EQ(volumes.scale().low, 0);
    EXPECT_EQ(candles.paintLayer()->currentGraph(), inCreation);
    EXPECT_EQ(inCreation->currentPoint(), 1U);
    user.click(at(260, 104));
    EXPECT_EQ(candles.paintLayer()->graphs().count(), 2U);
    EXPECT_TRUE(inCreation->isSelected());
    user.doubleClick(axis);
    EXPECT_TRUE(inCreation->isSelected());
    EXPECT_EQ(scale.low, low);
    EXPECT_EQ(scale.high, high);
    user.wheel(axis, {0, 120});
    EXPECT_NEAR(scale.high - scale.low, (high - low) / 1.2, 1e-9);
    EXPECT_EQ(viewport.span(), 120);
    user.key(Qt::Key_F);
    EXPECT_EQ(scale.high, high);
}

TEST_F(ChartTest, AFreeScaleMovesWithTheMouse)
{
    const double low = scale.low;
    const double perPixel = (scale.high - low) / scale.plot.height;
    const QPointF from = at({500, 100});
    user.drag(from, from + QPointF(0, 40));
    EXPECT_EQ(scale.low, low) << "the fitted scale does not wobble";
    user.drag(from, from + QPointF(0, 40), Qt::ShiftModifier);
    EXPECT_NEAR(scale.low, low + 40 * perPixel, 1e-9);
    user.drag(from, from + QPointF(0, -140));
    EXPECT_NEAR(scale.low, low - 100 * perPixel, 1e-9);
    user.key(Qt::Key_F);
    EXPECT_NEAR(scale.low, low, 1e-9);
}

TEST_F(ChartTest, PricesHaveTheDecimalsTheyAreQuotedIn)
{
    using Row = std::tuple<const char*, double, double, const char*>; // its last closes, and the last one as written
    for (const auto& [name, before, last, text] :
         {Row{"stock", 12.34, 12.3, "12.30"}, Row{"a tiny price", 0.00001301, 0.00001234, "0.00001234"},
          Row{"exchange rate", 1.0851, 1.084, "1.0840"}, Row{"yen", 151.234, 151.2, "151.200"},
          Row{"many whole digits", 43250.1, 43250.12, "43250.12"}, Row{"index", 38505, 38500, "38500"},
          Row{"low whole numbers", 101, 100, "100.00"}, Row{"adjusted", 27.083456, 27.093211, "27.09"},
          Row{"from 32 bits", 12.34000015258789, 12.299999237060547, "12.30"},
          Row{"adjusted and low", 0.0123456789, 0.0123987654, "0.01240"}, Row{"huge", 1e12, 2e12, "2000000000000"},
          Row{"beyond any number", 1e20, 2e20, "2e+20"}}) {
        SCOPED_TRACE(name);
        window.showBars(stockOf(stock, {before, last}));
        user.moveTo(at(1, last));
        EXPECT_EQ(candles.reading().legend()[1].text.toStdString(), std::string("C ") + text);
        EXPECT_EQ(candles.captionOfPrice(last)->toStdString(), text);
        const auto tags = candles.findChild<QCustomPlot*>()->findChildren<QCPItemText*>();
        EXPECT_EQ(tags.front()->text().toStdString(), text);
    }
}

TEST_F(ChartTest, TheDemonstrationPlaysOnAnyPrice)
{
    using Closes = std::vector<double>;
    for (const auto& [name, closes] : {std::pair{"flat and huge", Closes(300, 1e12)},
                                       {"flat at nothing", Closes(300, 0.0)},
                                       {"one bar", Closes{12}},
                                       {"a jump of a trillion", Closes{1, 1e12, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}}}) {
        SCOPED_TRACE(name);
        ChartWindow other;
        other.showBars(stockOf(stock + QLatin1String(name), closes));
        other.show();
        const QTemporaryDir folder;
        EXPECT_EQ(DemoGestures(other).play(folder.filePath(QStringLiteral("x.png"))).toStdString(), "");
    }
}

TEST(AxisTicks, StandAtRoundPricesOfALogarithmicScale)
{
    using Row = std::tuple<const char*, double, double, int, const char*>;
    for (const auto& [name, low, high, count, expected] :
         {Row{"two decades", 10, 1000, 8, "10 20 40 100 200 400 1000"},
          Row{"four decades", 0.011, 90, 6, "0.05 0.4 2 10 50"},
          Row{"less than a doubling", 100, 110, 5, "100 102 104 106 108 110"}}) {
        SCOPED_TRACE(name);
        QStringList labels;
        for (const AxisTick& tick : logarithmicTicks(low, high, count))
            labels << tick.label;
        EXPECT_EQ(labels.join(u' ').toStdString(), expected);
    }
}
