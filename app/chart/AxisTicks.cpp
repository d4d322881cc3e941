#include "app/chart/AxisTicks.h"

#include "app/bars/CivilDate.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <span>

namespace {

double roundStep(double range, int maxCount)
{
    const double raw = range / std::max(maxCount, 1);
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (raw <= factor * power)
            return factor * power;
    }
    return 10 * power;
}

int decimalsOf(double step)
{
    return std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 12);
}

template <typename Format>
std::vector<AxisTick> valueTicks(double low, double high, int maxCount, Format format)
{
    std::vector<AxisTick> ticks;
    if (!(high > low) || !std::isfinite(high - low))
        return ticks;
    const double step = roundStep(high - low, maxCount);
    for (double n = std::ceil(low / step); n * step <= high && static_cast<int>(ticks.size()) <= maxCount; n += 1)
        ticks.push_back({n * step, format(n * step, step)});
    return ticks;
}

struct Moment {
    CivilDate date;
    std::int64_t day = 0;
    int minute = 0; ///< of the day
    BarTime time;
};

Moment momentOf(BarTime time)
{
    const std::int64_t day = dayNumber(time.date);
    return {civilDateOfDay(day), day, time.time / 10000 * 60 + time.time / 100 % 100, time};
}

using PeriodOf = std::int64_t (*)(const Moment&);

std::int64_t minutesSinceEpoch(const Moment& m)
{
    return m.day * 1440 + m.minute;
}

/// Number of the period that a moment lies in, from the longest to the shortest period.
constexpr std::array<PeriodOf, 17> periods{
    [](const Moment& m) { return floorDivide(m.date.year, 10); },
    [](const Moment& m) { return floorDivide(m.date.year, 5); },
    [](const Moment& m) { return floorDivide(m.date.year, 2); },
    [](const Moment& m) { return m.date.year; },
    [](const Moment& m) { return m.date.year * 2 + (m.date.month - 1) / 6; },
    [](const Moment& m) { return m.date.year * 4 + (m.date.month - 1) / 3; },
    [](const Moment& m) { return m.date.year * 12 + m.date.month; },
    [](const Moment& m) { return floorDivide(m.day + 3, 14); },
    [](const Moment& m) { return floorDivide(m.day + 3, 7); },
    [](const Moment& m) { return m.day; },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 240); },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 120); },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 60); },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 30); },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 15); },
    [](const Moment& m) { return floorDivide(minutesSinceEpoch(m), 5); },
    [](const Moment& m) { return minutesSinceEpoch(m); },
};
constexpr std::size_t yearly = 3;
constexpr std::size_t monthly = 6;
constexpr std::size_t daily = 9;

QString dateLabel(const Moment& moment, const Moment& before, std::size_t period)
{
    const QString year = QString::number(moment.date.year);
    const QString month = QLocale::c().standaloneMonthName(moment.date.month, QLocale::ShortFormat);
    if (period <= yearly)
        return year;
    if (period <= monthly)
        return moment.date.year != before.date.year ? year : month;
    if (moment.date.year != before.date.year)
        return momentText(moment.time, false);
    if (period <= daily || moment.day != before.day)
        return QStringLiteral("%1 %2").arg(moment.date.day).arg(month);
    return QStringLiteral("%1:%2")
        .arg(moment.minute / 60, 2, 10, QLatin1Char('0'))
        .arg(moment.minute % 60, 2, 10, QLatin1Char('0'));
}

/// The bar after `from` with which another period begins; `last` + 1 when that one is not over by `last`.
int nextBeginning(const TradingCalendar& calendar, PeriodOf periodOf, int from, int last)
{
    const auto periodAt = [&](int bar) { return periodOf(momentOf(calendar.at(bar))); };
    const std::int64_t period = periodAt(from);
    int inside = from;
    int outside = from + 1;
    for (int step = 1; outside <= last && periodAt(outside) == period; step *= 2) {
        inside = outside;
        outside += step;
    }
    outside = std::min(outside, last + 1);
    while (outside - inside > 1) {
        const int middle = inside + (outside - inside) / 2;
        (periodAt(middle) == period ? inside : outside) = middle;
    }
    return outside;
}

