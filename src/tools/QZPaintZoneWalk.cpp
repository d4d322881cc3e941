#include "tools/QZPaintZoneWalk.h"

#include "model/QZPlaneGeometry.h"

#include <cmath>

namespace {

// Turns may fall on one x: the first two Fibonacci numbers are 1, and a host that answers whole pixels gives many
// narrow bars the same one. So many in a row are none of a chart that still goes on.
constexpr int mostStandstills = 1000;
// One line per px over all that can be drawn: what is denser is a smear that must not hold up the host.
constexpr std::int32_t mostTurns = 200000;

/// Asks for one turn after the other until one is no way forward.
class Turns {
public:
    Turns(const QZPaintZoneWalk& walk, const QZPaintZoneWalk::PositionOfTurn& positionOfTurn)
        : walk_(walk), positionOfTurn_(positionOfTurn), x_(walk.origin)
    {}

    [[nodiscard]] double x() const { return x_; }
    [[nodiscard]] std::int32_t turn() const { return turn_; }

    /// False at the end of the walk; x() and turn() are then those of the turn before.
    bool next()
    {
        // A host that has no bar there has none further on either.
        if (x_ >= missingCoordinate || turn_ == mostTurns)
            return false;
        const auto x = positionOfTurn_(turn_ + 1);
        if (!x || std::isnan(*x))
            return false;
        const bool goesBack = walk_.isRightward ? *x < x_ : (*x > x_ && *x < missingCoordinate);
        standstills_ = *x == x_ ? standstills_ + 1 : 0;
        // The first turn may go back: the origin need not lie in the middle of its bar.
        if ((goesBack && turn_ > 0) || standstills_ == mostStandstills)
            return false;
        x_ = *x;
        ++turn_;
        return true;
    }

private:
    const QZPaintZoneWalk& walk_;
    const QZPaintZoneWalk::PositionOfTurn& positionOfTurn_;
    double x_;
    std::int32_t turn_ = 0;
    int standstills_ = 0;
};

} // namespace

void QZPaintZoneWalk::run(const PositionOfTurn& positionOfTurn, const Visit& visit) const
{
    Turns turns(*this, positionOfTurn);
    const auto isBefore = [&] { return isRightward ? visible.minX() > turns.x() : turns.x() > visible.maxX(); };
    const auto isWithin = [&] { return isRightward ? visible.maxX() >= turns.x() : turns.x() >= visible.minX(); };
    while (isBefore())
        if (!turns.next())
            return;
    while (isWithin() && turns.next())
        visit(turns.x(), turns.turn());
}
