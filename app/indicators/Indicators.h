#pragma once

#include "app/bars/Bars.h"

#include <span>
#include <vector>

/// What a chart draws beside its bars. Every result has one number for each value it is made of, oldest first;
/// not-a-number where there is none yet. Values are finite.

/// Arithmetic mean of a value and the `length` - 1 before it; none before the first `length` values. `length` is at
/// least 1.
std::vector<double> simpleMovingAverage(std::span<const double> values, int length);

/// Exponential smoothing with the weight 2 / (length + 1) for the newest value (R. G. Brown). It begins with the first
/// value itself, so there is a number from the start; it depends on the beginning for about three lengths.
std::vector<double> exponentialMovingAverage(std::span<const double> values, int length);

/// Moving average convergence/divergence of 12, 26 and 9 values (G. Appel): `dif` is the short exponential average less
/// the long one, `dea` the exponential average of `dif`, also called the signal. The histogram (T. Aspray) is twice
/// their difference, as usual where the lines bear these names. With averages that begin with the first value all three
/// begin with 0.
struct Macd {
    static constexpr int shortLength = 12;
    static constexpr int longLength = 26;
    static constexpr int signalLength = 9;

    std::vector<double> dif;
    std::vector<double> dea;
    std::vector<double> histogram;
};
Macd macdOf(std::span<const double> values);

/// Volume-weighted average price since the day's first bar: the sum of (high + low + close) / 3 times volume, through
/// the sum of volumes (VWAP). None until something was traded on the day.
std::vector<double> dayAveragePrice(std::span<const Bar> bars);

std::vector<double> closesOf(const BarSeries& series);
