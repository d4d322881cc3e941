#include "ChartFixture.h"
#include "app/chart/LinePlot.h"

#include <cmath>

TEST_F(ChartTest, MovingAveragesCanBeSwitchedOff)
{
    const auto picture = [this] { return window.chart().panes().front()->grab().toImage(); };
    const QImage with = picture();
    chart.viewActions().front()->trigger();
    EXPECT_EQ(candles.reading().legend().back().text.front(), u'L');
    const QImage without = picture();
    chart.setAveragesVisible(true);
    EXPECT_TRUE(chart.viewActions().front()->isChecked());
    EXPECT_EQ(picture(), with);
    // Below the legend.
    EXPECT_NE(with.copy(0, 40, 900, 400), without.copy(0, 40, 900, 400));
}

TEST(LinePlot, KeepsTheTurnsOfEachPixelColumnAndBreaksAtGaps)
{
    const double none = std::nan("");
    //                                0  1  2  3    4     5  6  7  8  9
    const std::vector<double> values{5, 1, 9, 7, none, none, 3, 4, 6, 2};
    using Runs = std::vector<std::vector<LinePoint>>;
    using Row = std::tuple<const char*, int, int, int, Runs>;
    for (const auto& [name, first, last, barsPerColumn, runs] :
         {Row{"every bar", 1, 7, 1, {{{1, 1}, {2, 9}, {3, 7}}, {{6, 3}, {7, 4}}}},
          Row{"columns of five", 0, 9, 5, {{{0, 5}, {1, 1}, {2, 9}, {3, 7}}, {{6, 3}, {8, 6}, {9, 2}}}},
          Row{"columns of three at fixed bars", 1, 9, 3, {{{1, 1}, {2, 9}, {3, 7}}, {{6, 3}, {8, 6}, {9, 2}}}},
          Row{"a gap only", 4, 5, 2, {}}, Row{"no bars", 0, -1, 1, {}}}) {
        EXPECT_EQ(lineRuns(values, first, last, barsPerColumn), runs) << name;
    }
}

// Closes are 100 + 10 sin(bar / 9); the legend's numbers were computed apart from the program.
TEST_F(ChartTest, TheMacdPaneKeepsItsFiguresWhileItIsHidden)
{
    QAction& command = *chart.viewActions().at(1);
    const ChartPane& macd = *chart.panes()[2];
    using Dates = std::vector<std::int32_t>;
    const auto segment = [&](QPointF from, QPointF to) {
        user.key(Qt::Key_1);
        user.click(from);
        user.click(to);
    };
    const auto place = [&](int bar, double value) {
        return user.positionOf(macd, {macd.scale().xOf(bar), macd.scale().yOf(value)});
    };
    command.trigger();
    QTest::qWait(0);
    EXPECT_GT(macd.height(), 80);
    user.moveTo(place(250, 2));
    QStringList legend;
    for (const LegendPart& part : macd.reading().legend())
        legend << part.text;
    EXPECT_EQ(legend.join(u' ').toStdString(), "MACD(12,26,9) DIF 1.52 DEA 2.44 MACD -1.85");
    EXPECT_EQ(macd.reading().crosshair()->dateTag, QStringLiteral("2020-12-16")) << "the lowest pane has the dates";
    const QPointF from = place(250, -2);
    const QPointF to = place(270, -3);
    segment(from, to);
    const Dates drawn{bars()[250].date};
    EXPECT_EQ(firstDates(macd), drawn);
    const auto figure = macd.paintLayer()->graphs().snapshot()->front();
    EXPECT_NEAR(figure->logicAxises()[1].price, -3, 0.1);
    user.click(place(260, -2.5));
    EXPECT_TRUE(figure->isSelected());

    command.trigger();
    EXPECT_FALSE(figure->isSelected());
    EXPECT_EQ(chart.activeView(), nullptr);
    EXPECT_TRUE(volumes.scale().plot.height > 80);
    segment(from, to);
    EXPECT_EQ(firstDates(volumes), drawn) << "which is there now";
    EXPECT_EQ(firstDates(macd), drawn);
    window.close();

    ChartWindow later;
    later.showBars(market(stock));
    EXPECT_EQ(firstDates(*later.chart().panes()[2]), drawn);
}
