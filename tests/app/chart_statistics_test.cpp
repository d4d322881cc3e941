#include "ChartFixture.h"
#include "app/chart/ChartPalette.h"
#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QAbstractButton>
#include <QFormLayout>
#include <QLabel>
#include <QWindow>

namespace {

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

class ChartStatistics : public ChartTest {
protected:
    /// At the middle of the candles' height, from one bar's place to another one's.
    void drag(double from, double to) { user.drag(at({scale.xOf(from), 200}), at({scale.xOf(to), 200})); }
    /// What the window has to show of the bars `first` to `last`, counted here in the plainest way.
    [[nodiscard]] std::string expected(int first, int last) const
    {
        double high = 0;
        double low = 1e9;
        double closes = 0;
        double volume = 0;
        const auto bar = [this](int i) { return bars()[static_cast<std::size_t>(i)]; };
        for (int i = first; i <= last; ++i) {
            high = std::max(high, bar(i).high);
            low = std::min(low, bar(i).low);
            closes += bar(i).close;
            volume += bar(i).volume;
        }
        const auto date = [&bar](int i) {
            const QString digits = QString::number(bar(i).date);
            return (digits.left(4) + u'-' + digits.mid(4, 2) + u'-' + digits.right(2)).toStdString();
        };
        const double before = first == 0 ? bar(0).open : bar(first - 1).close;
        const double change = bar(last).close - before;
        const int count = last - first + 1;
        return QString::asprintf("Bars: %d\nFirst: %s\nLast: %s\nChange: %+.2f\nPercent change: %+.2f%%\nHigh: %.2f\n"
                                 "Low: %.2f\nMean close: %.2f\nAmplitude: %.2f%%\nVolume: %.4gK",
                                 count, date(first).c_str(), date(last).c_str(), change, change / before * 100, high,
                                 low, closes / count, (high - low) / low * 100, volume / 1000)
            .toStdString();
    }
    [[nodiscard]] bool showsBand() const
    {
        return candles.paintLayer()->graphs().contains(QZPaintRangeStatistics::sharedGraph().get());
    }
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
    for (int i = 240; i <= 270; ++i) {
        const double close = bars()[static_cast<std::size_t>(i)].close;
        n += 1;
        x += i;
        y += close;
        xx += 1.0 * i * i;
        xy += i * close;
    }
    const double slope = (n * xy - x * y) / (n * xx - x * x);
    const auto line = [&](double t) { return (y - slope * x) / n + slope * t; };
    double above = 0;
    double below = 0;
    double cost = 0;
    double volume = 0;
    double high = 0;
    double low = 1e9;
    for (int i = 240; i <= 270; ++i) {
        const Bar& bar = bars()[static_cast<std::size_t>(i)];
        above = std::max(above, bar.high - line(i));
        below = std::max(below, line(i) - bar.low);
        cost += bar.volume * (bar.high + bar.low + bar.close) / 3;
        volume += bar.volume;
        high = std::max(high, bar.high);
        low = std::min(low, bar.low);
    }
    QZRegressionCalcData lines{.x1 = scale.xOf(240) + 1, .x2 = scale.xOf(270) - 1};
    ASSERT_TRUE(candles.calcRegressionData(lines));
    QZBoxLineCalcData box{.x1 = scale.xOf(270), .x2 = scale.xOf(240)};
    ASSERT_TRUE(candles.calcBoxLineData(box));
    struct Row {
        const char* name;
        double answered;
        double expected;
    };
    for (const Row& row :
         {Row{"first bar", scale.indexAt(lines.x1), 240}, Row{"last bar", scale.indexAt(lines.x2), 270},
          Row{"line, first", scale.valueAt(lines.line1Y1), line(240)},
          Row{"line, last", scale.valueAt(lines.line1Y2), line(270)},
          Row{"upper, first", scale.valueAt(lines.line2Y1), line(240) + above},
          Row{"upper, last", scale.valueAt(lines.line2Y2), line(270) + above},
          Row{"lower, first", scale.valueAt(lines.line3Y1), line(240) - below},
          Row{"lower, last", scale.valueAt(lines.line3Y2), line(270) - below},
          Row{"bottom", scale.valueAt(box.firstEdgeY), low}, Row{"top", scale.valueAt(box.secondEdgeY), high},
          Row{"cost line", scale.valueAt(box.averageCostY), cost / volume},
          Row{"cost", static_cast<double>(box.averageCost), cost / volume},
          Row{"amplitude", static_cast<double>(box.amplitude), (high - low) / low * 100},
          Row{"difference", static_cast<double>(box.difference), high - low},
          Row{"count", static_cast<double>(box.count), 31}})
        EXPECT_NEAR(row.answered, row.expected, 1e-5) << row.name;

