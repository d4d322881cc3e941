#include "app/demo/GalleryFigures.h"

#include <array>

namespace {

using Spot = GallerySpot;

// A rise in five waves (turning points 0 to 5), whose last three tops are a head and its shoulders, and a fall in three
// (5 to 8).
constexpr GalleryScene trend{446, 541, 4};
// A double bottom between two tops (0 to 4).
constexpr GalleryScene bottom{1092, 1188, 8};

constexpr int thin = 1; // where lines are many
constexpr int bold = 2;

template <typename... Spots>
constexpr std::array<Spot, sizeof...(Spots)> spots(Spots... each)
{
    return {each...};
}

constexpr auto lows = spots(Spot{2}, Spot{4});
constexpr auto firstLows = spots(Spot{0}, Spot{2});
constexpr auto tops = spots(Spot{1}, Spot{3});
constexpr auto fromAbove = spots(Spot{5, 14, -2}, Spot{5, 2, -1});
constexpr auto resistance = spots(Spot{3});
constexpr auto support = spots(Spot{4});
constexpr auto channel = spots(Spot{2}, Spot{4}, Spot{3});
constexpr auto thirdTop = spots(Spot{0}, Spot{3});
constexpr auto rise = spots(Spot{0}, Spot{5});
constexpr auto upToReaction = spots(Spot{0}, Spot{4});
constexpr auto farRise = spots(Spot{0, 1, -1}, Spot{5});
constexpr auto belowRise = spots(Spot{0, 0, -3}, Spot{5, 0, -76});
constexpr auto laterRise = spots(Spot{2}, Spot{5});
constexpr auto cycle = spots(Spot{0}, Spot{2});
constexpr auto start = spots(Spot{2});
constexpr auto unit = spots(Spot{0}, Spot{0, 7, 10});
constexpr auto backFromTop = spots(Spot{5}, Spot{4});
constexpr auto farBackFromTop = spots(Spot{5}, Spot{2});
constexpr auto correction = spots(Spot{5}, Spot{6}, Spot{7}, Spot{8});
constexpr auto impulse = spots(Spot{0}, Spot{1}, Spot{2}, Spot{3}, Spot{4}, Spot{5});
constexpr auto allWaves = spots(Spot{0}, Spot{1}, Spot{2}, Spot{3}, Spot{4}, Spot{5}, Spot{6}, Spot{7}, Spot{8});
constexpr auto projection = spots(Spot{0}, Spot{1}, Spot{2});
constexpr auto lastRise = spots(Spot{4}, Spot{5});
constexpr auto narrowing = spots(Spot{5}, Spot{6}, Spot{7, 16, -4});
constexpr auto thirdWave = spots(Spot{2}, Spot{3});
constexpr auto leaning = spots(Spot{2, 0, -2}, Spot{4, 0, -2}, Spot{4, -3, 13});
constexpr auto shoulders = spots(Spot{2}, Spot{3}, Spot{4}, Spot{5}, Spot{6}, Spot{7}, Spot{8});
constexpr auto doubleBottom = spots(Spot{0}, Spot{1}, Spot{2}, Spot{3}, Spot{4});
constexpr auto shelf = spots(Spot{0, 1}, Spot{2, -1});
constexpr auto belowLow = spots(Spot{4, 0, -10});
constexpr auto aboveTop = spots(Spot{3, 0, 3});
constexpr auto besideTop = spots(Spot{5, 3, -1});

constexpr GalleryFigure onTrend(QZShapeType type, std::span<const Spot> where, int lineWidth)
{
    return {type, where, lineWidth, trend};
}

constexpr std::array figures{onTrend(QZSTLineSegment, lows, bold),
                             onTrend(QZSTRay, firstLows, bold),
                             onTrend(QZSTStraight, tops, bold),
                             onTrend(QZSTArrowSegment, fromAbove, bold),
                             onTrend(QZSTHorizon, resistance, bold),
                             onTrend(QZSTToolPriceLine, support, bold),
                             onTrend(QZSTParallel, channel, bold),
                             onTrend(QZSTParallelSegment, channel, bold),
                             onTrend(QZSTGannFan, thirdTop, thin),
                             onTrend(QZSTSpeedResistance, rise, bold),
                             onTrend(QZSTGoldenSection, rise, thin),
                             onTrend(QZSTPercentage, rise, thin),
                             onTrend(QZSTHorizonSpace, rise, thin),
                             onTrend(QZSTLineRegression, rise, bold),
                             onTrend(QZSTRegionRegression, laterRise, thin),
                             onTrend(QZSTPipeRegression, upToReaction, thin),
                             onTrend(QZSTCycle, cycle, thin),
                             onTrend(QZSTFibonacci, start, thin),
                             onTrend(QZSTFreeFeis, unit, thin),
                             onTrend(QZSTTimeRule, belowRise, thin),
                             onTrend(QZSTSymmetric, backFromTop, thin),
                             onTrend(QZSTSymmetricAngle, farBackFromTop, bold),
                             onTrend(QZST3Waves, correction, bold),
                             onTrend(QZST5Waves, impulse, bold),
                             onTrend(QZST8Waves, allWaves, bold),
                             onTrend(QZSTWaveRule, projection, thin),
                             onTrend(QZSTTurnRule, lastRise, thin),
                             onTrend(QZSTTriangle, narrowing, bold),
                             onTrend(QZSTRectangle, thirdWave, thin),
                             onTrend(QZSTParallelogram, leaning, bold),
                             onTrend(QZSTArc, farBackFromTop, thin),
                             onTrend(QZSTHeadLine, shoulders, bold),
                             GalleryFigure{QZSTMWLine, doubleBottom, bold, bottom},
                             onTrend(QZSTToolRule, farRise, thin),
                             onTrend(QZSTRangeRule, lastRise, thin),
                             onTrend(QZSTBoxLine, shelf, thin),
                             onTrend(QZSTToolUp, belowLow, thin),
                             onTrend(QZSTToolDown, aboveTop, thin),
                             onTrend(QZSTToolText, besideTop, thin),
                             onTrend(QZSTToolRangeStatistics, lastRise, thin)};

} // namespace

std::span<const GalleryFigure> galleryFigures()
{
    return figures;
}
