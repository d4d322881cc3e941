#pragma once

#include "app/chart/PanePlot.h"

#include <vector>

/// Paints one column per bar from zero up or down to its value. Bars that share a pixel column are painted as one, from
/// the lowest to the highest of their values.
class HistogramPlot final : public PanePlot {
public:
    using PanePlot::PanePlot;

    /// One for each bar of the chart, all numbers.
    void setValues(std::vector<double> values) { values_ = std::move(values); }
    [[nodiscard]] const std::vector<double>& values() const { return values_; }
    void setColors(const QColor& positive, const QColor& negative);

protected:
    void draw(QCPPainter* painter) override;

private:
    void drawColumn(QCPPainter& painter, int center, double low, double high) const;

    std::vector<double> values_;
    QColor positive_;
    QColor negative_;
};
