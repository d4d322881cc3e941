#include "app/bars/BarMoment.h"

#include "app/bars/CivilDate.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool allDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

/// Takes `least` to `most` digits from the front of `text`.
std::optional<std::int32_t> takeDigits(std::string_view& text, std::size_t least, std::size_t most)
{
    std::size_t count = 0;
    std::int32_t value = 0;
    while (count < std::min(most, text.size()) && isDigit(text[count]))
        value = value * 10 + (text[count++] - '0');
    if (count < least)
        return std::nullopt;
    text.remove_prefix(count);
    return value;
}

bool take(std::string_view& text, char character)
{
    if (text.empty() || text.front() != character)
        return false;
    text.remove_prefix(1);
    return true;
}

std::optional<std::int32_t> checkedTime(std::int32_t hour, std::int32_t minute, std::int32_t second)
{
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return hour * 10000 + minute * 100 + second;
}

enum class HalfOfDay { None, First, Second };

/// Takes "AM" or "PM", in whatever case, off the end of `text`.
HalfOfDay takeHalfOfDay(std::string_view& text)
{
    if (text.size() < 3 || (text.back() != 'M' && text.back() != 'm'))
        return HalfOfDay::None;
    const char letter = text[text.size() - 2];
    const bool isFirst = letter == 'A' || letter == 'a';
    if (!isFirst && letter != 'P' && letter != 'p')
        return HalfOfDay::None;
    text = trimmed(text.substr(0, text.size() - 2));
    return isFirst ? HalfOfDay::First : HalfOfDay::Second;
}

bool isZoneSuffix(std::string_view text)
{
    if (text.empty() || text == "Z" || text == "z")
        return true;
    return (text.front() == '+' || text.front() == '-') && text.size() >= 3 && text.size() <= 6 &&
           std::all_of(text.begin() + 1, text.end(), [](char c) { return isDigit(c) || c == ':'; });
}

/// "1/2/2020": whichever of day and month is above 12 tells the order.
std::optional<std::int32_t> takeDateEndingWithYear(std::string_view& text, DateOrder& order)
{
    const auto first = takeDigits(text, 1, 2);
    const char separator = text.empty() ? '\0' : text.front();
    if (!first || !take(text, separator))
        return std::nullopt;
    const auto second = takeDigits(text, 1, 2);
    if (!second || !take(text, separator))
        return std::nullopt;
    const auto year = takeDigits(text, 4, 4);
    if (!year)
        return std::nullopt;
    DateOrder own = order;
    if (*first > 12)
        own = DateOrder::DayFirst;
    else if (*second > 12)
        own = DateOrder::MonthFirst;
    const std::int32_t date =
        *year * 10000 + (own == DateOrder::DayFirst ? *second * 100 + *first : *first * 100 + *second);
    if ((order != DateOrder::Unknown && own != order) || !isCalendarDate(date))
        return std::nullopt;
    order = own;
    return date;
}

/// The eight digits, or year, month and day between equal separators.
std::optional<std::int32_t> takeDate(std::string_view& text)
{
    const bool compact = text.size() >= 8 && allDigits(text.substr(0, 8));
    const auto year = takeDigits(text, 4, 4);
    if (!year)
        return std::nullopt;
    const char separator = !text.empty() && (text.front() == '/' || text.front() == '.') ? text.front() : '-';
    const std::size_t leastDigits = compact ? 2 : 1;
    if (!compact && !take(text, separator))
        return std::nullopt;
    const auto month = takeDigits(text, leastDigits, 2);
    if (!month || (!compact && !take(text, separator)))
        return std::nullopt;
    const auto day = takeDigits(text, leastDigits, 2);
    if (!day)
        return std::nullopt;
    const std::int32_t date = *year * 10000 + *month * 100 + *day;
    return isCalendarDate(date) ? std::optional(date) : std::nullopt;
}

