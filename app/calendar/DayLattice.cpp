#include "app/calendar/DayLattice.h"

#include "app/bars/CivilDate.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int daysPerWeek = 7;
constexpr std::int64_t longestDailyGap = 4; // a long weekend
constexpr std::int64_t longestWeeklyGap = 25;
constexpr std::int64_t longestMonthStep = 12;

std::int64_t monthOf(std::int64_t day)
{
    const CivilDate date = civilDateOfDay(day);
    return date.year * 12 + date.month - 1;
}

std::int64_t mondayOf(std::int64_t day)
{
    return day - weekdayOfDay(day);
}

std::vector<std::int64_t> distinctDays(const BarSeries& series)
{
    std::vector<std::int64_t> days;
    std::int32_t date = 0;
    for (const Bar& bar : series.bars()) {
        if (days.empty() || bar.date != date)
            days.push_back(dayNumber(bar.date));
        date = bar.date;
    }
    return days;
}

/// The usual distance between neighbours; 1 where there are none.
std::int64_t medianGap(const std::vector<std::int64_t>& days)
{
    std::vector<std::int64_t> gaps;
    for (std::size_t index = 1; index < days.size(); ++index)
        gaps.push_back(days[index] - days[index - 1]);
    if (gaps.empty())
        return 1;
    const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
    std::nth_element(gaps.begin(), middle, gaps.end());
    return *middle;
}

std::array<int, daysPerWeek> weekdayCounts(const std::vector<std::int64_t>& days)
{
    std::array<int, daysPerWeek> counts{};
    for (const std::int64_t day : days)
        ++counts[static_cast<std::size_t>(weekdayOfDay(day))];
    return counts;
}

} // namespace

DayLattice DayLattice::of(const BarSeries& series)
{
    DayLattice lattice;
    const std::vector<std::int64_t> days = distinctDays(series);
    const std::int64_t gap = series.isIntraday() ? 1 : medianGap(days);
    if (gap <= longestDailyGap) {
        lattice.learnWeekdays(days);
    } else if (gap <= longestWeeklyGap) {
        lattice.kind_ = Kind::Weeks;
        lattice.step_ = std::max<std::int64_t>((gap + daysPerWeek / 2) / daysPerWeek, 1);
        const auto counts = weekdayCounts(days);
        const auto commonest = std::max_element(counts.begin(), counts.end()) - counts.begin();
        lattice.weekdays_.fill(false);
        lattice.weekdays_[static_cast<std::size_t>(commonest)] = true;
    } else {
        lattice.kind_ = Kind::Months;
        lattice.step_ = std::min((gap + 15) / 30, longestMonthStep);
        lattice.learnDayOfMonth(days);
    }
    return lattice;
}

// A weekday belongs to the market when it has half the bars of the busiest one: a few sessions on odd days
// do not make a six-day week.
void DayLattice::learnWeekdays(const std::vector<std::int64_t>& days)
{
    if (days.empty())
        return;
    const auto counts = weekdayCounts(days);
    const bool tooFewToTell = days.back() - days.front() < std::int64_t{2} * daysPerWeek;
    const int busiest = *std::max_element(counts.begin(), counts.end());
    for (std::size_t weekday = 0; weekday < counts.size(); ++weekday)
        weekdays_[weekday] = tooFewToTell ? weekdays_[weekday] || counts[weekday] > 0 : counts[weekday] * 2 >= busiest;
}

// Bars on the last trading days of their months have many days of the month; bars on the 28th have one.
void DayLattice::learnDayOfMonth(const std::vector<std::int64_t>& days)
{
    std::array<std::size_t, 32> counts{};
    std::size_t monthEnds = 0;
    for (const std::int64_t day : days) {
        const CivilDate date = civilDateOfDay(day);
        ++counts[static_cast<std::size_t>(date.day)];
        if (date.day + 3 >= daysInMonth(date.year, date.month))
            ++monthEnds;
    }
    const auto commonest = std::max_element(counts.begin(), counts.end());
    const bool fixedDay = *commonest * 4 >= days.size() * 3;
    dayOfMonth_ = !fixedDay && monthEnds * 4 >= days.size() * 3 ? 31 : static_cast<int>(commonest - counts.begin());
}

DayLattice DayLattice::anchoredAt(std::int64_t day) const
{
    DayLattice moved = *this;
    if (kind_ == Kind::Months)
        moved.origin_ = monthOf(day);
    else if (kind_ == Kind::Weeks)
        moved.origin_ = mondayOf(day) + (std::find(weekdays_.begin(), weekdays_.end(), true) - weekdays_.begin());
    return moved;
}

std::int64_t DayLattice::lastBeforePeriodOf(std::int64_t day) const
{
    return kind_ == Kind::Weekdays ? countUpTo(day - 1) : periodOf(day) - 1;
}

std::int64_t DayLattice::firstAfterPeriodOf(std::int64_t day) const
{
    return (kind_ == Kind::Weekdays ? countUpTo(day) : periodOf(day)) + 1;
}

std::int64_t DayLattice::periodOf(std::int64_t day) const
{
    if (kind_ == Kind::Weeks)
        return floorDivide(mondayOf(day) - mondayOf(origin_), daysPerWeek * step_);
    return floorDivide(monthOf(day) - origin_, step_);
}

std::int64_t DayLattice::dayOf(std::int64_t ordinal) const
{
    if (kind_ == Kind::Weeks)
        return origin_ + ordinal * daysPerWeek * step_;
    if (kind_ == Kind::Months) {
        const std::int64_t month = origin_ + ordinal * step_;
        const std::int64_t year = floorDivide(month, 12);
        const int monthOfYear = static_cast<int>(month - year * 12) + 1;
        return dayNumber(CivilDate{year, monthOfYear, std::min(dayOfMonth_, daysInMonth(year, monthOfYear))});
    }
    const auto perWeek = std::count(weekdays_.begin(), weekdays_.end(), true);
    const std::int64_t week = floorDivide(ordinal - 1, perWeek);
    std::int64_t left = ordinal - 1 - week * perWeek;
    std::int64_t weekday = 0;
    while (!weekdays_[static_cast<std::size_t>(weekday)] || left-- > 0)
        ++weekday;
    return mondayOf(0) + week * daysPerWeek + weekday;
}

std::int64_t DayLattice::countUpTo(std::int64_t day) const
{
    if (kind_ == Kind::Weeks)
        return floorDivide(day - origin_, daysPerWeek * step_);
    if (kind_ == Kind::Months) {
        const std::int64_t ordinal = periodOf(day);
        return dayOf(ordinal) <= day ? ordinal : ordinal - 1;
    }
    const auto perWeek = std::count(weekdays_.begin(), weekdays_.end(), true);
    const auto inWeek = std::count(weekdays_.begin(), weekdays_.begin() + weekdayOfDay(day) + 1, true);
    return floorDivide(mondayOf(day) - mondayOf(0), daysPerWeek) * perWeek + inWeek;
}
