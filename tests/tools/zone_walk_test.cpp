#include "model/QZPlaneGeometry.h"
#include "tools/QZPaintZoneWalk.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {

using Visits = std::vector<std::pair<double, int>>;

Visits visits(const QZPaintZoneWalk& walk, const QZPaintZoneWalk::PositionOfTurn& positionOfTurn)
{
    Visits found;
    walk.run(positionOfTurn, [&found](double x, std::int32_t k) { found.emplace_back(x, k); });
    return found;
}

} // namespace

TEST(ZoneWalk, TurnsThatShowAndEndsOfAWalk)
{
    const double nan = std::nan("");
    struct Row {
        const char* name;
        double origin;
        bool isRightward;
        std::function<double(int)> position;
        Visits visits;
    };
    const std::vector<Row> rows{
        {"rightward, up to the first one beyond",
         10,
         true,
         [](int k) { return 10 + 40.0 * k; },
         {{50, 1}, {90, 2}, {130, 3}}},
        {"on the right edge there is one more",
         20,
         true,
         [](int k) { return 20 + 40.0 * k; },
         {{60, 1}, {100, 2}, {140, 3}}},
        {"from the left, without the first that shows",
         -70,
         true,
         [](int k) { return 40.0 * k - 70; },
         {{50, 3}, {90, 4}, {130, 5}}},
        {"leftward", 90, false, [](int k) { return 90 - 40.0 * k; }, {{50, 1}, {10, 2}, {-30, 3}}},
        {"from the right, without the first that shows",
         170,
         false,
         [](int k) { return 170 - 40.0 * k; },
         {{50, 3}, {10, 4}, {-30, 5}}},
        {"from beyond the far edge", 101, true, [](int k) { return 101.0 + k; }, {}},
        {"no such bar, rightward", 10, true, [](int) { return missingCoordinate; }, {{missingCoordinate, 1}}},
        {"no such bar, leftward", 10, false, [](int) { return missingCoordinate; }, {{missingCoordinate, 1}}},
        {"no such bar, from beyond", 170, false, [](int) { return missingCoordinate; }, {}},
        {"the wrong way", 10, true, [](int k) { return 10.0 - k; }, {{9, 1}}},
        {"the wrong way, leftward", 10, false, [](int k) { return 10.0 + k; }, {{11, 1}}},
        {"origin beside its bar", 12, true, [](int k) { return k < 3 ? 10 : 40.0 * k; }, {{10, 1}, {10, 2}, {120, 3}}},
        {"not a number", 10, true, [nan](int k) { return k == 1 ? 20 : nan; }, {{20, 1}}},
        {"origin not a number", nan, true, [](int k) { return 1.0 * k; }, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QZPaintZoneWalk walk{.origin = row.origin, .isRightward = row.isRightward, .visible = {0, 0, 100, 50}};
        EXPECT_EQ(visits(walk, row.position), row.visits);
    }
    const QZPaintZoneWalk walk{.visible = {0, 0, 100, 50}};
    EXPECT_EQ(visits(walk, [](int k) { return k < 3 ? std::optional(30.0 * k) : std::nullopt; }),
              (Visits{{30, 1}, {60, 2}}))
        << "ended by the tool";
    EXPECT_EQ(visits(walk, [](int k) { return k * 1e-9; }).size(), 200000U) << "denser than any picture";
    EXPECT_EQ(visits(walk, [](int k) { return std::floor(k / 200.0); }).size(), 101U * 200) << "200 bars in a pixel";
    EXPECT_EQ(visits(walk, [](int) { return 0.0; }).size(), 999U) << "the same bar for ever";
}
