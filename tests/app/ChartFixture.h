#pragma once

#include "app/bars/CivilDate.h"
#include "app/chart/ChartSplitView.h"
#include "app/demo/UserInput.h"
#include "app/window/ChartWindow.h"
#include "surface/QZPaintLayer.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

/// 300 weekdays from 2020-01-01 on, every one or every `step` days; closes run up and down between 90 and 110, volumes
/// grow by one a bar.
inline BarReadResult market(const QString& name, int step = 1)
{
    std::vector<Bar> bars;
    for (std::int64_t day = dayNumber(20200101); bars.size() < 300; day += step) {
        if (weekdayOfDay(day) >= 5)
            continue;
        const auto index = static_cast<double>(bars.size());
        const double close = 100 + 10 * std::sin(index / 9);
        bars.push_back({dateOfDay(day), 0, close - 1, close + 2, close - 2, close, 1000 + index});
    }
    return {{}, BarSeries(name, bars), 0, 0, {}, {}};
}

/// Where the figures of a pane begin.
inline std::vector<std::int32_t> firstDates(const ChartPane& pane)
{
    std::vector<std::int32_t> dates;
    std::ranges::transform(*pane.paintLayer()->graphs().snapshot(), std::back_inserter(dates),
                           [](const auto& graph) { return graph->logicAxises().front().date; });
    return dates;
}
inline std::vector<std::int32_t> firstDates(ChartWindow& window)
{
    return firstDates(*window.chart().panes().front());
}

/// A shown chart of such bars, and its user's hand. The last bars fill 185.5 to 305.5.
class ChartTest : public ::testing::Test {
protected:
    ChartWindow& shown()
    {
        window.showBars(market(stock));
        window.resize(1000, 700);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        return window;
    }

    /// A pane's point (px, y upwards) in the window.
    QPointF at(QZPoint point) const { return user.positionOf(candles, point); }
    QPointF at(int bar, double price) const { return at({scale.xOf(bar), scale.yOf(price)}); }

    void drawSegment(int firstBar, int lastBar)
    {
        user.key(Qt::Key_1);
        user.click(at(firstBar, 100));
        user.click(at(lastBar, 105));
        ASSERT_FALSE(candles.paintLayer()->graphs().snapshot()->empty());
    }
    const std::vector<Bar>& bars() const { return candles.chartData()->series.bars(); }
    std::shared_ptr<QZPaintGraph> figure() const { return candles.paintLayer()->graphs().snapshot()->front(); }

    // A stock of its own, as its figures are kept.
    const QString stock = QString::fromLatin1(::testing::UnitTest::GetInstance()->current_test_info()->name());
    ChartWindow window;
    UserInput user{shown()};
    ChartSplitView& chart = window.chart();
    ChartViewport& viewport = chart.viewport();
    const ChartPane& candles = *chart.panes()[0];
    const ChartPane& volumes = *chart.panes()[1];
    const PaneScale& scale = candles.scale();
};
