#include "platform/QZPainterContext.h"

#include "platform/QZTextCache.h"
#include "platform/QZTextLayout.h"

#include <QPaintEngine>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

// Wider strokes than any pane; a stored figure may carry any number here, and the rasteriser's cost grows with it.
constexpr double maxLineWidth = 2000.0;
// Chart points that cannot be placed are at minus the largest float: the furthest that lines are computed from.
constexpr double maxCoordinate = std::numeric_limits<float>::max();
// What a vector file without a clip shows (px).
constexpr double maxVectorCoordinate = 1.0e6;
constexpr double maxRadius = 1.0e6;
// How far (px) a flattened curve may be off.
constexpr double flatness = 0.05;

// Without a clip, what a pixel device can show; a vector device shows everything.
QRectF visibleArea(const QPainter& painter, QZPainterContext::Edges edges)
{
    if (painter.hasClipping())
        return painter.clipBoundingRect();
    if (edges == QZPainterContext::Edges::Exact)
        return {-maxVectorCoordinate, -maxVectorCoordinate, 2.0 * maxVectorCoordinate, 2.0 * maxVectorCoordinate};
    const QPaintDevice& device = *painter.device();
    return painter.combinedTransform().inverted().mapRect(QRectF(0.0, 0.0, device.width(), device.height()));
}

double snappedRatio(const QPainter& painter, QZPainterContext::Edges edges)
{
    return edges == QZPainterContext::Edges::PixelSnapped ? painter.device()->devicePixelRatio() : 0.0;
}

// False for not-a-number too.
bool isDrawable(QPointF point)
{
    return std::abs(point.x()) <= maxCoordinate && std::abs(point.y()) <= maxCoordinate;
}

/// A branch whose first leg lies on a line of `path` keeps just enough of that leg for the corner at its end: drawn
/// over each other, the anti-aliased edges of both would add up to a bold and jagged line.
void trimBranch(const std::vector<QZLineStroker::Subpath>& path, std::span<QPointF> points, double width)
{
    const QLineF leg(points[1], points[0]);
    const double kept = width + 2.0;
    const auto covers = [&leg](const QZLineStroker::Subpath& line) { return isOnOneLeg(line.points, leg); };
    if (leg.length() > kept && std::ranges::any_of(path, covers))
        points[0] = leg.pointAt(kept / leg.length());
}

} // namespace

QZPainterContext::QZPainterContext(QPainter& painter, double height, Edges edges)
    : painter_(painter),
      height_(height),
      pixelRatio_(snappedRatio(painter, edges)),
      pixels_(painter, pixelRatio_),
      visible_(visibleArea(painter, edges)),
      stroker_(painter, pixels_, pixelRatio_, visible_)
{
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.setBrush(Qt::NoBrush);
}

QZPainterContext::~QZPainterContext()
{
    painter_.restore();
}

void QZPainterContext::restoreState()
{
    if (saved_.empty())
        return;
    state_ = saved_.back();
    saved_.pop_back();
}

void QZPainterContext::setLineWidth(double width)
{
    state_.stroke.width = std::isfinite(width) ? std::clamp(width, 0.0, maxLineWidth) : 0.0;
}

std::optional<QRectF> QZPainterContext::flipped(QZRect rect) const
{
    const QPointF corner = flipped(QZPoint{rect.minX(), rect.minY()});
    const QPointF opposite = flipped(QZPoint{rect.maxX(), rect.maxY()});
    if (!isDrawable(corner) || !isDrawable(opposite))
        return std::nullopt;
    return QRectF(corner, opposite).normalized();
}

double QZPainterContext::snappedWidth() const
{
    const double width = state_.stroke.width;
    return pixelRatio_ > 0.0 ? std::max(1.0, std::round(width * pixelRatio_)) / pixelRatio_ : width;
}

double QZPainterContext::snapped(double coordinate) const
{
    // The stroke's edge, not its middle, is put on a pixel boundary: an odd width has its middle inside a pixel.
    const double half = snappedWidth() * pixelRatio_ / 2.0;
    return (std::round(coordinate * pixelRatio_ - half) + half) / pixelRatio_;
}

bool QZPainterContext::snapToPixels(std::span<QPointF> points, bool isClosed) const
{
    if (pixelRatio_ == 0.0)
        return false;
    bool hasSnapped = false;
    const QPointF first = points[0];
    QPointF from = first; // as it was before its own leg was moved
    for (std::size_t i = 1; i < points.size() + (isClosed ? 1 : 0); ++i) {
        QPointF& end = points[i % points.size()];
        const QPointF to = i == points.size() ? first : end;
        const bool isHorizontal = from.y() == to.y() && from.x() != to.x();
        const bool isVertical = from.x() == to.x() && from.y() != to.y();
        for (QPointF* point : {&points[i - 1], &end}) {
            if (isHorizontal)
                point->setY(snapped(to.y()));
            else if (isVertical)
                point->setX(snapped(to.x()));
        }
        hasSnapped = hasSnapped || isHorizontal || isVertical;
        from = to;
    }
    return hasSnapped;
}

