#pragma once

#include "app/bars/ExtremesTree.h"
#include "app/chart/ChartPane.h"

#include <vector>

class HistogramPlot;
class LinePlot;

/// MACD of the closes: the histogram as columns from zero, DIF and DEA as lines. To the drawing tools a bar closes here
/// at DIF, opens at DEA, and reaches from the lowest to the highest of the three values.
class MacdPane final : public ChartPane {
public:
    explicit MacdPane(const ChartViewport& viewport, QWidget* parent = nullptr);

    /// All but the box of prices and costs.
    [[nodiscard]] std::int64_t enableTypes() const override { return ChartPane::enableTypes() & ~QZSTBoxLine; }
    void setChartData(std::shared_ptr<const ChartData> shown) override;
    void applyTheme(const ChartTheme& theme) override;

protected:
    [[nodiscard]] std::span<const Bar> plottedBars() const override { return values_; }
    [[nodiscard]] PriceRange valueRange(int first, int last) const override;
    [[nodiscard]] std::vector<AxisTick> valueTicks(double low, double high, int maxCount) const override;
    [[nodiscard]] QString valueText(double value) const override;
    [[nodiscard]] QString changeText(double from, double to) const override;
    [[nodiscard]] std::vector<LegendPart> legendOf(int bar) const override;

private:
    HistogramPlot* histogram_; // the plots are owned by the plot widget
    LinePlot* dif_;
    LinePlot* dea_;
    std::vector<Bar> values_;
    ExtremesTree extremes_; ///< of `values_`
    QColor up_;
    QColor down_;
};
