#pragma once

#include "app/bars/Bars.h"

#include <array>
#include <cstdint>

/// The days on which a series has bars, continued without end in both directions: certain weekdays, every n-th week
/// or every n-th month. Its days are numbered in order by ordinals. Days are day numbers (see CivilDate.h).
class DayLattice {
public:
    /// Which days a series keeps to, learnt from its bars; Monday to Friday where there are too few to tell.
    [[nodiscard]] static DayLattice of(const BarSeries& series);

    /// The lattice moved (in whole weeks and months) to the period that holds `day`, as far as its kind has periods.
    [[nodiscard]] DayLattice anchoredAt(std::int64_t day) const;

    /// Ordinals of the nearest lattice days outside the period (day, weeks or months) that holds `day`.
    [[nodiscard]] std::int64_t lastBeforePeriodOf(std::int64_t day) const;
    [[nodiscard]] std::int64_t firstAfterPeriodOf(std::int64_t day) const;

    /// Ordinal of the first lattice day at or after `day`.
    [[nodiscard]] std::int64_t ordinalAtOrAfter(std::int64_t day) const { return countUpTo(day - 1) + 1; }

    [[nodiscard]] std::int64_t dayOf(std::int64_t ordinal) const;

private:
    enum class Kind { Weekdays, Weeks, Months };

    void learnWeekdays(const std::vector<std::int64_t>& days);
    void learnDayOfMonth(const std::vector<std::int64_t>& days);

    /// Ordinal of the week or month step that holds `day`.
    [[nodiscard]] std::int64_t periodOf(std::int64_t day) const;

    /// Ordinal of the last lattice day at or before `day`.
    [[nodiscard]] std::int64_t countUpTo(std::int64_t day) const;

    Kind kind_ = Kind::Weekdays;
    std::int64_t step_ = 1;                                      ///< weeks or months between two days
    std::array<bool, 7> weekdays_{true, true, true, true, true}; ///< Monday first; a single one for Kind::Weeks
    int dayOfMonth_ = 1;                                         ///< clamped to the length of the month
    std::int64_t origin_ = 0; ///< of ordinal 0: the day for Kind::Weeks, months since year 0 for Kind::Months
};
