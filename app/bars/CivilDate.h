#pragma once

#include <cstdint>

/// A date of the proleptic Gregorian calendar with astronomical years (year 0 exists, negative ones before it).
struct CivilDate {
    std::int64_t year = 0;
    int month = 1;
    int day = 1;
};

/// Quotient rounded towards minus infinity; `divisor` is positive.
constexpr std::int64_t floorDivide(std::int64_t value, std::int64_t divisor)
{
    return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor);
}

int daysInMonth(std::int64_t year, int month);

/// Whether yyyymmdd names an existing day of the years 1 to 9999.
bool isCalendarDate(std::int32_t date);

/// Splits yyyymmdd. What names no day goes to the nearest one that does, so the order of dates is kept.
CivilDate civilDate(std::int32_t date);

/// Days since 1970-01-01.
std::int64_t dayNumber(const CivilDate& date);
std::int64_t dayNumber(std::int32_t date);

CivilDate civilDateOfDay(std::int64_t day);

/// yyyymmdd of a day number; days whose date does not fit the 32 bits become the first or last one that does.
std::int32_t dateOfDay(std::int64_t day);

/// 0 = Monday to 6 = Sunday.
int weekdayOfDay(std::int64_t day);
