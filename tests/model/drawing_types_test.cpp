#include "model/QZDrawingTypes.h"
#include "model/QZPaintLogicAxis.h"
#include "model/QZPlaneGeometry.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>

TEST(DrawingTypes, NamesAndValues)
{
    const std::array<std::pair<const char*, std::int64_t>, 5> rows{{{"QZShapeTypeNone", 0},
                                                                    {"QZST8Waves", 0x4000000},
                                                                    {"QZSTToolRule", 0x20000000000},
                                                                    {"QZAllEnabledTypes", 0x3ffffffffff},
                                                                    {"QZSTToolRangeStatistics", 0x1000000000000}}};
    for (const auto& [name, value] : rows) {
        EXPECT_EQ(strQZShapeType(value), QLatin1String(name));
        EXPECT_EQ(enumQZShapeType(QLatin1String(name)), value);
    }
    for (int bit = 0; bit <= 41; ++bit)
        EXPECT_EQ(enumQZShapeType(strQZShapeType(std::int64_t{1} << bit)), std::int64_t{1} << bit);
    EXPECT_TRUE(strQZShapeType(3).isNull());
    for (const char* unknown : {"", "qzstray", "QZSTLine", "QZSTRay "})
        EXPECT_EQ(enumQZShapeType(QLatin1String(unknown)), QZShapeTypeNone) << unknown;

    for (std::uint64_t cycle = 1; cycle <= 21; ++cycle)
        EXPECT_EQ(enumZPaintCycle(strQZPaintCycle(cycle)), cycle);
    EXPECT_EQ(strQZPaintCycle(13), QStringLiteral("QZPCCandlestickCycleMonth"));
    EXPECT_TRUE(strQZPaintCycle(0).isNull());
    EXPECT_TRUE(strQZPaintCycle(22).isNull());
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
    struct Row {
        const char* name;
        double actual, expected;
    };
    const std::vector<Row> rows{
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
        {"fibonacci of 0", static_cast<double>(fibonacci(0)), -1},
        {"fibonacci of 10", static_cast<double>(fibonacci(10)), 55},
        {"fibonacci of 46", static_cast<double>(fibonacci(46)), 1836311903},
        {"fibonacci beyond 32 bits", static_cast<double>(fibonacci(47)), 1836311903},
        {"truncated towards zero", static_cast<double>(truncatedToInt(-7.9)), -7},
        {"truncated beyond 32 bits", static_cast<double>(truncatedToInt(3.4e38)), 2147483647},
        {"truncated below 32 bits", static_cast<double>(truncatedToInt(-3.4e38)), -2147483648.0},
        {"truncated not-a-number", static_cast<double>(truncatedToInt(std::nan(""))), 0},
    };
    for (const Row& row : rows)
        EXPECT_DOUBLE_EQ(row.actual, row.expected) << row.name;
}
