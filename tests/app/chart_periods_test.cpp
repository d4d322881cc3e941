#include "ChartFixture.h"
#include "app/bars/SampleBars.h"
#include "app/calendar/TradingCalendar.h"
#include "app/indicators/Indicators.h"

#include <QComboBox>

namespace {

void choose(ChartWindow& window, const char* period)
{
    QComboBox& periods = *window.periods();
    periods.setCurrentIndex(periods.findText(QLatin1String(period)));
    Q_EMIT periods.activated(periods.currentIndex());
}

} // namespace

TEST_F(ChartTest, ALineOfDaysShowsThemWholeAndKeepsItsFigures)
{
    // 20 sessions of 240 minutes, the last one of which still lacks 100.
    const std::vector<Bar> all = readBars(minuteSamplePath()).series.bars();
    const BarReadResult minutes{{}, BarSeries(stock, {all.begin(), all.end() - 100}), 0, 0, {}, {}};
    window.showBars(minutes);
    EXPECT_EQ(window.periods()->itemText(0), QStringLiteral("1-day line"));
    EXPECT_EQ(window.periods()->currentText(), QStringLiteral("1 minute"));
    choose(window, "5-day line");
    ASSERT_EQ(bars().size(), 1100U);
    EXPECT_EQ(bars().front().date, all[all.size() - 1200].date);
    EXPECT_EQ(viewport.first(), -0.5);
    EXPECT_EQ(viewport.last(), 1199.5) << "with what is still to come";

    // The bars' values, counted apart from the chart.
    const auto text = [](double price) { return QString::number(price, 'f', 2); };
    const double close = bars()[300].close;
    user.moveTo(at(300, close));
    const double before = bars()[239].close;
    QStringList legend;
    for (const LegendPart& part : candles.reading().legend())
        legend << part.text;
    ASSERT_EQ(legend.size(), 4);
    EXPECT_EQ(legend[1], QStringLiteral("C ") + text(close));
    EXPECT_TRUE(legend[2].contains(text(close - before))) << legend[2].toStdString();
    double traded = 0;
    double volume = 0;
    for (std::size_t i = 240; i <= 300; ++i) {
        traded += bars()[i].volume * (bars()[i].high + bars()[i].low + bars()[i].close) / 3;
        volume += bars()[i].volume;
    }
    EXPECT_EQ(legend[3], QStringLiteral("Avg ") + text(traded / volume));
    // A bar of the line has no high for the magnet.
    const QZPoint onLine{scale.xOf(300), scale.yOf(close)};
    EXPECT_EQ(candles.convertPointForMagnet({onLine.x, onLine.y + 9}, 0), onLine);

    user.key(Qt::Key_1);
    user.click(at(300, close));
    user.click(at(1150, close)); // in the part of the day that is still to come
    const auto drawn = figure()->logicAxises();
    EXPECT_EQ((BarTime{drawn[0].date, drawn[0].time}), candles.chartData()->series.timeAt(300));
    EXPECT_EQ((BarTime{drawn[1].date, drawn[1].time}), (BarTime{all[all.size() - 50].date, all[all.size() - 50].time}));
    user.key(Qt::Key_Comma);
    EXPECT_EQ(window.periods()->currentText(), QStringLiteral("4-day line"));
    EXPECT_EQ(candles.paintLayer()->graphs().count(), 0U);
    choose(window, "1-day line");
    EXPECT_EQ(viewport.last(), 239.5) << "as the sessions before were";
    window.close();

    // The next day there are more bars.
    ChartWindow later;
    later.showBars({{}, BarSeries(stock, all), 0, 0, {}, {}});
    choose(later, "5-day line");
    const ChartPane& pane = *later.chart().panes().front();
    ASSERT_EQ(pane.paintLayer()->graphs().count(), 1U);
    const auto loaded = pane.paintLayer()->graphs().snapshot()->front()->logicAxises();
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ((BarTime{loaded[i].date, loaded[i].time}), (BarTime{drawn[i].date, drawn[i].time}));
        EXPECT_NEAR(pane.scale().indexAt(pane.convertFromLogicAxis(loaded[i]).x), i == 0 ? 300 : 1150, 1e-6);
    }
}
