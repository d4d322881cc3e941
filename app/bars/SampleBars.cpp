#include "app/bars/SampleBars.h"

#include "app/bars/CivilDate.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <random>

// The resources of a static library are only linked when named; the macro must stand outside any namespace.
static void loadSamples()
{
    Q_INIT_RESOURCE(samples);
}

namespace {

constexpr std::int64_t million = 1000000;

/// Integer random numbers; the standard fixes the engine's output but not that of its distributions.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// Evenly from `low` to `high`, both included.
    std::int64_t uniform(std::int64_t low, std::int64_t high)
    {
        return low + static_cast<std::int64_t>(engine_() % static_cast<std::uint64_t>(high - low + 1));
    }

    /// Bell-shaped around 0: a sum of twelve even numbers of variance 1/12 each.
    std::int64_t bell(std::int64_t deviation)
    {
        constexpr std::int64_t scale = 65536;
        std::int64_t sum = 0;
        for (int count = 0; count < 12; ++count)
            sum += uniform(0, scale);
        return (sum - 6 * scale) * deviation / scale;
    }

private:
    std::mt19937_64 engine_;
};

/// Prices in cents.
struct Candle {
    std::int64_t open = 0;
    std::int64_t high = 0;
    std::int64_t low = 0;
    std::int64_t close = 0;
};

std::int64_t moved(std::int64_t price, std::int64_t partsPerMillion)
{
    return std::max<std::int64_t>(price + price * partsPerMillion / million, 1);
}

/// Candle that opens at `open`, drifts by `drift` and swings by `volatility` (both parts per million).
Candle rollCandle(Dice& dice, std::int64_t open, std::int64_t drift, std::int64_t volatility)
{
    Candle candle;
    candle.open = open;
    candle.close = moved(open, drift + dice.bell(volatility));
    candle.high = moved(std::max(candle.open, candle.close), std::abs(dice.bell(volatility / 2)));
    candle.low = moved(std::min(candle.open, candle.close), -std::abs(dice.bell(volatility / 2)));
    return candle;
}

/// Range of the candle in parts per million of its open.
std::int64_t rangeOf(const Candle& candle)
{
    return (candle.high - candle.low) * million / candle.open;
}

bool isHoliday(const CivilDate& date)
{
    constexpr std::array holidays{101, 210, 211, 212,  213,  214,  404,  405, 501,
                                  502, 503, 620, 1001, 1002, 1003, 1004, 1005};
    return std::find(holidays.begin(), holidays.end(), date.month * 100 + date.day) != holidays.end();
}

/// The first trading day at or after `day`.
std::int64_t tradingDay(std::int64_t day)
{
    while (weekdayOfDay(day) > 4 || isHoliday(civilDateOfDay(day)))
        ++day;
    return day;
}

QByteArray twoDigits(std::int64_t number)
{
    return QByteArray::number(static_cast<qlonglong>(number)).rightJustified(2, '0');
}

QByteArray dateText(std::int64_t day)
{
    const CivilDate date = civilDateOfDay(day);
    return QByteArray::number(static_cast<qlonglong>(date.year)) + '-' + twoDigits(date.month) + '-' +
           twoDigits(date.day);
}

QByteArray priceText(std::int64_t cents)
{
    return QByteArray::number(static_cast<qlonglong>(cents / 100)) + '.' + twoDigits(cents % 100);
}

QByteArray rowText(const QByteArray& moment, const Candle& candle, std::int64_t volume)
{
    return moment + ',' + priceText(candle.open) + ',' + priceText(candle.high) + ',' + priceText(candle.low) + ',' +
           priceText(candle.close) + ',' + QByteArray::number(static_cast<qlonglong>(volume)) + '\n';
}

/// Lots of a hundred that grow with the candle's range, `usualRange` giving about `usualVolume`.
std::int64_t rollVolume(Dice& dice, const Candle& candle, std::int64_t usualRange, std::int64_t usualVolume)
{
    const std::int64_t weight = usualRange / 2 + rangeOf(candle) / 2;
    return usualVolume * weight / usualRange * dice.uniform(70, 130) / 10000 * 100;
}

QByteArray minuteClock(int minute)
{
    const int start = minute < 120 ? 9 * 60 + 30 : 13 * 60 - 120;
    return twoDigits((start + minute) / 60) + ':' + twoDigits((start + minute) % 60);
}

} // namespace

QByteArray dailySampleCsv()
{
    constexpr int bars = 2000;
    constexpr std::int64_t calm = 12000;
    Dice dice(20150105);
    QByteArray csv("date,open,high,low,close,volume\n");
    std::int64_t day = tradingDay(dayNumber(20150105));
    std::int64_t close = 4000;
    std::int64_t volatility = calm;
    std::int64_t drift = 0;
    std::int64_t trendLeft = 0;
    for (int count = 0; count < bars; ++count) {
        if (trendLeft-- == 0) {
            trendLeft = dice.uniform(40, 160);
            drift = dice.uniform(-1800, 2200);
            // Trends turn at the edges of a range of prices that is pleasant to look at.
            if (close < 2000 || close > 16000)
                drift = close < 2000 ? std::abs(drift) : -std::abs(drift);
        }
        const std::int64_t open = moved(close, dice.bell(volatility / 3));
        const Candle candle = rollCandle(dice, open, drift, volatility);
        csv += rowText(dateText(day), candle, rollVolume(dice, candle, calm * 2, 2400000));
        // Large moves are followed by large ones: the day's move feeds a slowly fading volatility.
        const std::int64_t move = std::abs(candle.close - close) * million / close;
        volatility = std::clamp<std::int64_t>((volatility * 86 + move * 10 + calm * 6) / 100, 5000, 45000);
        close = candle.close;
        day = tradingDay(day + 1);
    }
    return csv;
}

QByteArray minuteSampleCsv()
{
    constexpr int sessions = 20;
    constexpr int minutes = 240;
    constexpr std::int64_t calm = 500;
    Dice dice(20220801);
    QByteArray csv("date,time,open,high,low,close,volume\n");
    std::int64_t day = tradingDay(dayNumber(20220801));
    std::int64_t close = 12500;
    for (int session = 0; session < sessions; ++session) {
        const std::int64_t drift = dice.uniform(-30, 34);
        close = moved(close, dice.bell(6000));
        for (int minute = 0; minute < minutes; ++minute) {
            // Trading is lively after the opening and before the end.
            const int fromEdge = std::min(minute, minutes - 1 - minute);
            const std::int64_t liveliness = 100 + std::max(0, 30 - fromEdge) * 5;
            const std::int64_t open = minute == 0 ? close : moved(close, dice.bell(calm / 4));
            const Candle candle = rollCandle(dice, open, drift, calm * liveliness / 100);
            const std::int64_t volume = rollVolume(dice, candle, calm * 2, 90 * liveliness);
            csv += rowText(dateText(day) + ',' + minuteClock(minute), candle, volume);
            close = candle.close;
        }
        day = tradingDay(day + 1);
    }
    return csv;
}

QString dailySamplePath()
{
    loadSamples();
    return QStringLiteral(":/qzchart/samples/daily.csv");
}

QString minuteSamplePath()
{
    loadSamples();
    return QStringLiteral(":/qzchart/samples/minutes.csv");
}
