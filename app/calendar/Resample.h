#pragma once

#include "app/bars/Bars.h"
#include "model/QZDrawingTypes.h"

#include <vector>

/// The cycles that a chart of these bars can have, in the order of a menu: of intraday bars the lines of as many days
/// as there are, up to ten; then candles of the bars' own period and of the longer ones.
std::vector<QZPaintCycle> cyclesFor(const BarSeries& series);

/// The bars that a chart of one of these cycles shows: for a line those of its last days, else the bars put together to
/// those of a longer period. Each has the moment of the first bar in it, which does not change
/// while others follow. Weeks begin on Monday. Minutes are counted from where a trading session of the series begins,
/// so that none reaches over a break or a night.
BarSeries resampled(const BarSeries& series, QZPaintCycle cycle);

/// "5-day line", "15 minutes", "Week".
QString cycleName(QZPaintCycle cycle);
