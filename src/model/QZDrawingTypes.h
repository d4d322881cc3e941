#pragma once

#include "model/QZPaintNotifications.h"

#include <QLatin1StringView>
#include <QString>

#include <cstdint>

/// A drawing tool: one bit per tool, so that a set of tools is an OR of them. The stored form of a tool; values never
/// change.
enum QZShapeType : std::int64_t {
    QZShapeTypeNone = 0,
    QZSTLineSegment = 0x1,
    QZSTRay = 0x2,
    QZSTHorizon = 0x4,
    QZSTStraight = 0x8,
    QZSTParallel = 0x10,
    QZSTLineRegression = 0x20,
    QZSTArrowSegment = 0x40,
    QZSTParallelSegment = 0x80,
    QZST5Waves = 0x100,
    QZST3Waves = 0x200,
    QZSTRectangle = 0x400,
    QZSTGoldenSection = 0x800,
    QZSTPercentage = 0x1000,
    QZSTFibonacci = 0x2000,
    QZSTGannFan = 0x4000,
    QZSTCycle = 0x8000,
    QZSTSymmetric = 0x10000,
    QZSTSymmetricAngle = 0x20000,
    QZSTTimeRule = 0x40000,
    QZSTFreeFeis = 0x80000,
    QZSTToolText = 0x100000,
    QZSTToolUp = 0x200000,
    QZSTToolDown = 0x400000,
    QZSTToolDelete = 0x800000,
    QZSTToolMagnet = 0x1000000,
    QZSTToolEye = 0x2000000,
    QZST8Waves = 0x4000000,
    QZSTHeadLine = 0x8000000,
    QZSTMWLine = 0x10000000,
    QZSTHorizonSpace = 0x20000000,
    QZSTRangeRule = 0x40000000,
    QZSTWaveRule = 0x80000000,
    QZSTTurnRule = 0x100000000,
    QZSTSpeedResistance = 0x200000000,
    QZSTRegionRegression = 0x400000000,
    QZSTBoxLine = 0x800000000,
    QZSTParallelogram = 0x1000000000,
    QZSTTriangle = 0x2000000000,
    QZSTArc = 0x4000000000,
    QZSTPipeRegression = 0x8000000000,
    QZSTToolPriceLine = 0x10000000000,
    QZSTToolRule = 0x20000000000,
    /// Mask of bits 0 to 41, not a tool. Range statistics lie outside it: a pane must allow them explicitly.
    QZAllEnabledTypes = 0x3ffffffffff,
    QZSTToolRangeStatistics = 0x1000000000000,
};

/// Name of a shape type, null for a value that is none.
QString strQZShapeType(std::int64_t type);
/// Shape type of a name, QZShapeTypeNone for an unknown one.
QZShapeType enumQZShapeType(const QString& name);

/// The chart's period: 1 to 10 are intraday charts over that many days, 11 to 21 candlesticks. There is no 0.
enum QZPaintCycle : std::uint64_t {
    QZPCRealTimeCycleDay = 1,
    QZPCRealTimeCycle2Day = 2,
    QZPCRealTimeCycle3Day = 3,
    QZPCRealTimeCycle4Day = 4,
    QZPCRealTimeCycle5Day = 5,
    QZPCRealTimeCycle6Day = 6,
    QZPCRealTimeCycle7Day = 7,
    QZPCRealTimeCycle8Day = 8,
    QZPCRealTimeCycle9Day = 9,
    QZPCRealTimeCycle10Day = 10,
    QZPCCandlestickCycleDay = 11,
    QZPCCandlestickCycleWeek = 12,
    QZPCCandlestickCycleMonth = 13,
    QZPCCandlestickCycleQuarter = 14,
    QZPCCandlestickCycleYear = 15,
    QZPCCandlestickCycleMin1 = 16,
    QZPCCandlestickCycleMin5 = 17,
    QZPCCandlestickCycleMin15 = 18,
    QZPCCandlestickCycleMin30 = 19,
    QZPCCandlestickCycleMin60 = 20,
    QZPCCandlestickCycleMin120 = 21,
};

/// Name of a cycle, null for a value outside 1 to 21.
QString strQZPaintCycle(std::uint64_t cycle);
/// Cycle of a name, QZPCRealTimeCycleDay for an unknown one.
QZPaintCycle enumZPaintCycle(const QString& name);

/// What the configuration strip offers for a figure: one bit per control.
namespace QZGraphConfig {
inline constexpr unsigned editText = 1;
inline constexpr unsigned strokeColor = 2;
inline constexpr unsigned fillColor = 4;
inline constexpr unsigned lineType = 8;
inline constexpr unsigned lineWidth = 16;
inline constexpr unsigned lock = 32;
inline constexpr unsigned deleteGraph = 64;

/// Most figures: 26.
inline constexpr unsigned line = strokeColor | lineType | lineWidth;
inline constexpr unsigned all = editText | fillColor | line | lock | deleteGraph;
} // namespace QZGraphConfig

/// Hit radius around key points and lines (px), exclusive; also what the distance functions answer for coordinates out
/// of range, so that such a point is never a hit.
inline constexpr double maxMinDistance = 6.0;
/// Most figures that one layer draws.
inline constexpr std::int64_t maxGraphCount = 300;
/// Height of a palette picture (px), for hosts that show them elsewhere.
inline constexpr double imageHeight = 18.0;

inline constexpr QLatin1StringView databaseFileName("LinePaint.db");
inline constexpr QLatin1StringView databaseTableName("GraphTable");

/// Keys of the palette's two profiles of enabled tools.
inline constexpr QLatin1StringView QZPaintControlRealTimeKey("PaintControlRealTime");
inline constexpr QLatin1StringView QZPaintControlCandlestickKey("PaintControlCandlestick");

inline constexpr double QZLinePaintToolFactoryVersionNumber = 1.0;
inline constexpr char QZLinePaintToolFactoryVersionString[] =
    "@(#)PROGRAM:QZLinePaintToolFactory  PROJECT:QZLinePaintToolFactory-1\n";
