#include "platform/QZLineDash.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Finer patterns (px) melt into a solid line; the number of dashes, and with it the cost, has its bound here.
constexpr double minPeriod = 0.25;
// No pane is as long.
constexpr double maxLength = 1.0e6;

} // namespace

QZLineDash::QZLineDash(double phase, std::span<const double> lengths)
{
    const bool isUsable = lengths.size() <= capacity && std::ranges::all_of(lengths, [](double length) {
                              return std::isfinite(length) && length >= 0.0;
                          });
    if (!isUsable)
        return;
    const std::size_t count = lengths.size() + (lengths.size() % 2 == 0 ? 0 : lengths.size());
    double gaps = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        lengths_[i] = std::min(lengths[i < lengths.size() ? i : i - lengths.size()], maxLength);
        period_ += lengths_[i];
        gaps += i % 2 == 1 ? lengths_[i] : 0.0;
    }
    if (gaps == 0.0 || period_ < minPeriod) {
        *this = {};
        return;
    }
    count_ = count;
    phase_ = std::isfinite(phase) ? phase : 0.0;
}

QZLineDash QZLineDash::scaled(double ratio) const
{
    QZLineDash dash = *this;
    dash.phase_ = 0.0;
    dash.period_ *= ratio;
    for (double& length : dash.lengths_)
        length *= ratio;
    return dash;
}

double QZLineDash::offset(double way) const
{
    if (isSolid())
        return 0.0;
    const double offset = std::fmod(phase_ + way, period_);
    return offset < 0.0 ? offset + period_ : offset;
}

void forEachDash(const QZLineDash& dash, const QZLineRun& run,
                 const std::function<void(std::span<const QPointF>)>& handle)
{
    const auto lengths = dash.lengths();
    std::size_t index = 0;
    double left = dash.offset(run.skipped); // first the way into the pattern, then what is left of lengths[index]
    while (index + 1 < lengths.size() && left >= lengths[index])
        left -= lengths[index++];
    left = lengths[index] - left;

    std::vector<QPointF> points;
    const auto isOn = [&] { return index % 2 == 0; };
    if (isOn())
        points.push_back(run.points[0]);
    for (std::size_t i = 1; i < run.points.size(); ++i) {
        const QLineF leg(run.points[i - 1], run.points[i]);
        const double length = leg.length();
        double walked = 0.0;
        while (left < length - walked) {
            walked += left;
            points.push_back(leg.pointAt(walked / length));
            if (isOn()) {
                handle(points);
                points.clear();
            }
            index = (index + 1) % lengths.size();
            left = lengths[index];
        }
        left -= length - walked;
        if (isOn())
            points.push_back(leg.p2());
    }
    if (points.size() > 1)
        handle(points);
}
