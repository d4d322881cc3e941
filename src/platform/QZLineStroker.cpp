#include "platform/QZLineStroker.h"

#include "platform/QZDashStrips.h"

#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

// Where sharp corners are cut off, in line widths from the inner to the outer corner.
constexpr double miterLimit = 10.0;
// How far the corner of a square cap is from the line's end, in half line widths.
constexpr double squareCapReach = std::numbers::sqrt2;
// Pieces of one line overlap by this much (px), or the background would shine through their anti-aliased ends.
constexpr double overlap = 0.5;
// Short enough (px) for the rasteriser, and long enough for a curve to be few pieces.
constexpr double pieceLength = 100.0;

Qt::PenCapStyle qtCap(QZLineCap cap)
{
    switch (cap) {
    case QZLineCap::Round:
        return Qt::RoundCap;
    case QZLineCap::Square:
        return Qt::SquareCap;
    case QZLineCap::Butt:
        break;
    }
    return Qt::FlatCap;
}

Qt::PenJoinStyle qtJoin(QZLineJoin join)
{
    switch (join) {
    case QZLineJoin::Round:
        return Qt::RoundJoin;
    case QZLineJoin::Bevel:
        return Qt::BevelJoin;
    case QZLineJoin::Miter:
        break;
    }
    return Qt::SvgMiterJoin;
}

// Half a pixel more than the ink reaches, for the anti-aliased edge.
QRectF grown(const QRectF& area, double inkReach)
{
    const double margin = inkReach + 0.5;
    return area.adjusted(-margin, -margin, margin, margin);
}

/// A closed polyline as an open one, whose ends overlap on its first leg.
std::vector<QPointF> openedOnFirstLeg(std::span<const QPointF> points, double reach)
{
    const QLineF leg(points[0], points[1]);
    std::vector<QPointF> around{leg.pointAt(std::min(0.5, reach / leg.length()))};
    around.insert(around.end(), points.begin() + 1, points.end());
    around.push_back(points[0]);
    around.push_back(leg.pointAt(std::min(1.0, (reach + overlap) / leg.length())));
    return around;
}

} // namespace

void QZLineStroker::applyPen(const QZStrokeStyle& style, double dashOffset)
{
    if (isPenApplied_ && applied_ == style && appliedOffset_ == dashOffset)
        return;
    QPen pen(style.color, style.width, Qt::SolidLine, qtCap(style.cap), qtJoin(style.join));
    pen.setMiterLimit(miterLimit);
    if (pixelRatio_ == 0.0 && !style.dash.isSolid()) {
        // A QPen counts in its widths, and one of no width in px.
        const double unit = style.width > 0.0 ? style.width : 1.0;
        QList<qreal> pattern;
        for (const double length : style.dash.lengths())
            pattern.append(length / unit);
        pen.setDashPattern(pattern);
        pen.setDashOffset(dashOffset / unit);
    }
    painter_.setPen(pen);
    applied_ = style;
    appliedOffset_ = dashOffset;
    isPenApplied_ = true;
}

void QZLineStroker::strokeEllipse(const QRectF& bounds, const QZStrokeStyle& style)
{
    applyPen(style);
    painter_.drawEllipse(bounds);
}

std::optional<QZCutLine> QZLineStroker::cutLine(const QLineF& line, double width) const
{
    return cutAt(grown(visible_, width / 2.0 * squareCapReach), line);
}

void QZLineStroker::strokeLine(const QLineF& line, const QZStrokeStyle& style)
{
    const auto cut = cutLine(line, style.width);
    if (!cut)
        return;
    if (style.dash.isSolid() || pixelRatio_ == 0.0) {
        applyPen(style, style.dash.offset(cut->skipped));
        painter_.drawLine(cut->line);
    } else {
        const std::array ends{cut->line.p1(), cut->line.p2()};
        strokeDashes({ends, cut->skipped, false}, style);
    }
}

void QZLineStroker::strokeAxisLine(const QLineF& line, const QZStrokeStyle& style)
{
    const auto cut = cutLine(line, style.width);
    if (cut && !(pixels_.areReached() && style.cap == QZLineCap::Butt && strokeFromStrip(*cut, style)))
        strokeLine(line, style);
}

bool QZLineStroker::strokeFromStrip(const QZCutLine& cut, const QZStrokeStyle& style)
{
    const QPointF start = pixels_.at(cut.line.p1());
    const QPointF end = pixels_.at(cut.line.p2());
    const bool isVertical = start.x() == end.x();
    const double from = isVertical ? start.y() : start.x();
    const double to = isVertical ? end.y() : end.x();
    const double first = std::ceil(std::min(from, to));
    const double last = std::floor(std::max(from, to));
    if (first >= last)
        return false;
    const bool isBack = to < from;
    const double offset = style.dash.offset(cut.skipped) * pixelRatio_;
    const double width = style.width * pixelRatio_;
    const QZDashStrips::Stretch whole{.isVertical = isVertical,
                                      .start = static_cast<int>(first),
                                      .length = static_cast<int>(last - first),
                                      .side = qRound((isVertical ? start.x() : start.y()) - width / 2.0),
                                      .width = qRound(width),
                                      .way = isBack ? first - from - offset : first - from + offset,
                                      .isBack = isBack};
    if (!QZDashStrips::ofThread().draw(pixels_, pixelRatio_, whole, style.dash, style.color))
        return false;
    // The ends reach into one more pixel each.
    const auto strokeRest = [&](double restFrom, double restTo) {
        if (restFrom == restTo)
            return;
        const auto at = [&](double place) { return cut.line.pointAt((place - from) / (to - from)); };
        const std::array rest{at(restFrom), at(restTo)};
        strokeDashes({rest, cut.skipped + std::abs(restFrom - from) / pixelRatio_, false}, style);
    };
    strokeRest(from, isBack ? last : first);
    strokeRest(isBack ? first : last, to);
    return true;
}

