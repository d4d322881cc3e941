#include "app/chart/CandlePane.h"

#include "app/bars/BarStatistics.h"
#include "app/chart/BarPlots.h"
#include "app/chart/LinePlot.h"
#include "app/indicators/Indicators.h"
#include "platform/QZFont.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

/// Free space above and below the candles, as part of their range.
constexpr double padding = 0.07;
/// A week, two weeks, a month and a quarter of daily bars.
constexpr std::array averageLengths{5, 10, 20, 60};
/// The same where all prices are one, as part of the price.
constexpr double flatSpace = 0.01;

} // namespace

CandlePane::CandlePane(const ChartViewport& viewport, QWidget* parent)
    : ChartPane(viewport, parent),
      closeLine_(new LinePlot(timeAxis(), valueAxis())),
      dayAverage_(new LinePlot(timeAxis(), valueAxis())),
      lastPrice_(new QCPItemText(plot())),
      lastLine_(new QCPItemLine(plot()))
{
    setObjectName(QStringLiteral("candles"));
    setBarPlot(new CandlePlot(timeAxis(), valueAxis()));
    for (const int length : averageLengths) {
        averages_.push_back({length, new LinePlot(timeAxis(), valueAxis())});
        averages_.back().line->setMostBarsPerPixel(length);
    }
    lastPrice_->setClipToAxisRect(false);
    lastPrice_->setLayer(QStringLiteral("overlay"));
    lastPrice_->position->setAxes(timeAxis(), valueAxis());
    lastPrice_->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
    lastPrice_->position->setTypeY(QCPItemPosition::ptPlotCoords);
    lastPrice_->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lastPrice_->setPadding(QMargins(5, 2, 5, 2));
    lastPrice_->setFont(systemFont(11));
    for (QCPItemPosition* end : {lastLine_->start, lastLine_->end}) {
        end->setAxes(timeAxis(), valueAxis());
        end->setTypeX(QCPItemPosition::ptAxisRectRatio);
        end->setTypeY(QCPItemPosition::ptPlotCoords);
    }
}

void CandlePane::setChartData(std::shared_ptr<const ChartData> shown)
{
    const std::vector<Bar>& bars = shown->series.bars();
    const std::vector<double> closes = closesOf(shown->series);
    for (const Average& average : averages_)
        average.line->setValues(simpleMovingAverage(closes, average.length));
    closes_.clear();
    closeLine_->setValues({});
    dayAverage_->setValues({});
    if (shown->isLine) {
        closes_.reserve(bars.size());
        for (const Bar& bar : bars)
            closes_.push_back({bar.date, bar.time, bar.close, bar.close, bar.close, bar.close, bar.volume});
        closeLine_->setValues(closes);
        std::vector<double> averages = dayAveragePrice(bars);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            if (i == 0 || bars[i].date != bars[i - 1].date)
                averages[i] = std::nan("");
        }
        dayAverage_->setValues(std::move(averages));
    }
    ChartPane::setChartData(std::move(shown));
    showPlots();
}

void CandlePane::showPlots()
{
    const bool isLine = chartData()->isLine;
    barPlot()->setVisible(!isLine);
    closeLine_->setVisible(isLine);
    dayAverage_->setVisible(isLine);
    for (const Average& average : averages_)
        average.line->setVisible(showsAverages_ && !isLine);
}

void CandlePane::setAveragesVisible(bool visible)
{
    showsAverages_ = visible;
    showPlots();
}

void CandlePane::applyTheme(const ChartTheme& theme)
{
    up_ = theme.candleUp;
    down_ = theme.candleDown;
    barPlot()->setColors(up_, down_);
    for (std::size_t i = 0; i < averages_.size(); ++i)
        averages_[i].line->setColor(theme.lines.at(i));
    dayAverage_->setColor(theme.lines[0]);
    closeLine_->setColor(theme.lines[1]);
    lastPrice_->setColor(theme.background);
    ChartPane::applyTheme(theme);
}