std::optional<BarTime> parseEpoch(std::string_view text)
{
    constexpr double leastSeconds = 1e8;
    constexpr double leastMilliseconds = 1e11;
    constexpr std::int64_t secondsPerDay = 86400;

    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, value);
    if (status != std::errc() || stop != end || !std::isfinite(value) || std::abs(value) < leastSeconds)
        return std::nullopt;
    if (std::abs(value) >= leastMilliseconds)
        value /= 1000;
    static const double latest = static_cast<double>(dayNumber(99991231) + 1) * static_cast<double>(secondsPerDay);
    static const double earliest = static_cast<double>(dayNumber(10101)) * static_cast<double>(secondsPerDay);
    if (value < earliest || value >= latest)
        return std::nullopt;
    const auto seconds = static_cast<std::int64_t>(std::floor(value));
    const std::int64_t day = floorDivide(seconds, secondsPerDay);
    const auto ofDay = static_cast<std::int32_t>(seconds - day * secondsPerDay);
    return BarTime{dateOfDay(day), ofDay / 3600 * 10000 + ofDay / 60 % 60 * 100 + ofDay % 60};
}

std::optional<BarTime> parseFourteenDigits(std::string_view text)
{
    const auto date = takeDate(text);
    const auto hour = takeDigits(text, 2, 2);
    const auto minute = takeDigits(text, 2, 2);
    const auto second = takeDigits(text, 2, 2);
    if (!date || !hour || !minute || !second)
        return std::nullopt;
    const auto time = checkedTime(*hour, *minute, *second);
    return time ? std::optional(BarTime{*date, *time}) : std::nullopt;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<std::int32_t> parseTimeOfDay(std::string_view text)
{
    text = trimmed(text);
    const auto half = takeHalfOfDay(text);
    const bool compact = (text.size() == 4 || text.size() == 6) && allDigits(text);
    auto hour = takeDigits(text, compact ? 2 : 1, 2);
    if (!hour || (!compact && !take(text, ':')))
        return std::nullopt;
    const auto minute = takeDigits(text, 2, 2);
    if (!minute)
        return std::nullopt;
    std::optional<std::int32_t> second = 0;
    if ((compact && !text.empty()) || take(text, ':')) {
        second = takeDigits(text, 2, 2);
        if (!second)
            return std::nullopt;
        if (take(text, '.'))
            text.remove_prefix(std::min(text.find_first_not_of("0123456789"), text.size()));
    }
    if (half != HalfOfDay::None) {
        if (*hour < 1 || *hour > 12)
            return std::nullopt;
        hour = *hour % 12 + (half == HalfOfDay::Second ? 12 : 0);
    }
    return isZoneSuffix(trimmed(text)) ? checkedTime(*hour, *minute, *second) : std::nullopt;
}

bool endsWithYear(std::string_view text)
{
    text = trimmed(text);
    const std::size_t separator = text.find_first_not_of("0123456789");
    return separator != std::string_view::npos && (separator == 1 || separator == 2) &&
           std::string_view("/.-").find(text[separator]) != std::string_view::npos;
}

std::optional<BarTime> parseBarMoment(std::string_view text, DateOrder& order)
{
    text = trimmed(text);
    if (text.size() == 14 && allDigits(text)) {
        if (const auto moment = parseFourteenDigits(text))
            return moment;
    }
    const bool dashed = text.size() > 4 && (text[4] == '-' || text[4] == '/' || (text[4] == '.' && text.size() > 7));
    const bool compact =
        text.size() >= 8 && allDigits(text.substr(0, 8)) && (text.size() == 8 || text[8] == ' ' || text[8] == 'T');
    const bool isYearLast = endsWithYear(text);
    if (!dashed && !compact && !isYearLast)
        return parseEpoch(text);
    const auto date = isYearLast ? takeDateEndingWithYear(text, order) : takeDate(text);
    if (!date)
        return std::nullopt;
    if (text.empty())
        return BarTime{*date, 0};
    if (text.front() != ' ' && text.front() != 'T')
        return std::nullopt;
    const auto time = parseTimeOfDay(text.substr(1));
    return time ? std::optional(BarTime{*date, *time}) : std::nullopt;
}
