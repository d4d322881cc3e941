#include "app/bars/CivilDate.h"

#include <algorithm>
#include <array>

namespace {

// Years whose every day fits yyyymmdd in 32 signed bits.
constexpr std::int64_t firstYear = -214748;
constexpr std::int64_t lastYear = 214747;

constexpr std::int64_t daysPerEra = 146097; // 400 years
constexpr std::int64_t eraOffset = 719468;  // days from 0000-03-01 to 1970-01-01

bool isLeapYear(std::int64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int32_t packed(const CivilDate& date)
{
    return static_cast<std::int32_t>((date.year * 100 + date.month) * 100 + date.day);
}

} // namespace

int daysInMonth(std::int64_t year, int month)
{
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

bool isCalendarDate(std::int32_t date)
{
    return date >= 10000 && date <= 99991231 && packed(civilDate(date)) == date;
}

CivilDate civilDate(std::int32_t date)
{
    const std::int64_t year = floorDivide(date, 10000);
    if (year < firstYear)
        return {firstYear, 1, 1};
    if (year > lastYear)
        return {lastYear, 12, 31};
    const int monthAndDay = static_cast<int>(date - year * 10000);
    const int month = monthAndDay / 100;
    if (month < 1)
        return {year, 1, 1};
    if (month > 12)
        return {year, 12, 31};
    return {year, month, std::clamp(monthAndDay % 100, 1, daysInMonth(year, month))};
}

// Years are counted from March, so that the leap day is the last day of its year.
std::int64_t dayNumber(const CivilDate& date)
{
    const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
    const std::int64_t era = floorDivide(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t monthFromMarch = (date.month + 9) % 12;
    const std::int64_t dayOfYear = (153 * monthFromMarch + 2) / 5 + date.day - 1;
    return era * daysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - eraOffset;
}

std::int64_t dayNumber(std::int32_t date)
{
    return dayNumber(civilDate(date));
}

CivilDate civilDateOfDay(std::int64_t day)
{
    const std::int64_t shifted = day + eraOffset;
    const std::int64_t era = floorDivide(shifted, daysPerEra);
    const std::int64_t dayOfEra = shifted - era * daysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    const int dayOfMonth = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfMonth};
}

std::int32_t dateOfDay(std::int64_t day)
{
    static const std::int64_t firstDay = dayNumber(CivilDate{firstYear, 1, 1});
    static const std::int64_t lastDay = dayNumber(CivilDate{lastYear, 12, 31});
    return packed(civilDateOfDay(std::clamp(day, firstDay, lastDay)));
}

int weekdayOfDay(std::int64_t day)
{
    return static_cast<int>(day + 3 - floorDivide(day + 3, 7) * 7);
}
