#include "app/chart/BarPlots.h"

#include <algorithm>
#include <cmath>

BarPlot::BarPlot(QCPAxis* keyAxis, QCPAxis* valueAxis) : PanePlot(keyAxis, valueAxis)
{
    setAntialiased(false);
}

void BarPlot::setColors(const QColor& up, const QColor& down)
{
    up_ = up;
    down_ = down;
}

void BarPlot::draw(QCPPainter* painter)
{
    if (!data_)
        return;
    const QCPRange range = keyAxis()->range();
    const double barWidth = keyAxis()->axisRect()->width() / range.size();
    if (barWidth < 1) {
        drawSharedColumns(*painter);
        return;
    }
    const int first = std::max(0, static_cast<int>(std::floor(range.lower)));
    const int last = std::min(data_->series.size() - 1, static_cast<int>(std::ceil(range.upper)));
    const int width = barBodyWidth();
    for (int i = first; i <= last; ++i)
        drawColored(*painter, data_->series.at(i), {static_cast<int>(std::floor(keyAxis()->coordToPixel(i))), width});
}

void BarPlot::drawSharedColumns(QCPPainter& painter) const
{
    const QRect plot = keyAxis()->axisRect()->rect();
    // The first bar whose middle is not left of `x`.
    const auto barFrom = [this](int x) { return static_cast<int>(std::ceil(keyAxis()->pixelToCoord(x))); };
    int first = barFrom(plot.left());
    for (int x = plot.left(); x <= plot.right(); ++x) {
        const int next = barFrom(x + 1);
        if (const auto outline = data_->series.outline(first, next - 1))
            drawColored(painter, *outline, {x, 1});
        first = next;
    }
}

void BarPlot::drawColored(QCPPainter& painter, const Bar& bar, Column column) const
{
    drawBar(painter, bar, column, bar.close >= bar.open ? up_ : down_);
}

void CandlePlot::drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const
{
    const int high = yOf(bar.high);
    const int low = yOf(bar.low);
    painter.fillRect(column.center, high, 1, low - high + 1, color);
    const int top = yOf(std::max(bar.open, bar.close));
    const int bottom = yOf(std::min(bar.open, bar.close));
    painter.fillRect(column.center - column.width / 2, top, column.width, bottom - top + 1, color);
}

void VolumePlot::drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const
{
    if (!(bar.volume > 0))
        return;
    const int top = yOf(bar.volume);
    painter.fillRect(column.center - column.width / 2, top, column.width, yOf(0) - top + 1, color);
}