// A horizontal or vertical solid line is a rectangle, which is several times cheaper to fill than to stroke.
void QZPainterContext::fillAxisLine(const QLineF& line)
{
    const double width = snappedWidth();
    QRectF rect = QRectF(line.p1(), line.p2()).normalized();
    if (line.dy() == 0.0)
        rect.adjust(0.0, -width / 2.0, 0.0, width / 2.0);
    else
        rect.adjust(-width / 2.0, 0.0, width / 2.0, 0.0);
    painter_.fillRect(rect, state_.stroke.color);
}

// Four rectangles, filled to the last pixel: a thin pen leaves the corners of a polygon pale.
void QZPainterContext::fillOutline(const QRectF& middle)
{
    const double half = snappedWidth() / 2.0;
    const QRectF outer = middle.adjusted(-half, -half, half, half);
    const QRectF inner = middle.adjusted(half, half, -half, -half);
    if (!inner.isValid()) {
        painter_.fillRect(outer.intersected(visible_), state_.stroke.color);
        return;
    }
    for (const QRectF& side : {QRectF(outer.topLeft(), QPointF(outer.right(), inner.top())),
                               QRectF(QPointF(outer.left(), inner.bottom()), outer.bottomRight()),
                               QRectF(QPointF(outer.left(), inner.top()), inner.bottomLeft()),
                               QRectF(inner.topRight(), QPointF(outer.right(), inner.bottom()))})
        painter_.fillRect(side.intersected(visible_), state_.stroke.color);
}

void QZPainterContext::strokeSegment(QZLine line)
{
    std::array ends{flipped(line.start), flipped(line.end)};
    if (!isDrawable(ends[0]) || !isDrawable(ends[1]))
        return;
    QZStrokeStyle style = state_.stroke;
    const bool isAxisLine = snapToPixels(ends, false);
    if (isAxisLine)
        style.width = snappedWidth();
    const QLineF target(ends[0], ends[1]);
    if (!isAxisLine || (style.dash.isSolid() && style.cap != QZLineCap::Butt))
        stroker_.strokeLine(target, style);
    else if (!style.dash.isSolid())
        stroker_.strokeAxisLine(target, style);
    else if (const auto cut = stroker_.cutLine(target, style.width))
        fillAxisLine(cut->line);
}

void QZPainterContext::beginPath()
{
    points_.clear();
    subpaths_.clear();
    isVoidPath_ = false;
}

std::span<QPointF> QZPainterContext::pointsOf(std::size_t subpath)
{
    const std::size_t first = subpaths_[subpath].first;
    const std::size_t end = subpath + 1 < subpaths_.size() ? subpaths_[subpath + 1].first : points_.size();
    return std::span(points_).subspan(first, end - first);
}

void QZPainterContext::addPoint(QPointF point)
{
    isVoidPath_ = isVoidPath_ || !isDrawable(point);
    points_.push_back(point);
}

void QZPainterContext::moveTo(QZPoint point)
{
    subpaths_.push_back({points_.size()});
    addPoint(flipped(point));
}

void QZPainterContext::lineTo(QZPoint point)
{
    if (subpaths_.empty()) {
        moveTo(point);
        return;
    }
    // What follows a closed subpath starts where that one did.
    if (const Subpath& last = subpaths_.back(); last.isClosed) {
        const QPointF start = points_[last.first];
        subpaths_.push_back({points_.size()});
        addPoint(start);
    }
    addPoint(flipped(point));
}

// Angles run counter-clockwise for the eye, on a plane whose y runs downwards.
void QZPainterContext::addRoundSubpath(QPointF center, QSizeF radii, double startAngle, double sweep)
{
    const double radius = std::max(radii.width(), radii.height());
    if (!isDrawable(center) || !(radius <= maxRadius)) {
        isVoidPath_ = true;
        return;
    }
    // A chord over the angle a is radius * a^2 / 8 away from its arc.
    const double step = std::sqrt(8.0 * flatness / std::max(radius, flatness));
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / step)));
    subpaths_.push_back({.first = points_.size(), .isClosed = false, .isRound = true});
    for (int i = 0; i <= count; ++i) {
        const double angle = startAngle + sweep * i / count;
        addPoint({center.x() + radii.width() * std::cos(angle), center.y() - radii.height() * std::sin(angle)});
    }
}

void QZPainterContext::addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise)
{
    if (std::isnan(radius) || !std::isfinite(startAngle) || !std::isfinite(endAngle)) {
        isVoidPath_ = true;
        return;
    }
    constexpr double turn = 2.0 * std::numbers::pi;
    const double sign = clockwise ? -1.0 : 1.0;
    double sweep = sign * (endAngle - startAngle); // positive in the asked direction
    sweep = sweep >= turn ? turn : std::fmod(sweep, turn);
    if (sweep < 0.0)
        sweep += turn;
    const double r = std::max(0.0, radius);
    addRoundSubpath(flipped(center), {r, r}, startAngle, sign * sweep);
}

