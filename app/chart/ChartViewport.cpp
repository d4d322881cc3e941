#include "app/chart/ChartViewport.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double usualSpan = 120;
constexpr double smallestSpan = 10;
/// Part of the screen that stays filled with bars at the ends.
constexpr double filledPart = 1.0 / 3.0;
/// Free space beside the first and the last bar when one goes there (bars).
constexpr double endGap = 6;

} // namespace

double ChartViewport::firstReachable() const
{
    return -0.5 - span_ * (1 - filledPart);
}

double ChartViewport::lastReachable() const
{
    return barCount_ - 0.5 + span_ * (1 - filledPart);
}

void ChartViewport::reset(int barCount)
{
    barCount_ = barCount;
    span_ = std::clamp(barCount + 2 * endGap, 2 * smallestSpan, usualSpan);
    setRange(barCount - 0.5 + endGap - span_, span_);
}

void ChartViewport::scrollBy(double bars)
{
    setRange(first_ + bars, span_);
}

void ChartViewport::zoom(double factor, double anchor)
{
    const double largestSpan = std::max(usualSpan, barCount_ * 1.5);
    const double span = std::clamp(span_ * factor, smallestSpan, largestSpan);
    setRange(anchor - (anchor - first_) * span / span_, span);
}

void ChartViewport::show(int first, int last)
{
    setRange(first - 0.5, std::max(smallestSpan, last - first + 1.0));
}

void ChartViewport::showFirstBar()
{
    setRange(-0.5 - endGap, span_);
}

void ChartViewport::showLastBar()
{
    setRange(barCount_ - 0.5 + endGap - span_, span_);
}

void ChartViewport::setRange(double first, double span)
{
    if (std::isnan(first) || std::isnan(span))
        return;
    span_ = span;
    first_ = std::clamp(first, firstReachable(), lastReachable() - span_);
    Q_EMIT changed();
}
