#include "app/bars/CivilDate.h"
#include "app/chart/ChartPalette.h"
#include "app/chart/ChartSplitView.h"
#include "app/chart/ChartWindow.h"
#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QAbstractButton>
#include <QDate>
#include <QFormLayout>
#include <QLabel>
#include <QTest>
#include <QWindow>

#include <cmath>
#include <gtest/gtest.h>

namespace {

/// Weekdays without a rule to their prices that a formula could get right by luck.
BarReadResult unevenMarket(const char* name, std::int32_t time = 0)
{
    std::vector<Bar> bars;
    for (std::int64_t day = dayNumber(20200101); bars.size() < 300; ++day) {
        const auto i = static_cast<double>(bars.size());
        const double open = 50 + 10 * std::sin(i * i);
        const double close = 50 + 10 * std::cos(3 * i * i);
        if (weekdayOfDay(day) < 5)
            bars.push_back({dateOfDay(day), time, open, std::max(open, close) + std::fmod(i, 3.0),
                            std::min(open, close) - std::fmod(i, 4.0), close, 1000 + 100 * std::fmod(i, 7.0)});
    }
    BarReadResult result;
    result.series = BarSeries(QString::fromLatin1(name), bars);
    return result;
}

/// The window of the statistics as it stands on the screen: "name: value" line by line; empty when there is none.
std::string statisticsOnScreen()
{
    QStringList lines;
    for (const QWidget* each : QApplication::topLevelWidgets()) {
        const auto* rows = qobject_cast<QFormLayout*>(each->layout());
        if (!each->isVisible() || dynamic_cast<const RangeStatisticsWindow*>(each) == nullptr)
            continue;
        for (int row = 0; row < rows->rowCount(); ++row) {
            const auto textAt = [rows, row](QFormLayout::ItemRole role) {
                return qobject_cast<QLabel*>(rows->itemAt(row, role)->widget())->text();
            };
            lines << textAt(QFormLayout::LabelRole) + QStringLiteral(": ") + textAt(QFormLayout::FieldRole);
        }
    }
    return lines.join(QLatin1Char('\n')).toStdString();
}

class ChartStatistics : public ::testing::Test {
protected:
    ChartStatistics()
    {
        window.showBars(unevenMarket("uneven"));
        show(window);
        QTest::mouseMove(window.windowHandle(), at(40));
    }

    static void show(ChartWindow& window)
    {
        window.resize(1000, 700);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    [[nodiscard]] const std::vector<Bar>& bars() const { return candles.chartData()->series.bars(); }
    [[nodiscard]] double xOf(int bar) const { return candles.scale().xOf(bar); }
    /// In the window, at the middle of the candles' height.
    [[nodiscard]] QPoint at(double x) const { return candles.mapTo(&window, QPointF(x, 200)).toPoint(); }
    void drag(double from, double to, int steps)
    {
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, at(from));
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(window.windowHandle(), at(from + (to - from) * step / steps));
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, at(to));
        QTest::qWait(0);
    }

    /// What the window has to show of the bars `first` to `last`, counted here in the plainest way.
    [[nodiscard]] std::string expected(int first, int last) const
    {
        double high = 0;
        double low = 1e9;
        double closes = 0;
        double volume = 0;
        for (int i = first; i <= last; ++i) {
            const Bar& bar = bars().at(static_cast<std::size_t>(i));
            high = std::max(high, bar.high);
            low = std::min(low, bar.low);
            closes += bar.close;
            volume += bar.volume;
        }
        const auto dateOf = [this](int bar) {
            return QDate::fromString(QString::number(candles.chartData()->series.at(bar).date),
                                     QStringLiteral("yyyyMMdd"))
                .toString(QStringLiteral("yyyy-MM-dd"));
        };
        const double before = first == 0 ? bars()[0].open : candles.chartData()->series.at(first - 1).close;
        const double change = candles.chartData()->series.at(last).close - before;
        const int count = last - first + 1;
        const QStringList lines{QStringLiteral("Bars: %1").arg(count),
                                QStringLiteral("First: ") + dateOf(first),
                                QStringLiteral("Last: ") + dateOf(last),
                                QString::asprintf("Change: %+.2f", change),
                                QString::asprintf("Percent change: %+.2f%%", change / before * 100),
                                QString::asprintf("High: %.2f", high),
                                QString::asprintf("Low: %.2f", low),
                                QString::asprintf("Mean close: %.2f", closes / count),
                                QString::asprintf("Amplitude: %.2f%%", (high - low) / low * 100),
                                QString::asprintf("Volume: %.4gK", volume / 1000)};
        return lines.join(QLatin1Char('\n')).toStdString();
    }
    [[nodiscard]] bool showsBand() const
    {
        return candles.paintLayer()->graphs().contains(QZPaintRangeStatistics::sharedGraph().get());
    }

    ChartWindow window;
    const ChartPane& candles = *window.chart().panes()[0];
};

} // namespace

