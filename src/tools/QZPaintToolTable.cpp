#include "tools/QZPaintToolTable.h"

#include "tools/QZPaintFans.h"
#include "tools/QZPaintLevels.h"
#include "tools/QZPaintMarks.h"
#include "tools/QZPaintMeasuring.h"
#include "tools/QZPaintParallelChannels.h"
#include "tools/QZPaintRangeStatistics.h"
#include "tools/QZPaintRegression.h"
#include "tools/QZPaintShapes.h"
#include "tools/QZPaintStraightLines.h"
#include "tools/QZPaintTimeCycles.h"
#include "tools/QZPaintWaveRules.h"
#include "tools/QZPaintWaves.h"

#include <algorithm>
#include <array>

namespace {

// Red and green of about the same contrast on white and on black.
constexpr QColor riseColor(255, 59, 48);
constexpr QColor dropColor(24, 150, 66);

template <typename Tool>
std::shared_ptr<QZPaintGraph> create()
{
    return std::make_shared<Tool>();
}

std::shared_ptr<QZPaintGraph> createMark(const char16_t* glyph, const QColor& color)
{
    auto mark = std::make_shared<QZPaintToolUp>();
    mark->setString(QString::fromUtf16(glyph));
    mark->setStrokeColor(color);
    return mark;
}

std::shared_ptr<QZPaintGraph> createNote()
{
    auto note = std::make_shared<QZPaintToolText>();
    note->setText(QStringLiteral("新建"));
    return note;
}

constexpr std::array tools = std::to_array<QZPaintToolRow>({
    {QZSTLineSegment, create<QZPaintSegmentLine>},
    {QZSTRay, create<QZPaintRayLine>},
    {QZSTHorizon, create<QZPaintHorizonLine>},
    {QZSTStraight, create<QZPaintStraightLine>},
    {QZSTParallel, create<QZPaintParalleLine>},
    {QZSTLineRegression, create<QZPaintRegressionLine>},
    {QZSTArrowSegment, create<QZPaintSegmentArrow>},
    {QZSTParallelSegment, create<QZPaintParalleSegment>},
    {QZST5Waves, create<QZPaintFiveWaves>},
    {QZST3Waves, create<QZPaintThreeWaves>},
    {QZSTRectangle, create<QZPaintRectangle>},
    {QZSTGoldenSection, create<QZPaintGoldenSelection>},
    {QZSTPercentage, create<QZPaintPercentage>},
    {QZSTFibonacci, create<QZPaintFibonacci>},
    {QZSTGannFan, create<QZPaintGannFan>},
    {QZSTCycle, create<QZPaintCycleLine>},
    {QZSTSymmetric, create<QZPaintSymmetricLine>},
    {QZSTSymmetricAngle, create<QZPaintSymmetricAngleLine>},
    {QZSTTimeRule, create<QZPaintTimeRule>},
    {QZSTFreeFeis, create<QZPaintFreeFeis>},
    {QZSTToolText, createNote},
    {QZSTToolUp, [] { return createMark(QZPaintToolUp::upGlyph, riseColor); }},
    {QZSTToolDown, [] { return createMark(QZPaintToolUp::downGlyph, dropColor); }},
    {QZST8Waves, create<QZPaintEightWaves>},
    {QZSTHeadLine, create<QZPaintHeadLine>},
    {QZSTMWLine, create<QZPaintMWLine>},
    {QZSTHorizonSpace, create<QZPaintHorizonSpace>},
    {QZSTRangeRule, create<QZPaintRangeRule>},
    {QZSTWaveRule, create<QZPaintWaveRule>},
    {QZSTTurnRule, create<QZPaintTurnRule>},
    {QZSTSpeedResistance, create<QZPaintSpeedResistance>},
    {QZSTRegionRegression, create<QZPaintRegressionRegion>},
    {QZSTBoxLine, create<QZPaintBoxLine>},
    {QZSTParallelogram, create<QZPaintParallelogram>},
    {QZSTTriangle, create<QZPaintTriangle>},
    {QZSTArc, create<QZPaintArc>},
    {QZSTPipeRegression, create<QZPaintRegressionPipe>},
    {QZSTToolPriceLine, create<QZPaintToolPriceLine>},
    {QZSTToolRule, create<QZPaintToolRule>},
    {QZSTToolRangeStatistics, []() -> std::shared_ptr<QZPaintGraph> { return QZPaintRangeStatistics::sharedGraph(); }},
});

} // namespace

std::span<const QZPaintToolRow> paintToolTable()
{
    return tools;
}

std::shared_ptr<QZPaintGraph> createPaintTool(std::int64_t type)
{
    const auto row = std::ranges::find(tools, type, [](const QZPaintToolRow& r) -> std::int64_t { return r.type; });
    return row == tools.end() ? std::make_shared<QZPaintGraph>() : row->create();
}
