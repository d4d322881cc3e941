#include "app/bars/BarRowParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace {

// Prices of one bar may disagree by this fraction: files with adjusted prices round each of them separately.
constexpr double roundingTolerance = 1e-6;

/// The delimiter that stands most often outside quotes.
char detectDelimiter(std::string_view line)
{
    constexpr std::array<char, 3> candidates{'\t', ';', ','};
    std::array<int, candidates.size()> counts{};
    bool quoted = false;
    for (const char character : line) {
        if (character == '"')
            quoted = !quoted;
        const auto* const found = std::find(candidates.begin(), candidates.end(), character);
        if (!quoted && found != candidates.end())
            ++counts[static_cast<std::size_t>(found - candidates.begin())];
    }
    return candidates[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

/// Column name reduced to lower-case letters: "<Date_Time>" is "datetime".
std::string plainName(std::string_view field)
{
    std::string name;
    for (const char character : field) {
        if (character >= 'A' && character <= 'Z')
            name += static_cast<char>(character - 'A' + 'a');
        else if (character >= 'a' && character <= 'z')
            name += character;
    }
    return name;
}

/// "1,234,567.8": a comma before each three digits of the whole part.
bool hasThousandsSeparators(std::string_view number)
{
    const std::string_view whole = number.substr(0, number.find('.'));
    for (std::size_t comma = whole.find(','); comma != std::string_view::npos; comma = whole.find(',', comma + 1)) {
        if (comma == 0 || (whole.size() - comma) % 4 != 0)
            return false;
    }
    return number.find(',', whole.size()) == std::string_view::npos;
}

/// Takes the quoted field at the front of `rest`, quotes excluded. Doubled quotes stay doubled: no value has any.
bool takeQuoted(std::string_view& rest, std::string_view& field)
{
    std::size_t close = 1;
    while (close < rest.size() && (rest[close] != '"' || (close + 1 < rest.size() && rest[close + 1] == '"')))
        close += rest[close] == '"' ? 2 : 1;
    if (close >= rest.size())
        return false;
    field = rest.substr(1, close - 1);
    rest.remove_prefix(close + 1);
    return true;
}

} // namespace

bool BarRowParser::split(std::string_view line)
{
    fields_.clear();
    std::string_view rest = line;
    for (;;) {
        std::string_view field;
        const std::size_t start = rest.find_first_not_of(' ');
        if (start != std::string_view::npos && rest[start] == '"') {
            rest.remove_prefix(start);
            if (!takeQuoted(rest, field))
                return false;
        }
        const std::size_t end = rest.find(delimiter_);
        fields_.push_back(field.data() != nullptr ? field : rest.substr(0, end));
        if (end == std::string_view::npos)
            return true;
        rest.remove_prefix(end + 1);
    }
}

QString BarRowParser::readHeader(std::string_view line)
{
    delimiter_ = detectDelimiter(line);
    if (!split(line))
        return QStringLiteral("unclosed quote in the header");
    std::vector<std::string> names;
    std::transform(fields_.begin(), fields_.end(), std::back_inserter(names), plainName);
    const auto column = [&names](std::string_view name) {
        const auto found = std::find(names.begin(), names.end(), name);
        return found == names.end() ? -1 : static_cast<int>(found - names.begin());
    };

    const int date = std::max(column("date"), column("tradedate"));
    const int time = column("time");
    clock_ = date >= 0 ? time : -1;
    moment_ = date;
    for (const std::string_view name : {"datetime", "timestamp", "opentime", "time"}) {
        if (column(name) >= 0 && (moment_ < 0 || clock_ < 0)) {
            moment_ = column(name);
            break;
        }
    }
    open_ = column("open");
    high_ = column("high");
    low_ = column("low");
    close_ = column("close");
    for (const std::string_view name : {"volume", "vol", "basevolume", "tickvol"}) {
        if (volume_ = column(name); volume_ >= 0)
            break;
    }

    if (std::max({moment_, open_, high_, low_, close_}) < 0)
        return QStringLiteral("no header line with the columns date, open, high, low and close");
    const std::array<std::pair<int, const char*>, 5> required{
        {{moment_, "date"}, {open_, "open"}, {high_, "high"}, {low_, "low"}, {close_, "close"}}};
    for (const auto& [index, name] : required) {
        if (index < 0)
            return QStringLiteral("no column named %1").arg(QLatin1String(name));
    }
    fieldsNeeded_ = static_cast<std::size_t>(std::max({moment_, clock_, open_, high_, low_, close_, volume_})) + 1;
    return {};
}

BarRow BarRowParser::parse(std::string_view line)
{
    BarRow row;
    if (!split(line))
        row.problem = "unclosed quote";
    else if (fields_.size() < fieldsNeeded_)
        row.problem = "too few fields";
    else
        row.problem = readMoment(row);
    if (row.problem == nullptr)
        row.problem = readPrices(row.bar);
    return row;
}

const char* BarRowParser::readMoment(BarRow& row)
{
    const std::string_view text = fields_[static_cast<std::size_t>(moment_)];
    const auto moment = parseBarMoment(text, dateOrder_);
    if (!moment)
        return "unreadable date";
    row.isOrderOpen = dateOrder_ == DateOrder::Unknown && endsWithYear(text);
    hasDots_ = hasDots_ || (row.isOrderOpen && trimmed(text).substr(0, 3).find('.') != std::string_view::npos);
    Bar& bar = row.bar;
    bar.date = moment->date;
    bar.time = moment->time;
    if (clock_ < 0)
        return nullptr;
    const std::string_view clock = trimmed(fields_[static_cast<std::size_t>(clock_)]);
    if (clock.empty())
        return nullptr;
    const auto time = parseTimeOfDay(clock);
    if (!time)
        return "unreadable time";
    bar.time = *time;
    return nullptr;
}

const char* BarRowParser::readPrices(Bar& bar) const
{
    if (!readNumber(open_, bar.open))
        return "open is not a number";
    if (!readNumber(high_, bar.high))
        return "high is not a number";
    if (!readNumber(low_, bar.low))
        return "low is not a number";
    if (!readNumber(close_, bar.close))
        return "close is not a number";
    const bool hasVolume = volume_ >= 0 && !trimmed(fields_[static_cast<std::size_t>(volume_)]).empty();
    if (hasVolume && !readNumber(volume_, bar.volume))
        return "volume is not a number";
    if (bar.volume < 0)
        return "negative volume";

    const double slack = std::max(std::abs(bar.high), std::abs(bar.low)) * roundingTolerance;
    if (bar.high < bar.low - slack)
        return "high below low";
    const auto isOutside = [&](double price) { return price > bar.high + slack || price < bar.low - slack; };
    if (isOutside(bar.open))
        return "open outside high and low";
    if (isOutside(bar.close))
        return "close outside high and low";
    const auto [low, high] = std::minmax({bar.open, bar.high, bar.low, bar.close});
    bar.low = low;
    bar.high = high;
    return nullptr;
}

bool BarRowParser::readNumber(int column, double& value) const
{
    std::string_view text = trimmed(fields_[static_cast<std::size_t>(column)]);
    std::array<char, 64> buffer{};
    if (text.find(',') != std::string_view::npos && text.size() <= buffer.size()) {
        const bool isGrouped = delimiter_ != ';' && hasThousandsSeparators(text);
        if (delimiter_ != ';' && !isGrouped)
            return false;
        const auto end = isGrouped ? std::remove_copy(text.begin(), text.end(), buffer.begin(), ',')
                                   : std::replace_copy(text.begin(), text.end(), buffer.begin(), ',', '.');
        text = {buffer.data(), static_cast<std::size_t>(end - buffer.begin())};
    }
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, value);
    return status == std::errc() && stop == end && std::isfinite(value);
}
