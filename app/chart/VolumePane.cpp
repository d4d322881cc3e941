#include "app/chart/VolumePane.h"

#include "app/chart/BarPlots.h"

namespace {

constexpr double spaceAbove = 1.12;

} // namespace

VolumePane::VolumePane(const ChartViewport& viewport, QWidget* parent) : ChartPane(viewport, parent)
{
    setObjectName(QStringLiteral("volume"));
    setBarPlot(new VolumePlot(timeAxis(), valueAxis()));
}

void VolumePane::setChartData(std::shared_ptr<const ChartData> shown)
{
    volumes_.clear();
    for (const Bar& bar : shown->series.bars())
        volumes_.push_back({bar.date, bar.time, bar.volume, bar.volume, bar.volume, bar.volume, 0});
    ChartPane::setChartData(std::move(shown));
}

void VolumePane::applyTheme(const ChartTheme& theme)
{
    barPlot()->setColors(theme.volumeUp, theme.volumeDown);
    ChartPane::applyTheme(theme);
}

PriceRange VolumePane::valueRange(int first, int last) const
{
    const double highest = chartData()->series.maxVolume(first, last);
    return {0, highest > 0 ? highest * spaceAbove : 1};
}

std::vector<AxisTick> VolumePane::valueTicks(double low, double high, int maxCount) const
{
    return volumeTicks(low, high, maxCount);
}

QString VolumePane::valueText(double value) const
{
    return volumeText(value);
}

std::vector<LegendPart> VolumePane::legendOf(int bar) const
{
    return {{QStringLiteral("V ") + volumeText(chartData()->series.at(bar).volume), {}}};
}

QString VolumePane::changeText(double from, double to) const
{
    return volumeText(to - from);
}
