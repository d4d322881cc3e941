#include "tools/QZPaintLevels.h"

#include "platform/QZFont.h"
#include "tools/QZPaintCaption.h"
#include "tools/QZPaintStrokes.h"

#include <algorithm>

namespace {

constexpr std::array percentage{0.0F, 1.0F, 0.125F, 0.25F, 0.333F, 0.375F, 0.5F, 0.625F, 0.667F, 0.75F, 0.875F};
constexpr std::array horizonSpace{0.0F, 0.125F, 0.25F, 0.375F, 0.5F, 0.625F, 0.75F, 0.875F, 1.0F};
constexpr std::array golden{0.0F, 0.236F, 0.382F, 0.5F, 0.618F, 0.809F, 1.0F, 1.382F, 1.618F, 2.0F, 2.382F, 2.618F};

constexpr double captionSize = 11.0;
constexpr double priceCaptionShift = 50.0; // px to the right of the ratio

} // namespace

QZLine QZPaintLevels::linePoints(float ratio) const
{
    const QZPoint p0 = points()[0];
    const QZPoint p1 = points()[1];
    const double y = p0.y + (p1.y - p0.y) * static_cast<double>(ratio);
    const QZRect f = frame();
    return table_.spansLayer ? QZLine{{f.minX(), y}, {f.maxX(), y}} : QZLine{{p0.x, y}, {p1.x, y}};
}

double QZPaintLevels::minDistanceFromPoint(QZPoint point)
{
    double nearest = table_.farthest;
    for (const float ratio : table_.ratios) {
        const QZLine level = linePoints(ratio);
        nearest = std::min(nearest, minDistanceFromPointToSegment(point, level.start, level.end));
    }
    return nearest;
}

double QZPaintLevels::captionX() const
{
    const auto [left, right] = std::minmax(points()[0].x, points()[1].x);
    const double visibleLeft = validateRect().minX();
    const bool reachesVisible = table_.spansLayer || visibleLeft < right;
    return reachesVisible ? std::max(visibleLeft, left) : left;
}

void QZPaintLevels::drawFigure(QZGraphicsContext& context)
{
    const QFont font = systemFont(captionSize);
    const auto dash = auxiliaryDash(static_cast<double>(lineWidth()));
    const double x = captionX();
    for (std::size_t i = 0; i < table_.ratios.size(); ++i) {
        const float ratio = table_.ratios[i];
        if (std::ranges::find(table_.solid, i) != table_.solid.end())
            setLineDash(context);
        else
            context.setLineDash(0.0, dash);
        const QZLine level = linePoints(ratio);
        context.strokeSegment(level);
        const double y = level.start.y;
        drawTextInContext(context, percentCaption(static_cast<double>(ratio) * 100.0, 1), font, {x, y});
        drawTextInContext(context, priceCaption(chart(), priceAt(level.start), 3), font, {x + priceCaptionShift, y});
    }
}

QZPaintPercentage::QZPaintPercentage()
    : QZPaintLevels(QZSTPercentage, {.ratios = percentage, .solid = {0, 1, 6}, .farthest = maxMinDistance})
{}

QZPaintHorizonSpace::QZPaintHorizonSpace()
    : QZPaintLevels(QZSTHorizonSpace, {.ratios = horizonSpace, .solid = {0, 4, 8}, .farthest = maxMinDistance})
{}

QZPaintGoldenSelection::QZPaintGoldenSelection()
    : QZPaintLevels(QZSTGoldenSection, {.ratios = golden, .solid = {0, 6, 9}, .spansLayer = true})
{}
