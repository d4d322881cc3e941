#include "platform/QZLineClip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

// QRectF::contains() leaves nothing inside an area without extent.
bool isInside(const QRectF& area, QPointF point)
{
    return area.left() <= point.x() && point.x() <= area.right() && area.top() <= point.y() &&
           point.y() <= area.bottom();
}

bool isOn(const QLineF& leg, QPointF point)
{
    constexpr double tolerance = 0.01; // px
    const QPointF way = leg.p2() - leg.p1();
    const QPointF from = point - leg.p1();
    // Not a number for a leg of no length, which covers nothing.
    const double part = std::clamp(QPointF::dotProduct(from, way) / QPointF::dotProduct(way, way), 0.0, 1.0);
    const QPointF off = from - way * part;
    return QPointF::dotProduct(off, off) <= tolerance * tolerance;
}

void forEachRunOfOpen(const QRectF& area, std::span<const QPointF> polyline,
                      const std::function<void(const QZLineRun&)>& handle)
{
    std::vector<QPointF> run;
    double runSkipped = 0.0;
    const auto endRun = [&] {
        if (!run.empty())
            handle({run, runSkipped, false});
        run.clear();
    };
    double walked = 0.0;
    for (std::size_t i = 1; i < polyline.size(); ++i) {
        const QLineF leg(polyline[i - 1], polyline[i]);
        if (const auto cut = cutAt(area, leg)) {
            if (run.empty()) {
                run.push_back(cut->line.p1());
                runSkipped = walked + cut->skipped;
            }
            run.push_back(cut->line.p2());
        }
        if (!isInside(area, leg.p2()))
            endRun();
        walked += leg.length();
    }
    endRun();
}

/// The side of one edge of a rectangle on which the rectangle lies.
struct HalfPlane {
    bool isVertical; // the edge is x = at; otherwise y = at
    double at;
    double sign; // 1 where larger coordinates are inside, -1 where smaller ones are

    [[nodiscard]] double depth(QPointF point) const { return sign * ((isVertical ? point.x() : point.y()) - at); }

    [[nodiscard]] QPointF crossing(QPointF a, QPointF b) const
    {
        const double t = depth(a) / (depth(a) - depth(b));
        return isVertical ? QPointF(at, a.y() + t * (b.y() - a.y())) : QPointF(a.x() + t * (b.x() - a.x()), at);
    }
};

} // namespace

// Liang-Barsky: each edge of the area narrows the range of the line's parameter.
std::optional<QZCutLine> cutAt(const QRectF& area, const QLineF& segment)
{
    const double dx = segment.dx();
    const double dy = segment.dy();
    double from = 0.0;
    double to = 1.0;
    const std::array<std::pair<double, double>, 4> edges{{{-dx, segment.x1() - area.left()},
                                                          {dx, area.right() - segment.x1()},
                                                          {-dy, segment.y1() - area.top()},
                                                          {dy, area.bottom() - segment.y1()}}};
    for (const auto& [slope, room] : edges) {
        if (slope == 0.0) {
            if (room < 0.0)
                return std::nullopt;
        } else if (slope < 0.0) {
            from = std::max(from, room / slope);
        } else {
            to = std::min(to, room / slope);
        }
    }
    if (from > to)
        return std::nullopt;
    const auto at = [&](double t) { return QPointF(segment.x1() + t * dx, segment.y1() + t * dy); };
    return QZCutLine{QLineF(from > 0.0 ? at(from) : segment.p1(), to < 1.0 ? at(to) : segment.p2()),
                     from > 0.0 ? from * std::hypot(dx, dy) : 0.0};
}

void forEachVisibleRun(const QRectF& area, std::span<const QPointF> polyline, bool isClosed,
                       const std::function<void(const QZLineRun&)>& handle)
{
    const auto outside = std::ranges::find_if_not(polyline, [&](QPointF point) { return isInside(area, point); });
    if (outside == polyline.end()) {
        handle({polyline, 0.0, isClosed});
    } else if (isClosed) {
        std::vector<QPointF> around(outside, polyline.end());
        around.insert(around.end(), polyline.begin(), outside + 1);
        forEachRunOfOpen(area, around, handle);
    } else {
        forEachRunOfOpen(area, polyline, handle);
    }
}

QPolygonF clippedPolygon(const QRectF& area, std::span<const QPointF> polygon)
{
    QPolygonF result(QList<QPointF>(polygon.begin(), polygon.end()));
    for (const HalfPlane side : {HalfPlane{true, area.left(), 1.0}, HalfPlane{true, area.right(), -1.0},
                                 HalfPlane{false, area.top(), 1.0}, HalfPlane{false, area.bottom(), -1.0}}) {
        const QPolygonF whole = std::exchange(result, {});
        for (qsizetype i = 0; i < whole.size(); ++i) {
            const QPointF from = whole[i == 0 ? whole.size() - 1 : i - 1];
            const QPointF to = whole[i];
            if ((side.depth(from) < 0.0) != (side.depth(to) < 0.0))
                result.append(side.crossing(from, to));
            if (side.depth(to) >= 0.0)
                result.append(to);
        }
    }
    return result;
}

bool isOnOneLeg(std::span<const QPointF> polyline, const QLineF& segment)
{
    for (std::size_t i = 1; i < polyline.size(); ++i) {
        const QLineF leg(polyline[i - 1], polyline[i]);
        if (isOn(leg, segment.p1()) && isOn(leg, segment.p2()))
            return true;
    }
    return false;
}
