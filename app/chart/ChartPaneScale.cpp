#include "app/chart/ChartPane.h"

#include <algorithm>
#include <cmath>

namespace {

/// How many times the range that fits the bars may become shorter or longer by stretching.
constexpr double strongestStretch = 200;
/// Below this part of the values themselves a double no longer tells the pixels apart.
constexpr double finestPart = 1e-9;
/// Beyond it the plot's axis refuses a range.
constexpr double farthestValue = 1e200;

} // namespace

PriceRange ChartPane::fittedRange() const
{
    const int first = static_cast<int>(std::ceil(viewport_.first() - 0.5));
    const int last = static_cast<int>(std::floor(viewport_.last() + 0.5));
    return valueRange(first, last);
}

void ChartPane::setLogarithmic(bool isLogarithmic)
{
    isLogarithmWanted_ = isLogarithmic;
    if (isLogarithmic && ownRange_ && ownRange_->low <= 0)
        ownRange_.reset();
}

void ChartPane::stretchValues(double factor)
{
    const PriceRange fitted = fittedRange();
    const double bottom = scale_.level(scale_.low);
    const double top = scale_.level(scale_.high);
    const double usual = scale_.level(fitted.high) - scale_.level(fitted.low);
    const double height = std::clamp((top - bottom) / factor, std::min(usual / strongestStretch, top - bottom),
                                     std::max(usual * strongestStretch, top - bottom));
    const double middle = stretchesFromBottom() ? bottom + height / 2 : (bottom + top) / 2;
    setOwnRange(middle - height / 2, middle + height / 2);
}

void ChartPane::shiftValues(double pixels)
{
    const double levels = scale_.level(scale_.valueAt(scale_.plot.y + pixels)) - scale_.level(scale_.low);
    setOwnRange(scale_.level(scale_.low) - levels, scale_.level(scale_.high) - levels);
}

void ChartPane::setOwnRange(double bottom, double top)
{
    const PriceRange range{scale_.valueOf(bottom), scale_.valueOf(top)};
    const double farthest = std::max(std::abs(range.low), std::abs(range.high));
    if (range.high - range.low > finestPart * farthest && farthest < farthestValue)
        ownRange_ = range;
}

bool ChartPane::isOnValueAxis(QZPoint point) const
{
    return point.x >= scale_.plot.maxX() && point.x < width() && point.y >= scale_.plot.minY() &&
           point.y < scale_.plot.maxY();
}
