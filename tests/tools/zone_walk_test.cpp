#include "model/QZPlaneGeometry.h"
#include "tools/QZPaintZoneWalk.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

using Visits = std::vector<std::pair<double, int>>;

TEST(ZoneWalk, TurnsThatShowAndEndsOfAWalk)
{
    const auto visits = [](double origin, bool isRightward, const QZPaintZoneWalk::PositionOfTurn& positionOfTurn) {
        Visits found;
        const QZPaintZoneWalk walk{.origin = origin, .isRightward = isRightward, .visible = {0, 0, 100, 50}};
        walk.run(positionOfTurn, [&found](double x, std::int32_t k) { found.emplace_back(x, k); });
        return found;
    };
    const double nan = std::nan("");
    const auto every40From = [](double origin) { return [origin](int k) { return origin + 40.0 * k; }; };
    const auto every40To = [](double origin) { return [origin](int k) { return origin - 40.0 * k; }; };
    const auto nowhere = [](int) { return missingCoordinate; };
    const auto once = [nan](int k) { return k == 1 ? 20 : nan; };
    const auto slowly = [](int k) { return k < 3 ? 10 : 40.0 * k; };
    const auto left = [](int k) { return 10.0 - k; };
    const auto right = [](int k) { return 10.0 + k; };
    struct Row {
        const char* name;
        double origin;
        bool isRightward;
        std::function<double(int)> position;
        Visits expected;
    };
    const std::vector<Row> rows{
        {"up to the first one beyond", 10, true, every40From(10), {{50, 1}, {90, 2}, {130, 3}}},
        {"on the right edge there is one more", 20, true, every40From(20), {{60, 1}, {100, 2}, {140, 3}}},
        {"from the left, without the first that shows", -70, true, every40From(-70), {{50, 3}, {90, 4}, {130, 5}}},
        {"leftward", 90, false, every40To(90), {{50, 1}, {10, 2}, {-30, 3}}},
        {"from the right, without the first that shows", 170, false, every40To(170), {{50, 3}, {10, 4}, {-30, 5}}},
        {"from beyond the far edge", 101, true, right, {}},
        {"no such bar, rightward", 10, true, nowhere, {{missingCoordinate, 1}}},
        {"no such bar, leftward", 10, false, nowhere, {{missingCoordinate, 1}}},
        {"no such bar, from beyond", 170, false, nowhere, {}},
        {"the wrong way", 10, true, left, {{9, 1}}},
        {"the wrong way, leftward", 10, false, right, {{11, 1}}},
        {"origin beside its bar", 12, true, slowly, {{10, 1}, {10, 2}, {120, 3}}},
        {"not a number", 10, true, once, {{20, 1}}},
        {"origin not a number", nan, true, right, {}},
    };
    for (const auto& [name, origin, isRightward, position, expected] : rows)
        EXPECT_EQ(visits(origin, isRightward, position), expected) << name;
    const auto twice = [](int k) { return k < 3 ? std::optional(30.0 * k) : std::nullopt; };
    EXPECT_EQ(visits(0, true, twice), (Visits{{30, 1}, {60, 2}})) << "ended by the tool";
    const auto dense = [](int k) { return k * 1e-9; };
    EXPECT_EQ(visits(0, true, dense).size(), 200000U) << "denser than any picture";
    const auto crowded = [](int k) { return std::floor(k / 200.0); };
    EXPECT_EQ(visits(0, true, crowded).size(), 101U * 200) << "200 bars in a pixel";
    EXPECT_EQ(visits(0, true, [](int) { return 0.0; }).size(), 999U) << "the same bar for ever";
}
