#pragma once

#include "app/chart/ChartPane.h"

class LinePlot;
class QCPItemLine;
class QCPItemText;

/// Candles with their moving averages, or the line of closes with each day's average price; the last price is tagged on
/// the axis. To the drawing tools a bar of the line has no price but its close.
class CandlePane final : public ChartPane {
public:
    explicit CandlePane(const ChartViewport& viewport, QWidget* parent = nullptr);

    void setChartData(std::shared_ptr<const ChartData> shown) override;
    void applyTheme(const ChartTheme& theme) override;
    /// The averages of candles' closes, which show at first; they have no say in the range of the values.
    void setAveragesVisible(bool visible);
    /// Where no price of the whole series is zero or below, whatever is in sight.
    [[nodiscard]] bool hasLogarithms() const override;

protected:
    [[nodiscard]] std::span<const Bar> plottedBars() const override
    {
        return chartData()->isLine ? closes_ : chartData()->series.bars();
    }
    [[nodiscard]] PriceRange valueRange(int first, int last) const override;
    [[nodiscard]] std::vector<AxisTick> valueTicks(double low, double high, int maxCount) const override;
    [[nodiscard]] QString valueText(double value) const override;
    [[nodiscard]] QString changeText(double from, double to) const override;
    [[nodiscard]] std::vector<LegendPart> legendOf(int bar) const override;
    [[nodiscard]] std::optional<double> taggedValue() const override;
    void updateDecoration() override;

private:
    struct Average {
        int length = 0;           ///< bars
        LinePlot* line = nullptr; ///< owned by the plot
    };

    void showPlots();
    /// Of closes and average prices.
    [[nodiscard]] PriceRange lineRange(int first, int last) const;
    /// What a bar's change is told from: the close of the bar before, on a line that of the day before.
    [[nodiscard]] std::optional<double> closeBefore(int bar) const;

    std::vector<Average> averages_;
    bool showsAverages_ = true;
    LinePlot* closeLine_;     // owned by the plot, as is the other one
    LinePlot* dayAverage_;    ///< without each day's first bar, so that the days are apart
    std::vector<Bar> closes_; ///< of a line: open, high, low and close are the close
    QCPItemText* lastPrice_;  // owned by the plot
    QCPItemLine* lastLine_;   // from edge to edge, owned by the plot
    QColor up_;
    QColor down_;
};
