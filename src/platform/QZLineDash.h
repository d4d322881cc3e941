#pragma once

#include "platform/QZLineClip.h"

#include <array>
#include <cstddef>
#include <functional>
#include <span>

/// A pattern of on and off lengths in px along a line. A fresh one is a solid line.
class QZLineDash {
public:
    QZLineDash() = default;

    /// An odd count of `lengths` swaps the roles at each repeat. A pattern that has no gap, is finer than the eye sees,
    /// longer than eight lengths or not made of finite, non-negative lengths is a solid line; a phase that is not
    /// finite is 0.
    QZLineDash(double phase, std::span<const double> lengths);

    [[nodiscard]] bool isSolid() const { return count_ == 0; }
    /// The lengths of one period, on and off in turns: an even count.
    [[nodiscard]] std::span<const double> lengths() const { return {lengths_.data(), count_}; }
    /// The sum of lengths(); 0 in a solid one.
    [[nodiscard]] double period() const { return period_; }
    /// The same pattern in a unit of which there are `ratio` per px, starting with its phase 0.
    [[nodiscard]] QZLineDash scaled(double ratio) const;
    /// Where (px, below the period's length) in the pattern a line is, `way` px behind its start; 0 in a solid one.
    [[nodiscard]] double offset(double way) const;

    friend bool operator==(const QZLineDash&, const QZLineDash&) = default;

private:
    static constexpr std::size_t capacity = 8;

    double phase_ = 0.0;
    double period_ = 0.0;
    std::size_t count_ = 0;
    std::array<double, 2 * capacity> lengths_{};
};

/// Hands over the dashes of `run` one by one as open polylines, round its corners where they lie there.
void forEachDash(const QZLineDash& dash, const QZLineRun& run,
                 const std::function<void(std::span<const QPointF>)>& handle);
