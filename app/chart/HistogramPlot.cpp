#include "app/chart/HistogramPlot.h"

#include <algorithm>
#include <cmath>

void HistogramPlot::setColors(const QColor& positive, const QColor& negative)
{
    positive_ = positive;
    negative_ = negative;
}

void HistogramPlot::draw(QCPPainter* painter)
{
    const QCPRange range = keyAxis()->range();
    const int first = std::max(0, static_cast<int>(std::floor(range.lower)));
    const int last = std::min(static_cast<int>(values_.size()) - 1, static_cast<int>(std::ceil(range.upper)));
    // Asking the axis for every bar would take longer than everything else when a million of them are visible.
    const double origin = keyAxis()->coordToPixel(0);
    const double barWidth = keyAxis()->coordToPixel(1) - origin;
    const auto pixelOf = [origin, barWidth](int bar) { return static_cast<int>(std::floor(origin + bar * barWidth)); };
    for (int bar = first; bar <= last;) {
        const int pixel = pixelOf(bar);
        double low = 0;
        double high = 0;
        for (; bar <= last && pixelOf(bar) == pixel; ++bar) {
            const double value = values_[static_cast<std::size_t>(bar)];
            low = std::min(low, value);
            high = std::max(high, value);
        }
        drawColumn(*painter, pixel, low, high);
    }
}

void HistogramPlot::drawColumn(QCPPainter& painter, int center, double low, double high) const
{
    const int width = barBodyWidth();
    const int left = center - width / 2;
    const int zero = yOf(0);
    if (high > 0)
        painter.fillRect(left, yOf(high), width, zero - yOf(high) + 1, positive_);
    if (low < 0)
        painter.fillRect(left, zero, width, yOf(low) - zero + 1, negative_);
}
