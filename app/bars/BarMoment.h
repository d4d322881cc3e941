#pragma once

#include "app/bars/Bars.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Reads a date with an optional time of day: yyyy-mm-dd, yyyy/mm/dd, yyyy.mm.dd or yyyymmdd, then optionally a space
/// or T and a time; or 14 digits yyyymmddhhmmss; or seconds or milliseconds since 1970 in UTC (from 100,000,000 s on,
/// smaller numbers are not taken for a moment). The time is 0 where none is given; nothing when the text is not a
/// moment.
std::optional<BarTime> parseBarMoment(std::string_view text);

/// Reads hh:mm, hh:mm:ss, hhmm or hhmmss as hhmmss, with or without AM or PM; a fraction of a second and a time zone
/// suffix are dropped.
std::optional<std::int32_t> parseTimeOfDay(std::string_view text);

/// Without the spaces and tabs around it.
std::string_view trimmed(std::string_view text);
