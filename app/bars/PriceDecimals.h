#pragma once

#include "app/bars/Bars.h"

#include <span>

/// The decimals that prices like those of `bars` are written with: as many as their smallest step needs, at least two,
/// but none for whole numbers from 1000 on. Where nearly all prices have more digits than anybody quotes, as after an
/// adjustment for dividends, two, or as many as show four digits of a price below 1.
int priceDecimals(std::span<const Bar> bars);
