#pragma once

#include "app/bars/Bars.h"
#include "model/QZDrawingTypes.h"

/// The period of the bars, by the distance at which most of them follow each other: that of daily bars for a series too
/// short to tell. Figures are kept apart by it.
QZPaintCycle cycleOf(const BarSeries& series);

/// Whether a chart of this cycle is a line of the closes of some days' intraday bars, rather than candles.
constexpr bool isLineCycle(QZPaintCycle cycle)
{
    return cycle <= QZPCRealTimeCycle10Day;
}
