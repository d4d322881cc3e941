#pragma once

#include "app/bars/Bars.h"

#include <vector>

/// A turning point of the market.
struct Swing {
    int bar = 0;
    bool isHigh = false;
    double price = 0; ///< the bar's high or low
};

/// The bars within `first` to `last` (loaded ones) whose high, or low, no bar up to `reach` bars beside them exceeds,
/// in order of time. Of equal ones the first counts.
std::vector<Swing> findSwings(const BarSeries& series, int first, int last, int reach);
