#pragma once

#include <QString>

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// One candle. `date` is yyyymmdd, `time` is hhmmss and 0 for bars of a day or longer.
struct Bar {
    std::int32_t date = 0;
    std::int32_t time = 0;
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;
};

/// The moment that names a bar (see Bar); ordered by date, then time.
struct BarTime {
    std::int32_t date = 0;
    std::int32_t time = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): takes the 0 of the generated comparison for a pointer.
    auto operator<=>(const BarTime&) const = default;
};

struct PriceRange {
    double low = 0;
    double high = 0;
};

/// The bars of one instrument: ascending, at most one bar per moment. Copies share them.
class BarSeries {
public:
    BarSeries();

    /// Takes bars in any order; of several bars with the same date and time the last one given is kept.
    BarSeries(QString name, std::vector<Bar> bars);

    [[nodiscard]] const QString& name() const { return name_; }
    [[nodiscard]] const std::vector<Bar>& bars() const;
    [[nodiscard]] int size() const { return static_cast<int>(bars().size()); }
    [[nodiscard]] bool isEmpty() const { return bars().empty(); }

    /// `index` must be within 0 to size() - 1.
    [[nodiscard]] const Bar& at(int index) const { return bars()[static_cast<std::size_t>(index)]; }
    [[nodiscard]] BarTime timeAt(int index) const { return {at(index).date, at(index).time}; }

    /// Whether any bar carries a time of day.
    [[nodiscard]] bool isIntraday() const;

    /// The decimals that its prices are written with (see PriceDecimals.h).
    [[nodiscard]] int priceDecimals() const;

    /// Index of the first bar at or after the moment; size() when there is none.
    [[nodiscard]] int lowerBound(std::int32_t date, std::int32_t time) const;

    /// The bars `first` to `last`, both included and clamped to the loaded bars, as one candle from the first one's
    /// open to the last one's close; its volume is the largest one of theirs. Nothing when no loaded bar lies among
    /// them. Takes time by the logarithm of their number.
    [[nodiscard]] std::optional<Bar> outline(int first, int last) const;

    /// Lowest low and highest high of such bars.
    [[nodiscard]] std::optional<PriceRange> priceRange(int first, int last) const;

    /// Largest volume of such bars; 0 when no loaded bar lies among them.
    [[nodiscard]] double maxVolume(int first, int last) const;

private:
    struct Content;

    QString name_;
    std::shared_ptr<const Content> content_;
};
