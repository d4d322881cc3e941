#include "app/chart/MacdPane.h"

#include "app/chart/HistogramPlot.h"
#include "app/chart/LinePlot.h"
#include "app/indicators/Indicators.h"

#include <algorithm>
#include <cmath>

namespace {

/// Free space above and below, as part of the values' range.
constexpr double padding = 0.1;

} // namespace

MacdPane::MacdPane(const ChartViewport& viewport, QWidget* parent)
    : ChartPane(viewport, parent),
      histogram_(new HistogramPlot(timeAxis(), valueAxis())),
      dif_(new LinePlot(timeAxis(), valueAxis())),
      dea_(new LinePlot(timeAxis(), valueAxis()))
{
    setObjectName(QStringLiteral("macd"));
}

void MacdPane::setChartData(std::shared_ptr<const ChartData> shown)
{
    Macd macd = macdOf(closesOf(shown->series));
    values_.clear();
    values_.reserve(macd.dif.size());
    for (std::size_t i = 0; i < macd.dif.size(); ++i) {
        const auto [low, high] = std::minmax({macd.dif[i], macd.dea[i], macd.histogram[i]});
        const Bar& bar = shown->series.bars()[i];
        values_.push_back({bar.date, bar.time, macd.dea[i], high, low, macd.dif[i], 0});
    }
    extremes_ = ExtremesTree(values_);
    dif_->setValues(std::move(macd.dif));
    dea_->setValues(std::move(macd.dea));
    histogram_->setValues(std::move(macd.histogram));
    ChartPane::setChartData(std::move(shown));
}

void MacdPane::applyTheme(const ChartTheme& theme)
{
    up_ = theme.candleUp;
    down_ = theme.candleDown;
    histogram_->setColors(up_, down_);
    dif_->setColor(theme.lines[1]);
    dea_->setColor(theme.lines[0]);
    ChartPane::applyTheme(theme);
}

PriceRange MacdPane::valueRange(int first, int last) const
{
    const auto from = static_cast<std::size_t>(std::max(first, 0));
    const std::size_t end = std::min(values_.size(), static_cast<std::size_t>(std::max(last + 1, 0)));
    const BarExtremes reached = from < end ? extremes_.over(values_, from, end) : BarExtremes();
    const double low = std::min(reached.low, 0.0);
    const double high = std::max(reached.high, 0.0);
    if (low == high) // a flat market, or no bar
        return {-1, 1};
    const double space = (high - low) * padding;
    return {low - space, high + space};
}

std::vector<AxisTick> MacdPane::valueTicks(double low, double high, int maxCount) const
{
    std::vector<AxisTick> ticks = priceTicks(low, high, maxCount);
    for (AxisTick& tick : ticks) {
        if (tick.position == 0)
            tick.label = QString::number(0);
    }
    return ticks;
}

// Prices say nothing of the size of their MACD: two or three digits of what is in view.
QString MacdPane::valueText(double value) const
{
    const int decimals = static_cast<int>(std::ceil(2 - std::log10(scale().high - scale().low)));
    return QString::number(value, 'f', std::clamp(decimals, 0, 8));
}

QString MacdPane::changeText(double from, double to) const
{
    return valueText(to - from);
}

std::vector<LegendPart> MacdPane::legendOf(int bar) const
{
    const auto index = static_cast<std::size_t>(bar);
    const double histogram = histogram_->values().at(index);
    return {{QStringLiteral("MACD(%1,%2,%3)").arg(Macd::shortLength).arg(Macd::longLength).arg(Macd::signalLength), {}},
            {QStringLiteral("DIF ") + valueText(dif_->values().at(index)), dif_->pen().color()},
            {QStringLiteral("DEA ") + valueText(dea_->values().at(index)), dea_->pen().color()},
            {QStringLiteral("MACD ") + valueText(histogram), histogram < 0 ? down_ : up_}};
}
