#pragma once

#include <QLineF>
#include <QPolygonF>
#include <QRectF>

#include <functional>
#include <optional>
#include <span>

/// The part of a segment inside an area.
struct QZCutLine {
    QLineF line;
    double skipped = 0.0; ///< how far (px) `line` starts behind the segment's own start
};

/// Nothing where the segment misses `area`; ends inside it stay as they are, to the bit.
std::optional<QZCutLine> cutAt(const QRectF& area, const QLineF& segment);

/// Consecutive legs of a polyline that are inside an area.
struct QZLineRun {
    std::span<const QPointF> points; ///< valid during the call that hands it over
    double skipped = 0.0;            ///< way (px) along the polyline from its start to points[0]
    bool isClosed = false;           ///< the last point is joined to the first; only for a polygon that is not cut
};

/// Hands over what `area` shows of a polyline, in order, as few runs as that takes: one is ended only by leaving the
/// area. A closed polyline that is cut is taken apart at a corner outside, so that `skipped` means nothing there.
void forEachVisibleRun(const QRectF& area, std::span<const QPointF> polyline, bool isClosed,
                       const std::function<void(const QZLineRun&)>& handle);

/// A polygon that covers what `polygon` covers of `area`, with the same winding, and nothing far outside
/// (I. Sutherland, G. Hodgman, Reentrant Polygon Clipping, 1974).
QPolygonF clippedPolygon(const QRectF& area, std::span<const QPointF> polygon);

/// Whether one leg of a polyline covers `segment`, give or take what nobody sees.
bool isOnOneLeg(std::span<const QPointF> polyline, const QLineF& segment);