void QZPainterContext::closePath()
{
    if (!subpaths_.empty())
        subpaths_.back().isClosed = true;
}

void QZPainterContext::strokePath()
{
    QZStrokeStyle style = state_.stroke;
    std::vector<QZLineStroker::Subpath> path;
    for (std::size_t i = 0; i < subpaths_.size() && !isVoidPath_; ++i) {
        const Subpath& subpath = subpaths_[i];
        const std::span<QPointF> points = pointsOf(i);
        if (points.size() < 2)
            continue;
        if (!subpath.isRound && snapToPixels(points, subpath.isClosed))
            style.width = snappedWidth();
        if (pixelRatio_ > 0.0 && style.dash.isSolid() && !subpath.isRound && !subpath.isClosed)
            trimBranch(path, points, style.width);
        path.push_back({points, subpath.isClosed});
    }
    stroker_.stroke(path, style);
    beginPath();
}

void QZPainterContext::fillPath()
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (std::size_t i = 0; i < subpaths_.size() && !isVoidPath_; ++i) {
        // Cut outside what shows, or the cut would get an anti-aliased edge there.
        path.addPolygon(clippedPolygon(visible_.adjusted(-1.0, -1.0, 1.0, 1.0), pointsOf(i)));
    }
    painter_.fillPath(path, state_.fillColor);
    beginPath();
}

void QZPainterContext::strokeRect(QZRect rect)
{
    const auto target = flipped(rect);
    if (!target)
        return;
    std::array corners{target->topLeft(), target->topRight(), target->bottomRight(), target->bottomLeft()};
    QZStrokeStyle style = state_.stroke;
    if (snapToPixels(corners, true)) {
        style.width = snappedWidth();
        if (style.dash.isSolid() && style.join == QZLineJoin::Miter) {
            fillOutline({corners[0], corners[2]});
            return;
        }
    }
    const QZLineStroker::Subpath outline{corners, true};
    stroker_.stroke({&outline, 1}, style);
}

QRectF QZPainterContext::snapToPixels(const QRectF& area) const
{
    if (pixelRatio_ == 0.0)
        return area;
    const auto edge = [this](double coordinate) { return std::round(coordinate * pixelRatio_) / pixelRatio_; };
    return {QPointF(edge(area.left()), edge(area.top())), QPointF(edge(area.right()), edge(area.bottom()))};
}

void QZPainterContext::fillRect(QZRect rect)
{
    if (const auto target = flipped(rect))
        painter_.fillRect(snapToPixels(*target).intersected(visible_), state_.fillColor);
}

void QZPainterContext::strokeEllipse(QZRect bounds)
{
    const auto target = flipped(bounds);
    if (!target)
        return;
    // Handles are small, solid circles: those the painter draws best. It would draw all of what does not show, too.
    if (visible_.contains(*target) && state_.stroke.dash.isSolid()) {
        stroker_.strokeEllipse(*target, state_.stroke);
        return;
    }
    beginPath();
    addRoundSubpath(target->center(), target->size() / 2.0, 0.0, 2.0 * std::numbers::pi);
    closePath();
    strokePath();
}

void QZPainterContext::clearRect(QZRect rect)
{
    const auto target = flipped(rect);
    if (!target || !painter_.paintEngine()->hasFeature(QPaintEngine::PorterDuff))
        return;
    const QPainter::CompositionMode mode = painter_.compositionMode();
    painter_.setCompositionMode(QPainter::CompositionMode_Clear);
    painter_.fillRect(target->intersected(visible_), Qt::transparent);
    painter_.setCompositionMode(mode);
}

void QZPainterContext::drawImage(const QImage& image, QZRect rect)
{
    const auto target = flipped(rect);
    if (!target || target->isEmpty() || !visible_.intersects(*target))
        return;
    // Only what shows of it: the rasteriser's arithmetic does not hold out for everything that a rectangle can be.
    const QRectF shown = target->intersected(visible_.adjusted(-1.0, -1.0, 1.0, 1.0));
    const double across = image.width() / target->width();
    const double down = image.height() / target->height();
    painter_.drawImage(shown, image,
                       QRectF((shown.x() - target->x()) * across, (shown.y() - target->y()) * down,
                              shown.width() * across, shown.height() * down));
}

void QZPainterContext::drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect)
{
    const auto target = flipped(rect);
    if (!target)
        return;
    const QZTextSize size = measureText(text, font);
    // A glyph may reach out of its line: accents upwards, italics to the side.
    const double margin = size.height;
    const QRectF ink(target->topLeft(), QSizeF(size.width, size.height));
    if (!visible_.intersects(ink.adjusted(-margin, -margin, margin, margin)) ||
        QZTextCache::ofThread().draw(pixels_, pixelRatio_, text, font, color, target->topLeft()))
        return;
    painter_.setPen(color);
    stroker_.forgetPen();
    QZTextLayout(text, font).draw(painter_, target->topLeft());
}
