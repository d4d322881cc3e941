#include "app/calendar/Resample.h"

#include "app/bars/CivilDate.h"
#include "app/calendar/ChartCycle.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace {

struct Cycle {
    QZPaintCycle cycle;
    int minutes; ///< 0 for a day and longer
    const char* name;
};

/// From short to long.
constexpr std::array cycles{
    Cycle{QZPCCandlestickCycleMin1, 1, "1 minute"},     Cycle{QZPCCandlestickCycleMin5, 5, "5 minutes"},
    Cycle{QZPCCandlestickCycleMin15, 15, "15 minutes"}, Cycle{QZPCCandlestickCycleMin30, 30, "30 minutes"},
    Cycle{QZPCCandlestickCycleMin60, 60, "60 minutes"}, Cycle{QZPCCandlestickCycleMin120, 120, "120 minutes"},
    Cycle{QZPCCandlestickCycleDay, 0, "Day"},           Cycle{QZPCCandlestickCycleWeek, 0, "Week"},
    Cycle{QZPCCandlestickCycleMonth, 0, "Month"},       Cycle{QZPCCandlestickCycleQuarter, 0, "Quarter"},
    Cycle{QZPCCandlestickCycleYear, 0, "Year"}};

const Cycle& rowOf(QZPaintCycle cycle)
{
    const auto* found = std::ranges::find(cycles, cycle, &Cycle::cycle);
    return found == cycles.end() ? cycles.at(6) : *found;
}

int minuteOf(BarTime moment)
{
    return moment.time / 10000 * 60 + moment.time / 100 % 100;
}

/// The minutes of the day at which the sessions of a series begin: after a break that no day trades in.
std::vector<int> sessionStarts(const BarSeries& series)
{
    constexpr int shortestBreak = 20;
    std::set<int> minutes;
    for (int i = 0; i < series.size(); ++i)
        minutes.insert(minuteOf(series.timeAt(i)));
    std::vector<int> starts;
    int before = -shortestBreak;
    for (const int minute : minutes) {
        if (minute - before >= shortestBreak)
            starts.push_back(minute);
        before = minute;
    }
    return starts;
}

std::int64_t dayPeriodOf(std::int64_t day, QZPaintCycle cycle)
{
    const CivilDate date = civilDateOfDay(day);
    switch (cycle) {
    case QZPCCandlestickCycleWeek:
        return floorDivide(day + 3, 7); // 1970-01-01 was a Thursday
    case QZPCCandlestickCycleMonth:
        return date.year * 12 + date.month;
    case QZPCCandlestickCycleQuarter:
        return date.year * 4 + (date.month - 1) / 3;
    case QZPCCandlestickCycleYear:
        return date.year;
    default:
        return day;
    }
}

void append(Bar& whole, const Bar& part)
{
    whole.high = std::max(whole.high, part.high);
    whole.low = std::min(whole.low, part.low);
    whole.close = part.close;
    whole.volume += part.volume;
}

/// Where the last days of a series begin, as many as there are up to `most`, the last one first.
std::vector<std::size_t> lastDays(const BarSeries& series, std::size_t most)
{
    const std::vector<Bar>& bars = series.bars();
    std::vector<std::size_t> starts;
    for (std::size_t i = bars.size(); i > 0 && starts.size() < most; --i) {
        if (i == 1 || bars[i - 2].date != bars[i - 1].date)
            starts.push_back(i - 1);
    }
    return starts;
}

} // namespace

std::vector<QZPaintCycle> cyclesFor(const BarSeries& series)
{
    std::vector<QZPaintCycle> found;
    if (series.isIntraday()) {
        const std::size_t days = lastDays(series, QZPCRealTimeCycle10Day).size();
        for (std::size_t count = 1; count <= days; ++count)
            found.push_back(static_cast<QZPaintCycle>(count));
    }
    const auto* base = std::ranges::find(cycles, cycleOf(series), &Cycle::cycle);
    std::transform(base, cycles.end(), std::back_inserter(found), [](const Cycle& each) { return each.cycle; });
    return found;
}

BarSeries resampled(const BarSeries& series, QZPaintCycle cycle)
{
    if (isLineCycle(cycle)) {
        const auto days = lastDays(series, cycle);
        const auto first = days.empty() ? 0 : static_cast<std::ptrdiff_t>(days.back());
        return {series.name(), {series.bars().begin() + first, series.bars().end()}};
    }
    const int length = rowOf(cycle).minutes;
    const std::vector<int> starts = sessionStarts(series);
    const auto periodOf = [&](const Bar& bar) -> std::pair<std::int64_t, int> {
        const std::int64_t day = dayNumber(bar.date);
        if (length == 0)
            return {dayPeriodOf(day, cycle), 0};
        const int minute = minuteOf({bar.date, bar.time});
        const int start = *std::prev(std::ranges::upper_bound(starts, minute));
        return {day, start + (minute - start) / length * length};
    };
    std::vector<Bar> bars;
    std::pair<std::int64_t, int> current;
    for (const Bar& bar : series.bars()) {
        const auto period = periodOf(bar);
        if (!bars.empty() && period == current) {
            append(bars.back(), bar);
            continue;
        }
        current = period;
        bars.push_back(bar);
        if (length == 0)
            bars.back().time = 0;
    }
    return {series.name(), std::move(bars)};
}

QString cycleName(QZPaintCycle cycle)
{
    if (isLineCycle(cycle))
        return QStringLiteral("%1-day line").arg(static_cast<int>(cycle));
    return QString::fromLatin1(rowOf(cycle).name);
}
