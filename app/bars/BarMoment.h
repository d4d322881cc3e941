#pragma once

#include "app/bars/Bars.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// What comes first in dates that end with the year, such as 01/02/2020.
enum class DateOrder { Unknown, MonthFirst, DayFirst };

/// Reads a date with an optional time of day: yyyy-mm-dd, yyyymmdd, or the year at the end, then optionally a space or
/// T and a time; or 14 digits yyyymmddhhmmss; or seconds or milliseconds since 1970 in UTC (from 100,000,000 s on,
/// smaller numbers are not taken for a moment). Slashes and dots may stand for the dashes. The time is 0 where none is
/// given; nothing when the text is not a moment.
///
/// A date that can be read in one order only settles an unknown `order`; one that contradicts a settled order is no
/// date. While the order is unknown, 01/02/2020 is read as January 2.
std::optional<BarTime> parseBarMoment(std::string_view text, DateOrder& order);

/// Whether the date ends with its year.
bool endsWithYear(std::string_view text);

/// Reads hh:mm, hh:mm:ss, hhmm or hhmmss as hhmmss, with or without AM or PM; a fraction of a second and a time zone
/// suffix are dropped.
std::optional<std::int32_t> parseTimeOfDay(std::string_view text);

/// Without the spaces and tabs around it.
std::string_view trimmed(std::string_view text);
