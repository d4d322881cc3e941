#include "app/chart/CandlePane.h"

#include "app/bars/BarStatistics.h"
#include "app/chart/BarPlots.h"
#include "platform/QZFont.h"

namespace {

/// Free space above and below the candles, as part of their range.
constexpr double padding = 0.07;

} // namespace

CandlePane::CandlePane(const ChartViewport& viewport, QWidget* parent)
    : ChartPane(viewport, parent), lastPrice_(new QCPItemText(plot()))
{
    setObjectName(QStringLiteral("candles"));
    setBarPlot(new CandlePlot(timeAxis(), valueAxis()));
    lastPrice_->setClipToAxisRect(false);
    lastPrice_->setLayer(QStringLiteral("overlay"));
    lastPrice_->position->setAxes(timeAxis(), valueAxis());
    lastPrice_->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
    lastPrice_->position->setTypeY(QCPItemPosition::ptPlotCoords);
    lastPrice_->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lastPrice_->setPadding(QMargins(5, 2, 5, 2));
    lastPrice_->setFont(systemFont(11));
}

void CandlePane::applyTheme(const ChartTheme& theme)
{
    up_ = theme.candleUp;
    down_ = theme.candleDown;
    barPlot()->setColors(up_, down_);
    lastPrice_->setColor(theme.background);
    ChartPane::applyTheme(theme);
}

PriceRange CandlePane::valueRange(int first, int last) const
{
    const PriceRange range = chartData()->series.priceRange(first, last).value_or(PriceRange{0, 1});
    const double height = range.high - range.low;
    // A flat market has no height of its own.
    const double space = height > 0 ? height * padding : std::max(range.high * 0.01, 1e-6);
    return {range.low - space, range.high + space};
}

std::vector<AxisTick> CandlePane::valueTicks(double low, double high, int maxCount) const
{
    return priceTicks(low, high, maxCount);
}

QString CandlePane::valueText(double value) const
{
    return priceText(value);
}

QString CandlePane::changeText(double from, double to) const
{
    return priceChangeText(to - from, from);
}

std::vector<LegendPart> CandlePane::legendOf(int bar) const
{
    const BarSeries& series = chartData()->series;
    const Bar& shown = series.at(bar);
    const auto price = [](QChar name, double value) {
        return LegendPart{name + QLatin1Char(' ') + priceText(value), {}};
    };
    std::vector<LegendPart> legend{{momentText(series.timeAt(bar), series.isIntraday()), {}}, price(u'C', shown.close)};
    if (bar > 0) {
        const double before = series.at(bar - 1).close;
        const double change = shown.close - before;
        const QString sign = change > 0 ? QStringLiteral("+") : QString();
        legend.push_back({sign + priceChangeText(change, shown.close) + QStringLiteral(" (") + sign +
                              QString::number(percentChange(before, shown.close), 'f', 2) + QStringLiteral("%)"),
                          change < 0 ? down_ : up_});
    }
    legend.insert(legend.end(), {price(u'O', shown.open), price(u'H', shown.high), price(u'L', shown.low)});
    return legend;
}

std::optional<double> CandlePane::taggedValue() const
{
    if (chartData()->series.isEmpty())
        return std::nullopt;
    const double price = chartData()->series.bars().back().close;
    return price > scale().low && price < scale().high ? std::optional(price) : std::nullopt;
}

void CandlePane::updateDecoration()
{
    const std::optional<double> price = taggedValue();
    lastPrice_->setVisible(price.has_value());
    if (!price)
        return;
    const Bar& bar = chartData()->series.bars().back();
    lastPrice_->position->setCoords(1.0, *price);
    lastPrice_->setText(priceText(*price));
    lastPrice_->setBrush(bar.close >= bar.open ? up_ : down_);
}