TEST_F(ChartStatistics, AnswersToolsWithNumbersOfTheBars)
{
    // Least squares by the normal equations, from the bars 240 to 270.
    double n = 0;
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    for (std::size_t i = 240; i <= 270; ++i) {
        const auto t = static_cast<double>(i);
        n += 1;
        x += t;
        y += bars()[i].close;
        xx += t * t;
        xy += t * bars()[i].close;
    }
    const double slope = (n * xy - x * y) / (n * xx - x * x);
    const auto line = [&](double t) { return (y - slope * x) / n + slope * t; };
    double above = 0;
    double below = 0;
    double weighted = 0;
    double volume = 0;
    double high = 0;
    double low = 1e9;
    for (std::size_t i = 240; i <= 270; ++i) {
        const Bar& bar = bars()[i];
        above = std::max(above, bar.high - line(static_cast<double>(i)));
        below = std::max(below, line(static_cast<double>(i)) - bar.low);
        weighted += bar.volume * (bar.high + bar.low + bar.close) / 3;
        volume += bar.volume;
        high = std::max(high, bar.high);
        low = std::min(low, bar.low);
    }
    const auto price = [this](double height) { return candles.scale().valueAt(height); };

    QZRegressionCalcData lines{.x1 = xOf(240) + 1, .x2 = xOf(270) - 1};
    ASSERT_TRUE(candles.calcRegressionData(lines));
    EXPECT_EQ(lines.x1, xOf(240));
    EXPECT_EQ(lines.x2, xOf(270));
    const std::array heights{lines.line1Y1, lines.line1Y2, lines.line2Y1, lines.line2Y2, lines.line3Y1, lines.line3Y2};
    const std::array prices{line(240),         line(270),         line(240) + above,
                            line(270) + above, line(240) - below, line(270) - below};
    for (std::size_t i = 0; i < prices.size(); ++i)
        EXPECT_NEAR(price(heights[i]), prices[i], 1e-9) << i;

    QZBoxLineCalcData box{.x1 = xOf(270), .x2 = xOf(240)};
    ASSERT_TRUE(candles.calcBoxLineData(box));
    EXPECT_NEAR(price(box.firstEdgeY), low, 1e-9);
    EXPECT_NEAR(price(box.secondEdgeY), high, 1e-9);
    EXPECT_NEAR(price(box.averageCostY), weighted / volume, 1e-9);
    EXPECT_EQ(box.count, 31);
    EXPECT_FLOAT_EQ(box.averageCost, static_cast<float>(weighted / volume));
    EXPECT_FLOAT_EQ(box.amplitude, static_cast<float>((high - low) / low * 100));
    EXPECT_FLOAT_EQ(box.difference, static_cast<float>(high - low));
}

// In view are the bars 186 to 299 and the start of the future.
TEST_F(ChartStatistics, TellsWhatTheBarsUnderTheBandCameTo)
{
    QTest::keyClick(window.windowHandle(), Qt::Key_S);
    EXPECT_EQ(statisticsOnScreen(), expected(223, 262));

    drag(xOf(223), xOf(240) + 2, 7); // an edge, let go beside a bar
    EXPECT_EQ(statisticsOnScreen(), expected(240, 262));
    EXPECT_NEAR(QZPaintRangeStatistics::sharedGraph()->getLeftPoint().x, xOf(240), 1e-9);
    drag(xOf(240), xOf(290), 50); // past the other one, pixel by pixel
    EXPECT_EQ(statisticsOnScreen(), expected(262, 290));
    drag(xOf(290), xOf(303), 5); // off the last bar
    EXPECT_EQ(statisticsOnScreen(), expected(262, 299));
    drag(xOf(280), xOf(270), 80); // as a whole, at steps shorter than a bar
    EXPECT_EQ(statisticsOnScreen(), expected(252, 289));
    QZPaintRangeStatistics::sharedGraph()->reloadKeyPoints();
    EXPECT_NEAR(QZPaintRangeStatistics::sharedGraph()->getLeftPoint().x, xOf(252), 1e-9);

    // From the first bar on there is no close before.
    QTest::keyClick(window.windowHandle(), Qt::Key_S);
    QTest::keyClick(window.windowHandle(), Qt::Key_Home);
    QTest::keyClick(window.windowHandle(), Qt::Key_S);
    drag(xOf(37), xOf(0), 5);
    EXPECT_EQ(statisticsOnScreen(), expected(0, 76));
}

TEST_F(ChartStatistics, BandAndWindowOpenAndCloseTogether)
{
    struct Row {
        const char* name = nullptr;
        std::function<void()> close;
    };
    auto& band = *QZPaintRangeStatistics::sharedGraph();
    ChartWindow other;
    other.showBars(unevenMarket("other"));
    show(other);
    window.activateWindow();
    for (const Row& row :
         {Row{"the command", [&] { QTest::keyClick(window.windowHandle(), Qt::Key_S); }},
          Row{"the band's close button",
              [&] {
                  const QZRect button = band.closeButtonRect();
                  const QPointF place(button.x + 5, candles.height() - button.y - 5);
                  QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, candles.mapTo(&window, place).toPoint());
              }},
          Row{"Delete",
              [&] {
                  drag(xOf(240), xOf(240), 1);
                  QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
              }},
          Row{"all figures deleted",
              [&] {
                  const auto runner =
                      QZAlert::setRunner([](const QZAlertRequest&) { return QZAlert::firstButton + 1; });
                  ChartPalette::button(QZSTToolDelete)->click();
                  QZAlert::setRunner(runner);
              }},
          Row{"another stock", [&] { window.showBars(unevenMarket("third")); }},
          Row{"shown in another window", [&] { QTest::keyClick(other.windowHandle(), Qt::Key_S); }},
          Row{"that window closed", [&] { other.close(); }}}) {
        SCOPED_TRACE(row.name);
        if (!other.isVisible() || statisticsOnScreen().empty())
            QTest::keyClick(window.windowHandle(), Qt::Key_S);
        row.close();
        EXPECT_FALSE(showsBand());
    }
    EXPECT_TRUE(statisticsOnScreen().empty());
}

TEST_F(ChartStatistics, AButtonSaysWhyItsToolCannotBeHad)
{
    const QAbstractButton& button = *ChartPalette::button(QZSTFibonacci);
    const QString name = button.accessibleName();
    EXPECT_EQ(button.toolTip(), name);
    window.showBars(unevenMarket("minutes", 93000));
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), name + QStringLiteral(" (not on an intraday chart)"));
    window.showBars(unevenMarket("days"));
    EXPECT_TRUE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), name);
}