/// The bars `first` to `last` with which a period begins; nothing when they are more than `most`.
std::optional<std::vector<int>> beginnings(const TradingCalendar& calendar, PeriodOf periodOf, int first, int last,
                                           double most)
{
    std::vector<int> bars;
    for (int bar = nextBeginning(calendar, periodOf, first - 1, last); bar <= last;
         bar = nextBeginning(calendar, periodOf, bar, last)) {
        bars.push_back(bar);
        if (static_cast<double>(bars.size()) > most)
            return std::nullopt;
    }
    return bars;
}

/// Drops what follows too closely, as after a week cut short by holidays.
void thinOut(std::vector<int>& bars, double minGap)
{
    std::optional<int> kept;
    std::erase_if(bars, [&kept, minGap](int bar) {
        const bool isTooClose = kept && bar - *kept < minGap;
        if (!isTooClose)
            kept = bar;
        return isTooClose;
    });
}

} // namespace

std::vector<AxisTick> priceTicks(double low, double high, int maxCount, int decimals)
{
    return valueTicks(low, high, maxCount, [decimals](double value, double step) {
        return priceText(value, std::max(decimals, decimalsOf(step)));
    });
}

std::vector<AxisTick> logarithmicTicks(double low, double high, int maxCount, int decimals)
{
    constexpr double evenUpTo = 2; // equal steps look equal enough up to here, and are easier to read
    if (!(high > low * evenUpTo) || !(low > 0) || !std::isfinite(high))
        return priceTicks(low, high, maxCount, decimals);
    std::vector<AxisTick> ticks;
    const double ratio = std::pow(high / low, 1.0 / std::max(maxCount, 1));
    double step = roundStep(low * (ratio - 1), 1);
    double price = std::ceil(low / step) * step;
    while (price <= high) {
        ticks.push_back({price, priceText(price, std::max(decimals, decimalsOf(step)))});
        step = roundStep(price * (ratio - 1), 1);
        price = std::ceil(price * ratio / step * (1 - 1e-12)) * step;
    }
    return ticks;
}

std::vector<AxisTick> volumeTicks(double low, double high, int maxCount)
{
    return valueTicks(low, high, maxCount, [](double value, double /*step*/) { return volumeText(value); });
}

std::vector<AxisTick> dateTicks(const TradingCalendar& calendar, int first, int last, double minGap)
{
    std::vector<AxisTick> ticks;
    if (last < first)
        return ticks;
    const double most = (last - first + 2) / minGap + 1;
    std::size_t period = 0;
    std::vector<int> bars;
    for (std::size_t finer = 0; finer < periods.size(); ++finer) {
        auto candidates = beginnings(calendar, periods.at(finer), first, last, most);
        if (!candidates)
            break;
        if (candidates->size() > bars.size())
            period = finer;
        bars = std::move(*candidates);
    }
    thinOut(bars, minGap * 0.8);
    Moment before = momentOf(calendar.at(first - 1));
    for (const int bar : bars) {
        const Moment moment = momentOf(calendar.at(bar));
        ticks.push_back({static_cast<double>(bar), dateLabel(moment, before, period)});
        before = moment;
    }
    return ticks;
}

QString priceText(double price, int decimals)
{
    constexpr double exactUpTo = 1e15;
    return std::abs(price) < exactUpTo ? QString::number(price, 'f', decimals) : QString::number(price, 'g', 6);
}

QString volumeText(double volume)
{
    struct Unit {
        double size = 1;
        QStringView name;
    };
    constexpr std::array western{Unit{1e9, u"B"}, Unit{1e6, u"M"}, Unit{1e3, u"K"}};
    constexpr std::array chinese{Unit{1e8, u"亿"}, Unit{1e4, u"万"}};
    const bool isChinese = QLocale().language() == QLocale::Chinese;
    for (const Unit& unit : isChinese ? std::span<const Unit>(chinese) : std::span<const Unit>(western)) {
        if (std::abs(volume) >= unit.size)
            return QString::number(volume / unit.size, 'g', 4).append(unit.name);
    }
    return QString::number(volume, 'g', 4);
}

QString momentText(BarTime moment, bool intraday)
{
    const CivilDate date = civilDate(moment.date);
    const QLatin1Char zero('0');
    const auto twoDigits = [zero](int number) { return QStringLiteral("%1").arg(number, 2, 10, zero); };
    QString text =
        QStringLiteral("%1-%2-%3").arg(date.year, 4, 10, zero).arg(twoDigits(date.month), twoDigits(date.day));
    if (intraday)
        text += QStringLiteral(" %1:%2").arg(twoDigits(moment.time / 10000), twoDigits(moment.time / 100 % 100));
    return text;
}
