#include "app/picture/PictureSheet.h"

#include "surface/QZPaintLayer.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>

namespace {

constexpr std::int32_t endOfDay = 240000; // hhmmss
/// Beside the first and the last bar of a range (bars).
constexpr double rangeGap = 1;

QString dayText(BarTime moment)
{
    return momentText(moment, moment.time != 0);
}

} // namespace

PictureSheet::PictureSheet(QSize size)
{
    chart_.setAttribute(Qt::WA_DontShowOnScreen);
    chart_.resize(size);
    chart_.show();
    QCoreApplication::sendPostedEvents();
}

int PictureSheet::loadFigures(const QString& stock, QZPaintCycle cycle)
{
    std::size_t count = 0;
    for (ChartPane* pane : chart_.panes()) {
        pane->loadDB(stock, cycle, pane->objectName());
        count += pane->paintLayer()->graphs().count();
    }
    return static_cast<int>(count);
}

int PictureSheet::show(const BarSeries& series, QZPaintCycle cycle)
{
    chart_.setChartData(std::make_shared<const ChartData>(series, cycle));
    const int count = loadFigures(series.name(), cycle);
    // Whoever drew on the MACD had it on the screen.
    chart_.setMacdVisible(chart_.panes().back()->paintLayer()->graphs().count() > 0);
    QCoreApplication::sendPostedEvents();
    return count;
}

QString PictureSheet::showRange(std::optional<BarTime> from, std::optional<BarTime> to)
{
    const BarSeries& series = chart_.panes().front()->chartData()->series;
    const int first = from ? series.lowerBound(from->date, from->time) : 0;
    // A date alone means the whole day.
    const int last = (to ? series.lowerBound(to->date, to->time == 0 ? endOfDay : to->time + 1) : series.size()) - 1;
    if (first > last) {
        const QString asked = from && to ? QStringLiteral("from %1 to %2").arg(dayText(*from), dayText(*to))
                              : from     ? QStringLiteral("from %1 on").arg(dayText(*from))
                                         : QStringLiteral("up to %1").arg(dayText(to.value_or(BarTime{})));
        return QStringLiteral("no bars %1: they go from %2 to %3")
            .arg(asked, dayText(series.timeAt(0)), dayText(series.timeAt(series.size() - 1)));
    }
    ChartViewport& viewport = chart_.viewport();
    viewport.zoom((last - first + 1 + 2 * rangeGap) / viewport.span(), first);
    viewport.scrollBy(first - 0.5 - rangeGap - viewport.first());
    return {};
}
