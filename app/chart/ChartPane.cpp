#include "app/chart/ChartPane.h"

#include "app/chart/BarPlots.h"
#include "platform/QZFont.h"

#include <QFontMetrics>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double fontSize = 11;
constexpr int leftMargin = 8;
constexpr int topMargin = 6;
constexpr int bottomMargin = 2;
constexpr int dateAxisHeight = 24;
constexpr int labelGap = 6;
constexpr int tickLength = 4;
/// Widths are whole multiples of this, so that the chart does not twitch whenever a label changes.
constexpr int axisWidthStep = 8;
constexpr double valueTickDistance = 44;
constexpr double dateTickDistance = 84;

void styleAxis(QCPAxis& axis, const ChartTheme& theme)
{
    const QPen line(theme.grid, 1);
    axis.setBasePen(line);
    axis.setTickPen(line);
    axis.setSubTicks(false);
    axis.setTickLabelColor(theme.axisText);
    axis.setTickLabelFont(systemFont(fontSize));
    axis.setTickLengthIn(0);
    axis.setTickLengthOut(tickLength);
    axis.setTickLabelPadding(labelGap - 2);
    axis.grid()->setPen(line);
    axis.grid()->setZeroLinePen(Qt::NoPen);
    axis.grid()->setVisible(true);
}

void setTicks(QCPAxisTickerText& ticker, const std::vector<AxisTick>& ticks)
{
    ticker.clear();
    for (const AxisTick& tick : ticks)
        ticker.addTick(tick.position, tick.label);
}

} // namespace

ChartPane::ChartPane(const ChartViewport& viewport, QWidget* parent)
    : QZPaintManagerView(parent),
      viewport_(viewport),
      plot_(new QCustomPlot(this)),
      reading_(new PaneOverlay(this)),
      dateTicker_(new QCPAxisTickerText),
      valueTicker_(new QCPAxisTickerText)
{
    setMinimumHeight(60);
    plot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setNotAntialiasedElements(QCP::aeAll);
    plot_->axisRect()->setAutoMargins(QCP::msNone);
    plot_->yAxis->setVisible(false);
    plot_->yAxis2->setVisible(true);
    plot_->xAxis->setTicker(dateTicker_);
    plot_->yAxis2->setTicker(valueTicker_);
    setDateAxisVisible(false);
}

QCPAxis* ChartPane::timeAxis() const
{
    return plot_->xAxis;
}

QCPAxis* ChartPane::valueAxis() const
{
    return plot_->yAxis2;
}

void ChartPane::setChartData(std::shared_ptr<const ChartData> shown)
{
    data_ = std::move(shown);
    fitAgain();
    if (barPlot_ != nullptr)
        barPlot_->setData(data_);
}

void ChartPane::applyTheme(const ChartTheme& theme)
{
    plot_->setBackground(theme.background);
    reading_->setTheme(theme);
    styleAxis(*plot_->xAxis, theme);
    styleAxis(*plot_->yAxis2, theme);
    plot_->replot(QCustomPlot::rpQueuedRefresh);
}

void ChartPane::setDateAxisVisible(bool visible)
{
    showsDates_ = visible;
    plot_->xAxis->setTickLabels(visible);
    plot_->xAxis->setTicks(visible);
}

int ChartPane::fitValues()
{
    scale_.first = viewport_.first();
    scale_.span = viewport_.span();
    scale_.isLogarithmic = isLogarithmWanted_ && hasLogarithms();
    const PriceRange range = ownRange_ ? *ownRange_ : fittedRange();
    scale_.low = range.low;
    scale_.high = range.high;
    const QFontMetrics metrics(systemFont(fontSize));
    int width = 0;
    for (const AxisTick& tick : valueTicks(range.low, range.high, 10))
        width = std::max(width, metrics.horizontalAdvance(tick.label));
    width = std::max(width, metrics.horizontalAdvance(valueText(range.high)));
    width += tickLength + 2 * labelGap;
    return (width + axisWidthStep - 1) / axisWidthStep * axisWidthStep;
}

