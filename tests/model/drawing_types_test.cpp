#include "model/QZDrawingTypes.h"
#include "model/QZPaintLogicAxis.h"
#include "model/QZPlaneGeometry.h"

#include <QStringList>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>
#include <vector>

TEST(DrawingTypes, NamesAndValues)
{
    QStringList names;
    for (const std::int64_t value : {0x0LL, 0x4000000LL, 0x20000000000LL, 0x3ffffffffffLL, 0x1000000000000LL}) {
        names += strQZShapeType(value);
        EXPECT_EQ(enumQZShapeType(names.back()), value);
    }
    EXPECT_EQ(names.join(u' ').toStdString(),
              "QZShapeTypeNone QZST8Waves QZSTToolRule QZAllEnabledTypes QZSTToolRangeStatistics");
    for (int bit = 0; bit <= 41; ++bit)
        EXPECT_EQ(enumQZShapeType(strQZShapeType(std::int64_t{1} << bit)), std::int64_t{1} << bit);
    for (const char* unknown : {"", "qzstray", "QZSTLine", "QZSTRay "})
        EXPECT_EQ(enumQZShapeType(QLatin1String(unknown)), QZShapeTypeNone) << unknown;

    for (std::uint64_t cycle = 1; cycle <= 21; ++cycle)
        EXPECT_EQ(enumZPaintCycle(strQZPaintCycle(cycle)), cycle);
    EXPECT_EQ(strQZPaintCycle(13), QStringLiteral("QZPCCandlestickCycleMonth"));
    EXPECT_TRUE(strQZPaintCycle(0).isNull() && strQZPaintCycle(22).isNull() && strQZShapeType(3).isNull());
    EXPECT_EQ(enumZPaintCycle(QStringLiteral("QZPCCandlestickCycleMin3")), 1U);
}

TEST(LogicAxis, ArchiveAndDescription)
{
    const QZPaintLogicAxis axis{20240102, 93000, 10.0625, {5, 6}};
    const QZPaintLogicAxis restored = QZPaintLogicAxis::initWithCoder(axis.encodeWithCoder());
    EXPECT_EQ(restored.description(), QStringLiteral("date = 20240102, time = 93000, price = 10.062")) << "tie to even";
    EXPECT_EQ(restored.price, 10.0625);
    EXPECT_EQ(restored.orginalPoint, QZPoint{});
    EXPECT_EQ(axis.encodeWithCoder()[QStringLiteral("time")].toInteger(), 93000);
    EXPECT_EQ((QZPaintLogicAxis{0, 0, -0.0625}.description()), QStringLiteral("date = 0, time = 0, price = -0.062"));
}

TEST(PlaneGeometry, DistancesAndPointsOfALine)
{
    constexpr double none = 3.4028234663852886e38;
    const std::vector<std::tuple<const char*, double, double>> rows{
        {"the range is closed", distanceOfPoints({100000, 0}, {0, 0}), 100000},
        {"out of range", distanceOfPoints({0, 0}, {200000, 0}), 6},
        {"infinite line beyond its points", minDistanceFromPointToLine({-50, 5}, {0, 0}, {10, 0}), 5},
        {"line through all but equal points", minDistanceFromPointToLine({3, 4}, {0, 0}, {0.00005, -0.00005}), 5},
        {"line out of range", minDistanceFromPointToLine({0, 0}, {0, 0}, {100001, 0}), 6},
        // In doubles throughout it would be 48.90999939061175.
        {"32-bit norm", minDistanceFromPointToLine({50, 90}, {0, 0}, {123.456, 78.9}), 48.90999719641625},
        {"segment, clamped to the right end", minDistanceFromPointToSegment({60, 0}, {0, 0}, {50, 0}), 10},
        {"segment, clamped to the left end", minDistanceFromPointToSegment({-3, 4}, {50, 0}, {0, 0}), 5},
        {"vertical segment is its whole line", minDistanceFromPointToSegment({10, 100}, {0, 0}, {0, 50}), 10},
        {"segment of equal points", minDistanceFromPointToSegment({3, 4}, {0, 0}, {0, 0}), 5},
        {"segment out of range, foot inside", minDistanceFromPointToSegment({100, 3}, {0, 0}, {200000, 0}), 6},
        {"at x, beyond the points", getPointFromLine(30, {0, 10}, {10, 20}).y, 40},
        {"at x, equal points", getPointFromLine(30, {5, 6}, {5, 6}).x, 5},
        {"at x, vertical", getPointFromLine(30, {5, 6}, {5.00009, 7}).y, none},
        {"at y, vertical", getPointFromLineViaY(40, {5, 6}, {5, 7}).x, 5},
        {"at y, equal points", getPointFromLineViaY(40, {5, 6}, {5, 6}).x, none},
        {"at y, hardly sloped", getPointFromLineViaY(1, {0, 0}, {1, 0.00002}).x, 50000},
    };
    for (const auto& [name, actual, expected] : rows)
        EXPECT_DOUBLE_EQ(actual, expected) << name;
    EXPECT_EQ(std::vector({fibonacci(0), fibonacci(10), fibonacci(46), fibonacci(47)}),
              std::vector({-1, 55, 1836311903, 1836311903}));
    EXPECT_EQ(std::vector({truncatedToInt(-7.9), truncatedToInt(3.4e38), truncatedToInt(-3.4e38)}),
              std::vector({-7, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}));
    EXPECT_EQ(truncatedToInt(std::nan("")), 0);
}
