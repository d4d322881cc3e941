#include "model/QZDrawingTypes.h"

#include <algorithm>
#include <array>

namespace {

template <typename Value>
struct Named {
    QLatin1StringView name;
    Value value;
};

// clang-format off
#define QZ_NAMED(value) {QLatin1StringView(#value), value}

constexpr std::array shapeTypes = std::to_array<Named<QZShapeType>>({
    QZ_NAMED(QZShapeTypeNone),     QZ_NAMED(QZSTLineSegment),      QZ_NAMED(QZSTRay),
    QZ_NAMED(QZSTHorizon),         QZ_NAMED(QZSTStraight),         QZ_NAMED(QZSTParallel),
    QZ_NAMED(QZSTLineRegression),  QZ_NAMED(QZSTArrowSegment),     QZ_NAMED(QZSTParallelSegment),
    QZ_NAMED(QZST5Waves),          QZ_NAMED(QZST3Waves),           QZ_NAMED(QZSTRectangle),
    QZ_NAMED(QZSTGoldenSection),   QZ_NAMED(QZSTPercentage),       QZ_NAMED(QZSTFibonacci),
    QZ_NAMED(QZSTGannFan),         QZ_NAMED(QZSTCycle),            QZ_NAMED(QZSTSymmetric),
    QZ_NAMED(QZSTSymmetricAngle),  QZ_NAMED(QZSTTimeRule),         QZ_NAMED(QZSTFreeFeis),
    QZ_NAMED(QZSTToolText),        QZ_NAMED(QZSTToolUp),           QZ_NAMED(QZSTToolDown),
    QZ_NAMED(QZSTToolDelete),      QZ_NAMED(QZSTToolMagnet),       QZ_NAMED(QZSTToolEye),
    QZ_NAMED(QZST8Waves),          QZ_NAMED(QZSTHeadLine),         QZ_NAMED(QZSTMWLine),
    QZ_NAMED(QZSTHorizonSpace),    QZ_NAMED(QZSTRangeRule),        QZ_NAMED(QZSTWaveRule),
    QZ_NAMED(QZSTTurnRule),        QZ_NAMED(QZSTSpeedResistance),  QZ_NAMED(QZSTRegionRegression),
    QZ_NAMED(QZSTBoxLine),         QZ_NAMED(QZSTParallelogram),    QZ_NAMED(QZSTTriangle),
    QZ_NAMED(QZSTArc),             QZ_NAMED(QZSTPipeRegression),   QZ_NAMED(QZSTToolPriceLine),
    QZ_NAMED(QZSTToolRule),        QZ_NAMED(QZAllEnabledTypes),    QZ_NAMED(QZSTToolRangeStatistics),
});

constexpr std::array cycles = std::to_array<Named<QZPaintCycle>>({
    QZ_NAMED(QZPCRealTimeCycleDay),        QZ_NAMED(QZPCRealTimeCycle2Day),       QZ_NAMED(QZPCRealTimeCycle3Day),
    QZ_NAMED(QZPCRealTimeCycle4Day),       QZ_NAMED(QZPCRealTimeCycle5Day),       QZ_NAMED(QZPCRealTimeCycle6Day),
    QZ_NAMED(QZPCRealTimeCycle7Day),       QZ_NAMED(QZPCRealTimeCycle8Day),       QZ_NAMED(QZPCRealTimeCycle9Day),
    QZ_NAMED(QZPCRealTimeCycle10Day),      QZ_NAMED(QZPCCandlestickCycleDay),     QZ_NAMED(QZPCCandlestickCycleWeek),
    QZ_NAMED(QZPCCandlestickCycleMonth),   QZ_NAMED(QZPCCandlestickCycleQuarter), QZ_NAMED(QZPCCandlestickCycleYear),
    QZ_NAMED(QZPCCandlestickCycleMin1),    QZ_NAMED(QZPCCandlestickCycleMin5),    QZ_NAMED(QZPCCandlestickCycleMin15),
    QZ_NAMED(QZPCCandlestickCycleMin30),   QZ_NAMED(QZPCCandlestickCycleMin60),   QZ_NAMED(QZPCCandlestickCycleMin120),
});

#undef QZ_NAMED
// clang-format on

template <typename Table, typename Value>
QString nameOf(const Table& table, Value value)
{
    const auto row =
        std::ranges::find_if(table, [value](const auto& r) { return static_cast<Value>(r.value) == value; });
    return row == table.end() ? QString() : QString(row->name);
}

template <typename Table, typename Value>
Value valueOf(const Table& table, const QString& name, Value unknown)
{
    const auto row = std::ranges::find_if(table, [&name](const auto& r) { return name == r.name; });
    return row == table.end() ? unknown : row->value;
}

} // namespace

QString strQZShapeType(std::int64_t type)
{
    return nameOf(shapeTypes, type);
}

QZShapeType enumQZShapeType(const QString& name)
{
    return valueOf(shapeTypes, name, QZShapeTypeNone);
}

QString strQZPaintCycle(std::uint64_t cycle)
{
    return nameOf(cycles, cycle);
}

QZPaintCycle enumZPaintCycle(const QString& name)
{
    return valueOf(cycles, name, QZPCRealTimeCycleDay);
}