PriceRange CandlePane::lineRange(int first, int last) const
{
    PriceRange range{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    const auto end = static_cast<std::size_t>(std::clamp(last + 1, 0, chartData()->series.size()));
    for (auto i = static_cast<std::size_t>(std::max(first, 0)); i < end; ++i) {
        for (const LinePlot* line : {closeLine_, dayAverage_}) {
            // Comparisons with not-a-number leave the range as it is.
            range.low = std::min(range.low, line->values()[i]);
            range.high = std::max(range.high, line->values()[i]);
        }
    }
    return range.low > range.high ? PriceRange{1, 2} : range;
}

PriceRange CandlePane::valueRange(int first, int last) const
{
    const PriceRange range = chartData()->isLine
                                 ? lineRange(first, last)
                                 : chartData()->series.priceRange(first, last).value_or(PriceRange{1, 2});
    const double height = range.high - range.low;
    const double price = std::max(std::abs(range.low), std::abs(range.high));
    // A flat market has no height of its own.
    const bool isFlat = height <= price * 1e-9;
    if (scale().isLogarithmic) {
        const double factor = isFlat ? 1 + flatSpace : std::pow(range.high / range.low, padding);
        return {range.low / factor, range.high * factor};
    }
    const double space = isFlat ? (price > 0 ? price * flatSpace : 1) : height * padding;
    return {range.low - space, range.high + space};
}

bool CandlePane::hasLogarithms() const
{
    const BarSeries& series = chartData()->series;
    const auto range = series.priceRange(0, series.size() - 1);
    return range && range->low > 0;
}

std::vector<AxisTick> CandlePane::valueTicks(double low, double high, int maxCount) const
{
    const int decimals = chartData()->series.priceDecimals();
    return scale().isLogarithmic ? logarithmicTicks(low, high, maxCount, decimals)
                                 : priceTicks(low, high, maxCount, decimals);
}

QString CandlePane::valueText(double value) const
{
    return priceText(value, chartData()->series.priceDecimals());
}

QString CandlePane::changeText(double from, double to) const
{
    return valueText(to - from);
}

std::vector<LegendPart> CandlePane::legendOf(int bar) const
{
    const BarSeries& series = chartData()->series;
    const Bar& shown = series.at(bar);
    const auto price = [this](QChar name, double value) {
        return LegendPart{name + QLatin1Char(' ') + valueText(value), {}};
    };
    std::vector<LegendPart> legend{{momentText(series.timeAt(bar), series.isIntraday()), {}}, price(u'C', shown.close)};
    if (const auto before = closeBefore(bar)) {
        const double change = shown.close - *before;
        const QString sign = change > 0 ? QStringLiteral("+") : QString();
        legend.push_back({sign + valueText(change) + QStringLiteral(" (") + sign +
                              QString::number(percentChange(*before, shown.close), 'f', 2) + QStringLiteral("%)"),
                          change < 0 ? down_ : up_});
    }
    const auto addLine = [this, &legend, bar](const QString& name, const LinePlot& line) {
        const double value = line.values().at(static_cast<std::size_t>(bar));
        if (!std::isnan(value))
            legend.push_back({name + QLatin1Char(' ') + valueText(value), line.pen().color()});
    };
    if (chartData()->isLine) {
        addLine(QStringLiteral("Avg"), *dayAverage_);
        return legend;
    }
    legend.insert(legend.end(), {price(u'O', shown.open), price(u'H', shown.high), price(u'L', shown.low)});
    for (const auto& [length, line] : averages_) {
        if (showsAverages_)
            addLine(QStringLiteral("MA%1").arg(length), *line);
    }
    return legend;
}

std::optional<double> CandlePane::closeBefore(int bar) const
{
    const BarSeries& series = chartData()->series;
    const int before = (chartData()->isLine ? series.lowerBound(series.at(bar).date, 0) : bar) - 1;
    return before < 0 ? chartData()->closeBefore : std::optional(series.at(before).close);
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
    lastLine_->setVisible(price.has_value());
    if (!price)
        return;
    const Bar& bar = chartData()->series.bars().back();
    lastPrice_->position->setCoords(1.0, *price);
    lastPrice_->setText(valueText(*price));
    const QColor color = bar.close >= bar.open ? up_ : down_;
    lastPrice_->setBrush(color);
    lastLine_->start->setCoords(0.0, *price);
    lastLine_->end->setCoords(1.0, *price);
    lastLine_->setPen(QPen(color, 1, Qt::DotLine));
}
