#include "app/bars/BarStatistics.h"
#include "app/chart/ChartPane.h"
#include "model/QZPaintGraph.h"
#include "model/QZPlaneGeometry.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintToolTable.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

/// How near a price must be for the magnet to take hold of it (px).
constexpr double magnetReach = 12;
/// Screens beyond the reachable bars in which tools may still place lines.
constexpr double screensBeyond = 4;

} // namespace

std::int64_t ChartPane::enableTypes() const
{
    std::int64_t types = QZSTToolMagnet | QZSTToolEye | QZSTToolDelete;
    for (const QZPaintToolRow& tool : paintToolTable())
        types |= tool.type;
    return types & QZAllEnabledTypes;
}

std::optional<QZPaintLogicAxis> ChartPane::convertFromPoint(QZPoint point) const
{
    if (std::isnan(point.x))
        return std::nullopt;
    const BarTime moment = data_->calendar.at(scale_.barAt(point.x));
    return QZPaintLogicAxis{moment.date, moment.time, scale_.valueAt(point.y), point};
}

QZPoint ChartPane::convertFromLogicAxis(const QZPaintLogicAxis& axis) const
{
    return {scale_.xOf(data_->calendar.indexOf({axis.date, axis.time})), scale_.yOf(axis.price)};
}

bool ChartPane::canBeDraggedToLeft(QZPoint point) const
{
    return canBeDragged(point.x, -1, scale_.plot.minX(), viewport_.hasScreenBefore());
}

bool ChartPane::canBeDraggedToRight(QZPoint point) const
{
    return canBeDragged(point.x, 1, scale_.plot.maxX(), viewport_.hasScreenAfter());
}

// A figure may leave the plot only where scrolling can follow it. A drag is at most as long as the plot is wide, as the
// mouse stays on it: with a screen to scroll beyond the edge the figure cannot get out of reach, with less the edge
// holds it. None of this depends on how far one mouse move goes.
bool ChartPane::canBeDragged(double x, int direction, double edge, bool hasScreenBeyond) const
{
    if (std::isnan(x))
        return false;
    const auto beyond = [direction, edge](double each) { return (each - edge) * direction; };
    if (hasScreenBeyond || beyond(x) < 0)
        return true;
    // A figure that scrolling or zooming left across the edge is not pulled back to it: it may only return.
    const auto& figure = paintLayer()->currentGraph();
    return beyond(x) == 0 && figure &&
           std::ranges::any_of(figure->points(), [&](QZPoint point) { return beyond(point.x) > 0; });
}

double ChartPane::convertXForMagnet(double x, bool canOverflow) const
{
    if (std::isnan(x))
        return x;
    const int bar = scale_.barAt(x);
    if (canOverflow || data_->series.isEmpty())
        return scale_.xOf(bar);
    return scale_.xOf(std::clamp(bar, 0, data_->series.size() - 1));
}

double ChartPane::getXPointWithLocation(float location, int gapCount) const
{
    if (std::isnan(location))
        return missingCoordinate;
    const double target = static_cast<double>(scale_.barAt(static_cast<double>(location))) + gapCount;
    const double beyond = screensBeyond * viewport_.span();
    const bool isMissing =
        gapCount < 0 ? target < viewport_.firstReachable() - beyond : target > viewport_.lastReachable() + beyond;
    return isMissing ? missingCoordinate : scale_.xOf(target);
}

std::optional<ChartPane::LoadedRange> ChartPane::loadedBetween(double x1, double x2) const
{
    if (std::isnan(x1) || std::isnan(x2))
        return std::nullopt;
    const auto [left, right] = std::minmax({scale_.barAt(x1), scale_.barAt(x2)});
    const LoadedRange range{std::max(left, 0), std::min(right, data_->series.size() - 1)};
    if (range.last < range.first)
        return std::nullopt;
    return range;
}

std::span<const Bar> ChartPane::plottedBars(LoadedRange range) const
{
    return plottedBars().subspan(static_cast<std::size_t>(range.first),
                                 static_cast<std::size_t>(range.last - range.first) + 1);
}

// A straight line on the screen is one through levels: on a logarithmic scale it is fitted to the logarithms.
bool ChartPane::calcRegressionData(QZRegressionCalcData& lines) const
{
    const auto range = loadedBetween(lines.x1, lines.x2);
    if (!range)
        return false;
    std::span<const Bar> bars = plottedBars(*range);
    std::vector<Bar> levels;
    if (scale_.isLogarithmic) {
        const auto level = [this](double value) { return scale_.level(value); };
        std::ranges::transform(bars, std::back_inserter(levels), [level](const Bar& bar) {
            return Bar{bar.date, bar.time, level(bar.open), level(bar.high), level(bar.low), level(bar.close), 0};
        });
        bars = levels;
    }
    const auto channel = regressionChannel(bars);
    if (!channel)
        return false;
    const auto yOf = [this](double level) { return scale_.yOf(scale_.valueOf(level)); };
    lines.x1 = scale_.xOf(range->first);
    lines.x2 = scale_.xOf(range->last);
    lines.line1Y1 = yOf(channel->atFirst);
    lines.line1Y2 = yOf(channel->atLast);
    lines.line2Y1 = yOf(channel->atFirst + channel->above);
    lines.line2Y2 = yOf(channel->atLast + channel->above);
    lines.line3Y1 = yOf(channel->atFirst - channel->below);
    lines.line3Y2 = yOf(channel->atLast - channel->below);
    return true;
}

bool ChartPane::calcBoxLineData(QZBoxLineCalcData& boxData) const
{
    const auto range = loadedBetween(boxData.x1, boxData.x2);
    const auto box = range ? boxStatistics(plottedBars(*range)) : std::nullopt;
    if (!box)
        return false;
    boxData.x1 = scale_.xOf(range->first);
    boxData.x2 = scale_.xOf(range->last);
    boxData.firstEdgeY = scale_.yOf(box->low);
    boxData.secondEdgeY = scale_.yOf(box->high);
    boxData.averageCostY = scale_.yOf(box->averageCost);
    boxData.count = box->count;
    boxData.averageCost = static_cast<float>(box->averageCost);
    boxData.amplitude = static_cast<float>(box->amplitude);
    boxData.difference = static_cast<float>(box->difference);
    return true;
}

// Asked for every figure of two points on each redraw: arithmetic only, no search.
std::optional<QZPaintRetangleModel> ChartPane::infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                                     int /*deltaCount*/) const
{
    if (std::isnan(start.x) || std::isnan(endPoint.x))
        return std::nullopt;
    const double from = scale_.valueAt(start.y);
    const double to = scale_.valueAt(endPoint.y);
    return QZPaintRetangleModel{.count = signedBarCount(scale_.barAt(start.x), scale_.barAt(endPoint.x)),
                                .varyScope = static_cast<float>(percentChange(from, to)),
                                .varyPrice = changeText(from, to),
                                .identify = QStringLiteral("Bars")};
}

QZPoint ChartPane::convertPointForMagnet(QZPoint point, std::uint64_t /*style*/) const
{
    if (std::isnan(point.x))
        return point;
    const int bar = scale_.barAt(point.x);
    point.x = scale_.xOf(bar);
    if (bar < 0 || bar >= data_->series.size())
        return point;
    const Bar& plotted = plottedBars()[static_cast<std::size_t>(bar)];
    const double y = scale_.yOf(nearestPrice(plotted, scale_.valueAt(point.y)));
    if (std::abs(y - point.y) <= magnetReach)
        point.y = y;
    return point;
}
