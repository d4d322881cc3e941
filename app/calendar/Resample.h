#pragma once

#include "app/bars/Bars.h"
#include "model/QZDrawingTypes.h"

#include <vector>

/// The candle periods that bars of `base` can be put together to: `base` itself first, then the longer ones.
std::vector<QZPaintCycle> longerCycles(QZPaintCycle base);

/// The bars put together to those of a longer period. Each has the moment of the first bar in it, which does not change
/// while others follow. Weeks begin on Monday. Minutes are counted from where a trading session of the series begins,
/// so that none reaches over a break or a night.
BarSeries resampled(const BarSeries& series, QZPaintCycle cycle);

/// "15 minutes", "Week".
QString cycleName(QZPaintCycle cycle);
