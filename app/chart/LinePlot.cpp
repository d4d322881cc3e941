#include "app/chart/LinePlot.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

/// What a pixel column needs of its bars.
struct Column {
    LinePoint first;
    LinePoint lowest;
    LinePoint highest;
    LinePoint last;

    void add(LinePoint point)
    {
        if (point.value < lowest.value)
            lowest = point;
        if (point.value > highest.value)
            highest = point;
        last = point;
    }

    void appendTo(std::vector<LinePoint>& run) const
    {
        const bool falls = highest.bar < lowest.bar;
        for (const LinePoint point : {first, falls ? highest : lowest, falls ? lowest : highest, last}) {
            if (run.empty() || run.back() != point)
                run.push_back(point);
        }
    }
};

} // namespace

std::vector<std::vector<LinePoint>> lineRuns(std::span<const double> values, int first, int last, int barsPerColumn)
{
    std::vector<std::vector<LinePoint>> runs;
    std::optional<Column> column;
    const auto endColumn = [&] {
        if (column)
            column->appendTo(runs.back());
        column.reset();
    };
    bool isConnected = false;
    for (int bar = first; bar <= last; ++bar) {
        const LinePoint point{bar, values[static_cast<std::size_t>(bar)]};
        // Columns begin at fixed bars, so that the line does not flicker while it scrolls.
        if (bar % barsPerColumn == 0 || std::isnan(point.value))
            endColumn();
        if (std::isnan(point.value)) {
            isConnected = false;
            continue;
        }
        if (!isConnected)
            runs.emplace_back();
        isConnected = true;
        if (column)
            column->add(point);
        else
            column = Column{point, point, point, point};
    }
    endColumn();
    return runs;
}

void LinePlot::draw(QCPPainter* painter)
{
    const QCPRange range = keyAxis()->range();
    const double barsPerPixel = range.size() / std::max(1, keyAxis()->axisRect()->width());
    if (mostBarsPerPixel_ > 0 && barsPerPixel > mostBarsPerPixel_)
        return;
    // A bar more on both sides, to which the line leaves the plot.
    const int first = std::max(0, static_cast<int>(std::floor(range.lower)) - 1);
    const int last = std::min(static_cast<int>(values_.size()) - 1, static_cast<int>(std::ceil(range.upper)) + 1);
    const int barsPerColumn = std::max(1, static_cast<int>(barsPerPixel));
    // QCustomPlot's own switch also moves the painter, by an amount that is another one in a picture than on the
    // screen.
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen());
    constexpr QPointF middleOfPixel(0.5, 0.5);
    for (const auto& run : lineRuns(values_, first, last, barsPerColumn)) {
        QPolygonF line;
        line.reserve(static_cast<qsizetype>(run.size()));
        for (const LinePoint point : run)
            line << QPointF(keyAxis()->coordToPixel(point.bar), valueAxis()->coordToPixel(point.value)) + middleOfPixel;
        painter->drawPolyline(line);
    }
}
