#pragma once

#include "app/chart/ChartPane.h"

class LinePlot;
class QCPItemText;

/// Candles with their moving averages, and the last price tagged on the axis.
class CandlePane final : public ChartPane {
public:
    explicit CandlePane(const ChartViewport& viewport, QWidget* parent = nullptr);

    void setChartData(std::shared_ptr<const ChartData> shown) override;
    void applyTheme(const ChartTheme& theme) override;
    /// The averages of closes, which show at first; they have no say in the range of the values.
    void setAveragesVisible(bool visible);
    /// Where no price of the whole series is zero or below, whatever is in sight.
    [[nodiscard]] bool hasLogarithms() const override;

protected:
    [[nodiscard]] std::span<const Bar> plottedBars() const override { return chartData()->series.bars(); }
    [[nodiscard]] PriceRange valueRange(int first, int last) const override;
    [[nodiscard]] std::vector<AxisTick> valueTicks(double low, double high, int maxCount) const override;
    [[nodiscard]] QString valueText(double value) const override;
    [[nodiscard]] QString changeText(double from, double to) const override;
    [[nodiscard]] std::vector<LegendPart> legendOf(int bar) const override;
    [[nodiscard]] std::optional<double> taggedValue() const override;
    void updateDecoration() override;

private:
    struct Average {
        int length = 0; ///< bars
        LinePlot* line; ///< owned by the plot
    };

    std::vector<Average> averages_;
    bool showsAverages_ = true;
    QCPItemText* lastPrice_; // owned by the plot
    QColor up_;
    QColor down_;
};
