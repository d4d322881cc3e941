#pragma once

#include "app/chart/PanePlot.h"

#include <span>
#include <vector>

/// A place on a line: a bar and its value.
struct LinePoint {
    int bar = 0;
    double value = 0;
    bool operator==(const LinePoint&) const = default;
};

/// The line through the values of the bars `first` to `last` as connected runs, which end where a value is
/// not-a-number. Of every `barsPerColumn` bars only the first, the lowest, the highest and the last are kept: drawn
/// within one pixel column they look the same as all (U. Jugel et al., M4, 2014).
std::vector<std::vector<LinePoint>> lineRuns(std::span<const double> values, int first, int last, int barsPerColumn);

/// Paints a thin line through one value per bar.
class LinePlot final : public PanePlot {
public:
    using PanePlot::PanePlot;

    /// One for each bar of the chart; not-a-number where there is none.
    void setValues(std::vector<double> values) { values_ = std::move(values); }
    [[nodiscard]] const std::vector<double>& values() const { return values_; }
    void setColor(const QColor& color) { setPen(QPen(color, 1)); }
    /// Does not paint the line while more bars than this share a pixel column; 0 for always. An average of few bars
    /// would hide the bars themselves there.
    void setMostBarsPerPixel(int bars) { mostBarsPerPixel_ = bars; }

protected:
    void draw(QCPPainter* painter) override;

private:
    std::vector<double> values_;
    int mostBarsPerPixel_ = 0;
};
