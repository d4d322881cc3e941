#pragma once

#include "app/bars/Bars.h"

#include <optional>

/// What a list of stocks tells of one.
struct Quote {
    double last = 0;    ///< the newest bar's close
    double percent = 0; ///< its change against the close of the day before, of a first day against its open; percent
};

/// Nothing without bars. Of longer bars than daily ones the day is the bar.
std::optional<Quote> quoteOf(const BarSeries& series);
