#include "app/calendar/ChartCycle.h"

#include "app/bars/CivilDate.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

struct Period {
    std::int64_t length; // minutes or days, the shortest that counts
    QZPaintCycle cycle;
};

constexpr std::array minutePeriods{Period{120, QZPCCandlestickCycleMin120}, Period{60, QZPCCandlestickCycleMin60},
                                   Period{30, QZPCCandlestickCycleMin30},   Period{15, QZPCCandlestickCycleMin15},
                                   Period{5, QZPCCandlestickCycleMin5},     Period{0, QZPCCandlestickCycleMin1}};

constexpr std::array dayPeriods{Period{300, QZPCCandlestickCycleYear}, Period{80, QZPCCandlestickCycleQuarter},
                                Period{25, QZPCCandlestickCycleMonth}, Period{5, QZPCCandlestickCycleWeek},
                                Period{0, QZPCCandlestickCycleDay}};

std::int64_t minuteOf(BarTime moment)
{
    constexpr std::int64_t minutesPerDay = 24 * 60;
    return dayNumber(moment.date) * minutesPerDay + moment.time / 10000 * 60 + moment.time / 100 % 100;
}

} // namespace

QZPaintCycle cycleOf(const BarSeries& series)
{
    std::vector<std::int64_t> gaps;
    for (int i = 1; i < series.size(); ++i) {
        const BarTime before = series.timeAt(i - 1);
        const BarTime after = series.timeAt(i);
        gaps.push_back(series.isIntraday() ? minuteOf(after) - minuteOf(before)
                                           : dayNumber(after.date) - dayNumber(before.date));
    }
    std::int64_t median = 0;
    if (!gaps.empty()) {
        const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
        std::ranges::nth_element(gaps, middle);
        median = *middle;
    }
    const auto fits = [median](const Period& period) { return median >= period.length; };
    return series.isIntraday() ? std::ranges::find_if(minutePeriods, fits)->cycle
                               : std::ranges::find_if(dayPeriods, fits)->cycle;
}
