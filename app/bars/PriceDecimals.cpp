#include "app/bars/PriceDecimals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr int usualDecimals = 2;
constexpr int mostDecimals = 12;
constexpr int mostDigits = 7; // of a quoted price with more than the usual decimals

/// Decimals after which nothing follows but what a binary fraction cannot hold; one more than the most if there are
/// more.
int decimalsOf(double price)
{
    constexpr double rounding = 1e-12;
    double scaled = price;
    int decimals = 0;
    while (decimals <= mostDecimals && std::abs(scaled - std::round(scaled)) > std::abs(scaled) * rounding)
        scaled = price * std::pow(10.0, ++decimals);
    return decimals;
}

/// The decimals that nearly all prices make do with: a few odd ones do not count.
int usualDecimalsOf(std::span<const Bar> bars)
{
    constexpr std::size_t enough = 2000;
    constexpr std::size_t oddPart = 50; // one in so many
    std::array<std::size_t, mostDecimals + 2> counts{};
    std::size_t total = 0;
    for (std::size_t i = 0; i < bars.size(); i += bars.size() / enough + 1) {
        for (const double price : {bars[i].open, bars[i].high, bars[i].low, bars[i].close}) {
            ++counts.at(static_cast<std::size_t>(decimalsOf(price)));
            ++total;
        }
    }
    std::size_t decimals = 0;
    std::size_t covered = counts.front();
    while (covered < total - total / oddPart)
        covered += counts.at(++decimals);
    return static_cast<int>(decimals);
}

} // namespace

int priceDecimals(std::span<const Bar> bars)
{
    if (bars.empty())
        return usualDecimals;
    const double price = std::abs(bars.back().close);
    const int decimals = usualDecimalsOf(bars);
    if (decimals == 0 && price >= 1000)
        return 0;
    if (decimals <= usualDecimals)
        return usualDecimals;
    const int wholeDigits = price > 0 ? static_cast<int>(std::floor(std::log10(price))) + 1 : 1;
    if (wholeDigits + decimals <= mostDigits)
        return decimals;
    return std::clamp(4 - wholeDigits, usualDecimals, price < 1 ? mostDecimals : usualDecimals);
}
