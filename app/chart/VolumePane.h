#pragma once

#include "app/chart/ChartPane.h"

/// Volumes as columns from zero. To the drawing tools a bar's only price here is its volume.
class VolumePane final : public ChartPane {
public:
    explicit VolumePane(const ChartViewport& viewport, QWidget* parent = nullptr);

    /// All but the box of prices and costs, which volumes have none of.
    [[nodiscard]] std::int64_t enableTypes() const override { return ChartPane::enableTypes() & ~QZSTBoxLine; }
    void setChartData(std::shared_ptr<const ChartData> shown) override;
    void applyTheme(const ChartTheme& theme) override;

protected:
    [[nodiscard]] std::span<const Bar> plottedBars() const override { return volumes_; }
    [[nodiscard]] PriceRange valueRange(int first, int last) const override;
    [[nodiscard]] std::vector<AxisTick> valueTicks(double low, double high, int maxCount) const override;
    [[nodiscard]] QString valueText(double value) const override;
    [[nodiscard]] QString changeText(double from, double to) const override;
    [[nodiscard]] std::vector<LegendPart> legendOf(int bar) const override;
    [[nodiscard]] bool stretchesFromBottom() const override { return true; }

private:
    std::vector<Bar> volumes_; ///< open, high, low and close are the volume, which they are not weighted with again
};