    // Volumes 1250 to 1259 count alike; bars beyond the last one do not count.
    QZBoxLineCalcData volumeBox{.x1 = scale.xOf(250), .x2 = scale.xOf(259)};
    ASSERT_TRUE(volumes.calcBoxLineData(volumeBox));
    EXPECT_FLOAT_EQ(volumeBox.averageCost, 1254.5F);
    QZBoxLineCalcData newest{.x1 = scale.xOf(290), .x2 = scale.xOf(310)};
    ASSERT_TRUE(candles.calcBoxLineData(newest));
    EXPECT_EQ(newest.count, 10);
    const auto range =
        candles.infomationForRetangle({scale.xOf(290), scale.yOf(100)}, {scale.xOf(280), scale.yOf(99.5)}, 0);
    ASSERT_TRUE(range);
    EXPECT_EQ(std::pair(range->count, range->varyPrice), std::pair(-11, QStringLiteral("-0.50")));
    EXPECT_NEAR(range->varyScope, -0.5, 1e-5);
}

// In view are the bars 186 to 299 and the start of the future.
TEST_F(ChartStatistics, TellsWhatTheBarsUnderTheBandCameTo)
{
    user.key(Qt::Key_S);
    EXPECT_EQ(statisticsOnScreen(), expected(223, 262));

    drag(223, 240.3); // an edge, let go beside a bar
    EXPECT_EQ(statisticsOnScreen(), expected(240, 262));
    EXPECT_NEAR(QZPaintRangeStatistics::sharedGraph()->getLeftPoint().x, scale.xOf(240), 1e-9);
    drag(240, 290); // past the other one, pixel by pixel
    EXPECT_EQ(statisticsOnScreen(), expected(262, 290));
    drag(290, 303); // off the last bar
    EXPECT_EQ(statisticsOnScreen(), expected(262, 299));
    drag(280, 270); // as a whole, at steps shorter than a bar
    EXPECT_EQ(statisticsOnScreen(), expected(252, 289));
    QZPaintRangeStatistics::sharedGraph()->reloadKeyPoints();
    EXPECT_NEAR(QZPaintRangeStatistics::sharedGraph()->getLeftPoint().x, scale.xOf(252), 1e-9);

    // From the first bar on there is no close before.
    user.key(Qt::Key_S);
    user.key(Qt::Key_Home);
    user.key(Qt::Key_S);
    drag(37, 0);
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
    other.showBars(market(QStringLiteral("other")));
    other.show();
    window.activateWindow();
    for (const Row& row : {Row{"the command", [&] { user.key(Qt::Key_S); }},
                           Row{"the band's close button",
                               [&] {
                                   const QZRect button = band.closeButtonRect();
                                   user.click(at(QZPoint{button.x + 5, button.y + 5}));
                               }},
                           Row{"Delete",
                               [&] {
                                   drag(240, 240);
                                   user.key(Qt::Key_Delete);
                               }},
                           Row{"all figures deleted",
                               [&] {
                                   const auto runner = QZAlert::setRunner(
                                       [](const QZAlertRequest&) { return QZAlert::firstButton + 1; });
                                   ChartPalette::button(QZSTToolDelete)->click();
                                   QZAlert::setRunner(runner);
                               }},
                           Row{"another stock", [&] { window.showBars(market(QStringLiteral("third"))); }},
                           Row{"shown in another window", [&] { QTest::keyClick(other.windowHandle(), Qt::Key_S); }},
                           Row{"that window closed", [&] { other.close(); }}}) {
        SCOPED_TRACE(row.name);
        if (!other.isVisible() || statisticsOnScreen().empty())
            user.key(Qt::Key_S);
        row.close();
        EXPECT_FALSE(showsBand());
    }
    EXPECT_TRUE(statisticsOnScreen().empty());

    user.key(Qt::Key_S);
    drag(240, 240);
    EXPECT_TRUE(band.isSelected());
    user.click(user.positionOf(volumes, {500, 60})); // another pane's figures are not shown as selected
    user.key(Qt::Key_S);
    user.click(at({scale.xOf(240), 200}));
    user.key(Qt::Key_S);
    EXPECT_FALSE(band.isSelected()) << "when it opens again";
}

TEST_F(ChartStatistics, AButtonSaysWhyItsToolCannotBeHad)
{
    const QAbstractButton& button = *ChartPalette::button(QZSTFibonacci);
    const QString name = button.accessibleName();
    EXPECT_EQ(button.toolTip(), name);
    window.showBars({{}, BarSeries(QStringLiteral("minutes"), {{20200102, 93000, 10, 12, 9, 11, 1}}), 0, 0, {}, {}});
    EXPECT_TRUE(button.isEnabled()) << "candles";
    user.key(Qt::Key_Comma); // the line of a day
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), name + QStringLiteral(" (not on a line chart)"));
    window.showBars(market(QStringLiteral("days")));
    EXPECT_TRUE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), name);
}
