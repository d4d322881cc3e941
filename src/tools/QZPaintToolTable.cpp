#include "tools/QZPaintToolTable.h"

#include "tools/QZPaintMeasuring.h"
#include "tools/QZPaintRangeStatistics.h"
#include "tools/QZPaintRegression.h"
#include "tools/QZPaintStraightLines.h"

#include <algorithm>
#include <array>

namespace {

template <typename Tool>
std::shared_ptr<QZPaintGraph> create()
{
    return std::make_shared<Tool>();
}

constexpr std::array tools = std::to_array<QZPaintToolRow>({
    {QZSTLineSegment, create<QZPaintSegmentLine>},
    {QZSTRay, create<QZPaintRayLine>},
    {QZSTHorizon, create<QZPaintHorizonLine>},
    {QZSTStraight, create<QZPaintStraightLine>},
    {QZSTLineRegression, create<QZPaintRegressionLine>},
    {QZSTArrowSegment, create<QZPaintSegmentArrow>},
    {QZSTRangeRule, create<QZPaintRangeRule>},
    {QZSTRegionRegression, create<QZPaintRegressionRegion>},
    {QZSTBoxLine, create<QZPaintBoxLine>},
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