void ChartPane::refresh(int axisWidth)
{
    axisWidth_ = axisWidth;
    layOut();
    updateTicks();
    plot_->xAxis->setRange(scale_.first, scale_.first + scale_.span);
    plot_->yAxis2->setScaleType(scale_.isLogarithmic ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    plot_->yAxis2->setRange(scale_.low, scale_.high);
    updateDecoration();
    plot_->replot(QCustomPlot::rpQueuedRefresh);
    displayPaintLayer();
}

void ChartPane::layOut()
{
    const int bottom = showsDates_ ? dateAxisHeight : bottomMargin;
    // The plot widget puts the lowest value on the last row of its rectangle, not on the edge below that row.
    plot_->axisRect()->setMargins(QMargins(leftMargin, topMargin + 1, axisWidth_, bottom - 1));
    scale_.plot = {static_cast<double>(leftMargin), static_cast<double>(bottom),
                   static_cast<double>(std::max(0, width() - leftMargin - axisWidth_)),
                   static_cast<double>(std::max(0, height() - topMargin - bottom))};
    setValidateRect(scale_.plot);
    reading_->setPlot(QRectF(scale_.plot.x, height() - scale_.plot.maxY(), scale_.plot.width, scale_.plot.height));
}

void ChartPane::pointAt(std::optional<int> bar, std::optional<double> y)
{
    std::optional<Crosshair> crosshair;
    if (bar) {
        crosshair.emplace().x = scale_.xOf(*bar);
        if (showsDates_)
            crosshair->dateTag = momentText(data_->calendar.at(*bar), data_->series.isIntraday());
    }
    if (crosshair && y) {
        crosshair->y = height() - *y;
        crosshair->valueTag = valueText(scale_.valueAt(*y));
    }
    reading_->setCrosshair(std::move(crosshair));
    const int newest = data_->series.size() - 1;
    const bool isLoaded = bar && *bar >= 0 && *bar <= newest;
    reading_->setLegend(newest < 0 ? std::vector<LegendPart>() : legendOf(isLoaded ? *bar : newest));
}

void ChartPane::paintPicture(QCPPainter& painter) const
{
    painter.save();
    plot_->toPainter(&painter, width(), height());
    reading_->paintLegend(painter);
    drawGraphs(painter);
    painter.restore();
}

void ChartPane::updateTicks()
{
    const QFontMetrics metrics(systemFont(fontSize));
    const int maxCount = static_cast<int>(scale_.plot.height / valueTickDistance);
    std::vector<AxisTick> values = valueTicks(scale_.low, scale_.high, std::max(2, maxCount));
    // A label at the very edge would be cut off there.
    std::erase_if(values, [this, margin = metrics.height() / 2.0](const AxisTick& tick) {
        const double y = scale_.yOf(tick.position);
        return y < scale_.plot.minY() + margin - bottomMargin || y > scale_.plot.maxY() - margin + topMargin;
    });
    const std::optional<double> tagged = taggedValue();
    for (AxisTick& tick : values) {
        if (tagged && std::abs(scale_.yOf(tick.position) - scale_.yOf(*tagged)) < metrics.height() + 2)
            tick.label.clear();
    }
    setTicks(*valueTicker_, values);

    const int first = static_cast<int>(std::ceil(scale_.first));
    const int last = static_cast<int>(std::floor(scale_.first + scale_.span));
    std::vector<AxisTick> dates = dateTicks(data_->calendar, first, last, dateTickDistance / scale_.barWidth());
    std::erase_if(dates, [&](const AxisTick& tick) {
        const double half = metrics.horizontalAdvance(tick.label) / 2.0;
        return scale_.xOf(tick.position) < half || scale_.xOf(tick.position) > width() - half;
    });
    setTicks(*dateTicker_, dates);
}

void ChartPane::resizeEvent(QResizeEvent* event)
{
    QZPaintManagerView::resizeEvent(event);
    plot_->setGeometry(rect());
    reading_->setGeometry(rect());
    refresh(axisWidth_);
}
