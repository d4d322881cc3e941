#pragma once

#include "app/bars/Bars.h"
#include "app/calendar/TradingCalendar.h"

#include <utility>

/// What a chart shows: the bars and the time axis they lie on. Panes share one and never change it.
struct ChartData {
    ChartData() = default;
    explicit ChartData(BarSeries bars) : series(std::move(bars)), calendar(series) {}

    BarSeries series;
    TradingCalendar calendar;
};
