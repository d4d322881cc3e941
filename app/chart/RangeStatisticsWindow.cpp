#include "app/chart/RangeStatisticsWindow.h"

#include "app/bars/BarStatistics.h"
#include "app/chart/ChartSplitView.h"
#include "model/QZPaintNotifications.h"
#include "platform/QZFont.h"
#include "platform/QZHostNotifications.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QApplication>
#include <QFormLayout>
#include <QLabel>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double fontSize = 12;
/// Wide enough for every value, so that the window does not twitch during a drag (px).
constexpr int valueWidth = 120;
constexpr int margin = 10;
struct Row {
    const char* name = nullptr;
    bool isMarketMove = false; ///< written in the colour of rising or falling candles
};
constexpr std::array rows{
    Row{"Bars"}, Row{"First"}, Row{"Last"},       Row{"Change", true}, Row{"Percent change", true},
    Row{"High"}, Row{"Low"},   Row{"Mean close"}, Row{"Amplitude"},    Row{"Volume"}};

QString percentText(double percent)
{
    return QString::number(percent, 'f', 2) + QLatin1Char('%');
}

QString withSign(const QString& text, double value)
{
    return value > 0 ? QLatin1Char('+') + text : text;
}

std::array<QString, rows.size()> textsOf(const RangeStatistics& range, const BarSeries& series)
{
    const auto price = [decimals = series.priceDecimals()](double value) { return priceText(value, decimals); };
    return {QString::number(range.count),
            momentText(range.first, series.isIntraday()),
            momentText(range.last, series.isIntraday()),
            withSign(price(range.change), range.change),
            withSign(percentText(range.percentChange), range.change),
            price(range.high),
            price(range.low),
            price(range.meanClose),
            percentText(range.amplitude),
            volumeText(range.volume)};
}

} // namespace

RangeStatisticsWindow::RangeStatisticsWindow(ChartSplitView& chart)
    : QZPanelWindow(Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint), chart_(chart)
{
    setWindowTitle(tr("Range statistics"));
    setFont(systemFont(fontSize));
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (const Row& row : rows) {
        auto* value = new QLabel(this);
        value->setMinimumWidth(valueWidth);
        value->setAlignment(Qt::AlignRight);
        layout->addRow(tr(row.name), value);
        values_.push_back(value);
    }
    connect(this, &QZPanelWindow::willClose, this, &RangeStatisticsWindow::removeBand);
    connect(&chart, &ChartSplitView::figuresRemoved, this, &RangeStatisticsWindow::closeWithoutBand);
    QZNotificationCenter& center = QZNotificationCenter::defaultCenter();
    observations_.push_back(center.observe(QZRangeStatisticsTimeChangedNotification,
                                           [this](const QZNotification& notification) { followBand(notification); }));
    observations_.push_back(
        center.observe(QZUserNameChangedNotification, [this](const QZNotification&) { closeWithoutBand(); }));
    observations_.push_back(
        center.observe(QZUIOverallStyleDidChangeNotification, [this](const QZNotification&) { applyTheme(); }));
    applyTheme();
}

RangeStatisticsWindow::~RangeStatisticsWindow()
{
    removeBand();
}

void RangeStatisticsWindow::toggle()
{
    if (isVisible()) {
        close();
        return;
    }
    auto* active = dynamic_cast<ChartPane*>(chart_.activeView());
    ChartPane& pane = active == nullptr ? *chart_.panes().front() : *active;
    if (!pane.chartData()->series.isEmpty())
        open(pane);
}

void RangeStatisticsWindow::open(ChartPane& pane)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (dynamic_cast<RangeStatisticsWindow*>(window) != nullptr)
            window->close();
    }
    pane_ = &pane;
    // Scrolling leaves loaded bars in a third of the screen at least.
    const ChartViewport& viewport = chart_.viewport();
    const int first = std::max(0, static_cast<int>(std::ceil(viewport.first())));
    const int last = std::min(viewport.barCount() - 1, static_cast<int>(std::floor(viewport.last())));
    const int third = (last - first) / 3;
    placeBand(first + third, last - third);
    if (chartWindow() == nullptr) {
        const QRect plot(pane.mapToGlobal(QPoint()), pane.size());
        move(plot.topRight() - QPoint(sizeHint().width() + 8 * margin, -2 * margin));
    }
    addToWindowOf(chart_);
}

void RangeStatisticsWindow::followBand(const QZNotification& notification)
{
    using namespace QZRangeStatistics;
    if (pane_ == nullptr)
        return;
    if (notification.userInfo.value(timeTypeKey).toUInt() == timeTypeClosed) {
        close();
        return;
    }
    // An edge goes from bar to bar. The band as a whole gets its bars when it is let go: put on them at each step, it
    // would never get away from them.
    const unsigned dragType = notification.userInfo.value(dragTypeKey).toUInt();
    const auto [first, second] = barsOfBand();
    if (dragType == dragTypeFirstPoint || dragType == dragTypeSecondPoint)
        placeBand(first, second);
    else
        tell();
}

std::pair<int, int> RangeStatisticsWindow::barsOfBand() const
{
    const auto points = QZPaintRangeStatistics::sharedGraph()->points();
    return {pane_->scale().barAt(points[0].x), pane_->scale().barAt(points[1].x)};
}

void RangeStatisticsWindow::placeBand(int first, int second)
{
    const BarSeries& series = pane_->chartData()->series;
    const BarTime start = series.timeAt(std::clamp(first, 0, series.size() - 1));
    const BarTime end = series.timeAt(std::clamp(second, 0, series.size() - 1));
    pane_->displayRangeStatisticsGraphFromDate(start.date, start.time, end.date, end.time);
    tell();
}

void RangeStatisticsWindow::tell()
{
    const BarSeries& series = pane_->chartData()->series;
    const auto [first, second] = barsOfBand();
    const auto range = rangeStatistics(series, std::min(first, second), std::max(first, second));
    std::array<QString, rows.size()> texts;
    texts.fill(QStringLiteral("–"));
    if (range)
        texts = textsOf(*range, series);
    const ChartTheme theme = ChartTheme::current();
    const double change = range ? range->change : 0;
    QPalette market = palette();
    market.setColor(QPalette::WindowText, change > 0 ? theme.candleUp : change < 0 ? theme.candleDown : theme.axisText);
    for (std::size_t row = 0; row < texts.size(); ++row) {
        QLabel& value = *values_[row];
        value.setText(texts[row]);
        value.setPalette(rows[row].isMarketMove ? market : palette());
    }
}

void RangeStatisticsWindow::removeBand()
{
    if (pane_ != nullptr)
        pane_->removeRangeStatisticsGraph();
    pane_.clear();
}

void RangeStatisticsWindow::closeWithoutBand()
{
    if (pane_ != nullptr && !pane_->paintLayer()->graphs().contains(QZPaintRangeStatistics::sharedGraph().get()))
        close();
}

void RangeStatisticsWindow::applyTheme()
{
    setPalette(ChartTheme::current().windowPalette());
    if (pane_ != nullptr)
        tell();
}