void QZLineStroker::forEachRun(std::span<const Subpath> path, const QZStrokeStyle& style,
                               const RunHandler& handle) const
{
    const double reach = style.join == QZLineJoin::Miter ? miterLimit : squareCapReach;
    const QRectF area = grown(visible_, style.width / 2.0 * reach);
    for (const Subpath& subpath : path) {
        if (subpath.isClosed && !style.dash.isSolid()) {
            // The pattern starts at the first corner and ends there.
            std::vector<QPointF> around(subpath.points.begin(), subpath.points.end());
            around.push_back(around.front());
            forEachVisibleRun(area, around, false, handle);
        } else {
            forEachVisibleRun(area, subpath.points, subpath.isClosed, handle);
        }
    }
}

void QZLineStroker::stroke(std::span<const Subpath> path, const QZStrokeStyle& style)
{
    if (pixelRatio_ == 0.0 || (style.dash.isSolid() && style.color.alpha() < 255)) {
        strokeAsOne(path, style);
    } else if (style.dash.isSolid()) {
        applyPen(style);
        forEachRun(path, style, [&](const QZLineRun& run) { strokeRun(run, style.width); });
    } else {
        forEachRun(path, style, [&](const QZLineRun& run) { strokeDashes(run, style); });
    }
}

void QZLineStroker::strokeAsOne(std::span<const Subpath> path, const QZStrokeStyle& style)
{
    QPainterPath runs;
    double offset = 0.0;
    const auto strokeRuns = [&] {
        if (runs.isEmpty())
            return;
        applyPen(style, offset);
        painter_.drawPath(runs);
        runs.clear();
    };
    forEachRun(path, style, [&](const QZLineRun& run) {
        // A pen starts its pattern anew with each subpath, but always in the same place.
        const double runOffset = style.dash.offset(run.skipped);
        if (runOffset != offset)
            strokeRuns();
        offset = runOffset;
        runs.moveTo(run.points[0]);
        // The raster painter strokes a path of single legs leg by leg.
        if (pixelRatio_ > 0.0 && run.points.size() == 2)
            runs.lineTo((run.points[0] + run.points[1]) / 2.0);
        for (const QPointF point : run.points.subspan(1))
            runs.lineTo(point);
        if (run.isClosed)
            runs.closeSubpath();
    });
    strokeRuns();
}

void QZLineStroker::strokeRun(const QZLineRun& run, double width)
{
    const auto count = static_cast<int>(run.points.size());
    const double reach = width + 2.0;
    const bool isThin = width * pixelRatio_ <= 1.0;
    if (isThin && run.isClosed)
        painter_.drawPolygon(run.points.data(), count);
    else if (isThin)
        painter_.drawPolyline(run.points.data(), count);
    else if (run.isClosed)
        strokeInPieces(openedOnFirstLeg(run.points, reach), reach);
    else
        strokeInPieces(run.points, reach);
}

// `reach` is how far from its corners a leg is drawn with them.
void QZLineStroker::strokeInPieces(std::span<const QPointF> polyline, double reach)
{
    std::vector<QPointF> piece{polyline[0]};
    double walked = 0.0;
    const auto endPiece = [&] {
        if (piece.size() > 1)
            painter_.drawPolyline(piece.data(), static_cast<int>(piece.size()));
        piece.clear();
        walked = 0.0;
    };
    const std::size_t last = polyline.size() - 1;
    for (std::size_t i = 1; i <= last; ++i) {
        const QLineF leg(polyline[i - 1], polyline[i]);
        const double length = leg.length();
        const bool isLong = length > 4.0 * reach;
        if (isLong || (walked > pieceLength && length > 2.0 * overlap)) {
            // At the ends of the polyline there is no corner.
            const double in = isLong ? (i == 1 ? 0.0 : reach) : length / 2.0;
            const double out = isLong ? (i == last ? length : length - reach) : in;
            if (in > 0.0)
                piece.push_back(leg.pointAt((in + overlap) / length));
            endPiece();
            if (isLong)
                painter_.drawLine(leg.pointAt(in / length), leg.pointAt(out / length));
            if (out < length)
                piece.push_back(leg.pointAt((out - overlap) / length));
        }
        piece.push_back(leg.p2());
        walked += length;
    }
    endPiece();
}

void QZLineStroker::strokeDashes(const QZLineRun& run, const QZStrokeStyle& style)
{
    applyPen(style);
    lines_.clear();
    forEachDash(style.dash, run, [&](std::span<const QPointF> dash) {
        if (dash.size() == 2)
            lines_.emplace_back(dash[0], dash[1]);
        else
            strokeRun({dash, 0.0, false}, style.width);
    });
    painter_.drawLines(lines_.data(), static_cast<int>(lines_.size()));
}
