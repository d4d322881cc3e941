#include "app/chart/VolumePane.h"

#include "app/chart/BarPlots.h"

namespace {

constexpr double spaceAbove = 1.12;

/// What `color` looks like on `ground`. Opaque columns are filled many times faster.
QColor opaque(const QColor& color, const QColor& ground)
{
    const auto mixed = [part = color.alphaF()](float over, float under) { return part * over + (1 - part) * under; };
    return QColor::fromRgbF(mixed(color.redF(), ground.redF()), mixed(color.greenF(), ground.greenF()),
                            mixed(color.blueF(), ground.blueF()));
}

} // namespace

VolumePane::VolumePane(const ChartViewport& viewport, QWidget* parent) : ChartPane(viewport, parent)
{
    setObjectName(QStringLiteral("volume"));
    setBarPlot(new VolumePlot(timeAxis(), valueAxis()));
}

void VolumePane::setChartData(std::shared_ptr<const ChartData> shown)
{
    volumes_.clear();
    volumes_.reserve(shown->series.bars().size());
    for (const Bar& bar : shown->series.bars())
        volumes_.push_back({bar.date, bar.time, bar.volume, bar.volume, bar.volume, bar.volume, 0});
    ChartPane::setChartData(std::move(shown));
}

void VolumePane::applyTheme(const ChartTheme& theme)
{
    barPlot()->setColors(opaque(theme.volumeUp, theme.background), opaque(theme.volumeDown, theme.background));
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
