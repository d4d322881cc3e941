#pragma once

#include "app/bars/Bars.h"
#include "app/calendar/DayLattice.h"

#include <cstdint>
#include <vector>

/// The time axis of a chart: every integer bar index, also negative ones and those past the last bar, is a moment.
/// Within the loaded bars it is exact. Outside it continues their habits: the weekdays they trade on (holidays are not
/// foreseen), the week or month step, and within a day the usual minutes; a first or last session that is cut
/// short is completed first. Dates grow strictly with the index as long as they fit yyyymmdd in 32 bits, so
/// that indexOf(at(i)) == i. Years before 1 are negative: -49699 is March 1 of the year -5.
class TradingCalendar {
public:
    TradingCalendar() : TradingCalendar(BarSeries()) {}

    /// Copies what it needs of the series. Without bars index 0 is 1970-01-01 in a Monday-to-Friday week.
    explicit TradingCalendar(const BarSeries& series) : TradingCalendar(series, series) {}
    /// The same with the habits of `history`, whose last bars the series is.
    TradingCalendar(const BarSeries& series, const BarSeries& history);

    [[nodiscard]] int size() const { return static_cast<int>(times_.size()); }
    [[nodiscard]] bool isIntraday() const { return intraday_; }

    [[nodiscard]] BarTime at(int index) const;

    /// Index of the bar at or after the moment. A bar of a day or longer covers its whole first day: the time is
    /// ignored. Impossible dates count as the nearest possible one.
    [[nodiscard]] int indexOf(BarTime moment) const;

private:
    [[nodiscard]] std::int64_t slotsBefore(std::int32_t time) const;
    [[nodiscard]] std::int64_t slotCount() const { return static_cast<std::int64_t>(slots_.size()); }
    [[nodiscard]] BarTime slotAt(std::int64_t day, std::int64_t slot) const;
    [[nodiscard]] std::int64_t indexAfterLast(std::int64_t day, std::int32_t time) const;
    [[nodiscard]] std::int64_t indexBeforeFirst(std::int64_t day, std::int32_t time) const;

    std::vector<BarTime> times_;
    std::vector<std::int32_t> slots_; ///< usual times of day, ascending; only 0 for bars of a day or longer
    bool intraday_ = false;
    DayLattice before_; ///< continues to the past from the first bar's period
    DayLattice after_;  ///< continues to the future from the last bar's period
    std::int64_t firstDay_ = 0;
    std::int64_t lastDay_ = -1;
    std::int64_t previousOrdinal_ = 0; ///< in `before_`, of the day before the first bar's
    std::int64_t nextOrdinal_ = 0;     ///< in `after_`, of the day after the last bar's
    std::int64_t missingAtStart_ = 0;  ///< slots of the first bar's day before it
    std::int64_t missingAtEnd_ = 0;    ///< slots of the last bar's day after it
};
