#pragma once

#include "app/bars/Bars.h"
#include "app/calendar/ChartCycle.h"
#include "app/calendar/Resample.h"
#include "app/calendar/TradingCalendar.h"

#include <optional>
#include <utility>

/// What a chart shows: the bars and the time axis they lie on. Panes share one and never change it.
struct ChartData {
    ChartData() = default;
    explicit ChartData(BarSeries bars) : series(std::move(bars)), calendar(series) {}
    /// The bars as a chart of one of their cycles shows them (see cyclesFor()).
    ChartData(const BarSeries& bars, QZPaintCycle cycle)
        : series(cycle == cycleOf(bars) ? bars : resampled(bars, cycle)),
          calendar(series, isLineCycle(cycle) ? bars : series),
          isLine(isLineCycle(cycle))
    {
        if (isLine && series.size() < bars.size())
            closeBefore = bars.at(bars.size() - series.size() - 1).close;
    }

    BarSeries series;
    TradingCalendar calendar;
    bool isLine = false;               ///< of the closes of some days, instead of candles
    std::optional<double> closeBefore; ///< of a line: the close of the day before its first one
};
