#include "platform/QZPainterContext.h"

#include "platform/QZTextLayout.h"

#include <QPaintEngine>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace {

// Wider strokes than any pane; a stored figure may carry any number here, and the rasteriser's cost grows with it.
constexpr double maxLineWidth = 2000.0;
// Paths are not cut at the pane, so their points are kept where the rasteriser's fixed-point arithmetic holds.
constexpr double maxPathCoordinate = 1.0e6;
// Where sharp corners are cut off, in line widths.
constexpr double miterLimit = 10.0;

// Without a clip, what a pixel device can show; a vector device shows everything.
QRectF visibleArea(const QPainter& painter, QZPainterContext::Edges edges)
{
    if (painter.hasClipping())
        return painter.clipBoundingRect();
    if (edges == QZPainterContext::Edges::Exact)
        return {-maxPathCoordinate, -maxPathCoordinate, 2.0 * maxPathCoordinate, 2.0 * maxPathCoordinate};
    const QPaintDevice& device = *painter.device();
    return painter.combinedTransform().inverted().mapRect(QRectF(0.0, 0.0, device.width(), device.height()));
}

bool isFinite(QPointF point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

QPointF clampedToRaster(QPointF point)
{
    return {std::clamp(point.x(), -maxPathCoordinate, maxPathCoordinate),
            std::clamp(point.y(), -maxPathCoordinate, maxPathCoordinate)};
}

/// The part of `line` inside `area` and how far (px) it starts behind the line's own start.
struct CutLine {
    QLineF line;
    double skipped = 0.0;
};

// Liang-Barsky: each edge of the area narrows the range of the line's parameter.
std::optional<CutLine> cutAt(const QRectF& area, const QLineF& line)
{
    const double dx = line.dx();
    const double dy = line.dy();
    double from = 0.0;
    double to = 1.0;
    const std::array<std::pair<double, double>, 4> edges{{{-dx, line.x1() - area.left()},
                                                          {dx, area.right() - line.x1()},
                                                          {-dy, line.y1() - area.top()},
                                                          {dy, area.bottom() - line.y1()}}};
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
    if (from == 0.0 && to == 1.0)
        return CutLine{line, 0.0};
    const auto at = [&](double t) { return QPointF(line.x1() + t * dx, line.y1() + t * dy); };
    return CutLine{QLineF(from == 0.0 ? line.p1() : at(from), to == 1.0 ? line.p2() : at(to)),
                   from * std::hypot(dx, dy)};
}

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

} // namespace

QZPainterContext::QZPainterContext(QPainter& painter, double height, Edges edges)
    : painter_(painter),
      height_(height),
      pixelRatio_(edges == Edges::PixelSnapped ? painter.device()->devicePixelRatio() : 0.0),
      visible_(visibleArea(painter, edges))
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
    state_.lineWidth = std::isfinite(width) ? std::clamp(width, 0.0, maxLineWidth) : 0.0;
}

void QZPainterContext::setLineDash(double phase, std::span<const double> lengths)
{
    Dash dash;
    const bool usable = lengths.size() <= Dash::capacity &&
                        std::ranges::all_of(lengths, [](double l) { return std::isfinite(l) && l >= 0.0; });
    bool hasGap = false;
    // With an odd count every length is a gap in turn.
    const std::size_t step = lengths.size() % 2 == 0 ? 2 : 1;
    for (std::size_t i = step - 1; i < lengths.size(); i += step)
        hasGap = hasGap || lengths[i] > 0.0;
    if (usable && hasGap) {
        dash.phase = phase;
        dash.count = lengths.size();
        std::ranges::copy(lengths, dash.lengths.begin());
    }
    state_.dash = dash;
}

double QZPainterContext::snappedWidth() const
{
    return pixelRatio_ > 0.0 ? std::max(1.0, std::round(state_.lineWidth * pixelRatio_)) / pixelRatio_
                             : state_.lineWidth;
}

void QZPainterContext::applyPen(double width, double phaseShift)
{
    const bool same = penApplied_ && appliedWidth_ == width && applied_.cap == state_.cap &&
                      applied_.join == state_.join && applied_.strokeColor == state_.strokeColor &&
                      applied_.dash == state_.dash && appliedPhaseShift_ == phaseShift;
    if (same)
        return;
    QPen pen(state_.strokeColor, width, Qt::SolidLine, qtCap(state_.cap), qtJoin(state_.join));
    pen.setMiterLimit(miterLimit);
    const Dash& dash = state_.dash;
    if (dash.count > 0 && width > 0.0) {
        // A QPen counts in pen widths and knows only even patterns: an odd one is written twice.
        QList<qreal> pattern;
        for (std::size_t round = 0; round < 1 + dash.count % 2; ++round)
            for (std::size_t i = 0; i < dash.count; ++i)
                pattern.append(dash.lengths[i] / width);
        pen.setDashPattern(pattern);
        pen.setDashOffset((dash.phase + phaseShift) / width);
    }
    painter_.setPen(pen);
    applied_ = state_;
    appliedWidth_ = width;
    appliedPhaseShift_ = phaseShift;
    penApplied_ = true;
}

QRectF QZPainterContext::flipped(QZRect rect) const
{
    return QRectF(rect.x, height_ - rect.y - rect.height, rect.width, rect.height).normalized();
}

double QZPainterContext::snapped(double coordinate) const
{
    // The stroke's edge, not its middle, is put on a pixel boundary: an odd width has its middle inside a pixel.
    const double half = snappedWidth() * pixelRatio_ / 2.0;
    return (std::round(coordinate * pixelRatio_ - half) + half) / pixelRatio_;
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
    painter_.fillRect(rect, state_.strokeColor);
}

void QZPainterContext::strokeSegment(QZLine line)
{
    QLineF target(flipped(line.start), flipped(line.end));
    if (!isFinite(target.p1()) || !isFinite(target.p2()))
        return;
    if (pixelRatio_ > 0.0 && target.dy() == 0.0 && target.dx() != 0.0) {
        const double y = snapped(target.y1());
        target.setLine(target.x1(), y, target.x2(), y);
    } else if (pixelRatio_ > 0.0 && target.dx() == 0.0) {
        const double x = snapped(target.x1());
        target.setLine(x, target.y1(), x, target.y2());
    }
    const bool isAxisLine = target.dx() == 0.0 || target.dy() == 0.0;
    const double width = isAxisLine ? snappedWidth() : state_.lineWidth;
    // Just beyond what can show: further out the painter would cut a thin dashed line itself and lose its phase.
    const double margin = width / 2.0 + 0.5;
    const auto cut = cutAt(visible_.adjusted(-margin, -margin, margin, margin), target);
    if (!cut)
        return;
    if (pixelRatio_ > 0.0 && isAxisLine && state_.dash.count == 0 && state_.cap == QZLineCap::Butt) {
        fillAxisLine(cut->line);
        return;
    }
    applyPen(width, state_.dash.count > 0 ? cut->skipped : 0.0);
    painter_.drawLine(cut->line);
}

void QZPainterContext::beginPath()
{
    polyline_.clear();
    path_.clear();
    isGeneralPath_ = false;
    isVoidPath_ = false;
}

void QZPainterContext::startGeneralPath()
{
    if (isGeneralPath_)
        return;
    path_.setFillRule(Qt::WindingFill);
    path_.addPolygon(polyline_);
    isGeneralPath_ = true;
}

std::optional<QPointF> QZPainterContext::pathPoint(QZPoint point)
{
    const QPointF at = flipped(point);
    isVoidPath_ = isVoidPath_ || !isFinite(at);
    return isVoidPath_ ? std::nullopt : std::optional(clampedToRaster(at));
}

void QZPainterContext::moveTo(QZPoint point)
{
    const auto at = pathPoint(point);
    if (!at)
        return;
    if (!isGeneralPath_ && polyline_.isEmpty()) {
        polyline_.append(*at);
        return;
    }
    startGeneralPath();
    path_.moveTo(*at);
}

void QZPainterContext::lineTo(QZPoint point)
{
    const auto at = pathPoint(point);
    if (!at)
        return;
    if (!isGeneralPath_)
        polyline_.append(*at);
    else if (path_.isEmpty())
        path_.moveTo(*at);
    else
        path_.lineTo(*at);
}

void QZPainterContext::addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise)
{
    const auto middle = pathPoint(center);
    if (!middle || !std::isfinite(radius) || !std::isfinite(startAngle) || !std::isfinite(endAngle))
        return;
    const double r = std::clamp(radius, 0.0, maxPathCoordinate);
    constexpr double degrees = 180.0 / std::numbers::pi;
    constexpr double turn = 2.0 * std::numbers::pi;
    const double sign = clockwise ? -1.0 : 1.0;
    double sweep = sign * (endAngle - startAngle); // positive in the asked direction
    sweep = sweep >= turn ? turn : std::fmod(sweep, turn);
    if (sweep < 0.0)
        sweep += turn;
    // QPainterPath's angles run counter-clockwise on a y-down plane, as ours do on a y-up one.
    const QRectF box(middle->x() - r, middle->y() - r, 2.0 * r, 2.0 * r);
    startGeneralPath();
    path_.arcMoveTo(box, startAngle * degrees);
    path_.arcTo(box, startAngle * degrees, sign * sweep * degrees);
}

void QZPainterContext::closePath()
{
    startGeneralPath();
    if (!path_.isEmpty())
        path_.closeSubpath();
}

void QZPainterContext::strokePath()
{
    applyPen(state_.lineWidth);
    if (isGeneralPath_ && !isVoidPath_)
        painter_.drawPath(path_);
    else if (!isVoidPath_ && polyline_.size() > 1)
        painter_.drawPolyline(polyline_);
    beginPath();
}

void QZPainterContext::fillPath()
{
    startGeneralPath();
    if (!isVoidPath_)
        painter_.fillPath(path_, state_.fillColor);
    beginPath();
}

void QZPainterContext::strokeRect(QZRect rect)
{
    QRectF target = flipped(rect);
    if (!isFinite(target.topLeft()) || !isFinite(target.bottomRight()))
        return;
    target = QRectF(clampedToRaster(target.topLeft()), clampedToRaster(target.bottomRight()));
    if (pixelRatio_ > 0.0)
        target.setCoords(snapped(target.left()), snapped(target.top()), snapped(target.right()),
                         snapped(target.bottom()));
    applyPen(snappedWidth());
    painter_.drawRect(target);
}

void QZPainterContext::fillRect(QZRect rect)
{
    const QRectF target = flipped(rect);
    if (isFinite(target.topLeft()) && isFinite(target.bottomRight()))
        painter_.fillRect(target.intersected(visible_), state_.fillColor);
}

void QZPainterContext::strokeEllipse(QZRect bounds)
{
    const QRectF target = flipped(bounds);
    if (!isFinite(target.topLeft()) || !isFinite(target.bottomRight()))
        return;
    applyPen(state_.lineWidth);
    painter_.drawEllipse(target);
}

void QZPainterContext::clearRect(QZRect rect)
{
    const QRectF target = flipped(rect);
    if (!painter_.paintEngine()->hasFeature(QPaintEngine::PorterDuff) || !isFinite(target.topLeft()))
        return;
    const QPainter::CompositionMode mode = painter_.compositionMode();
    painter_.setCompositionMode(QPainter::CompositionMode_Clear);
    painter_.fillRect(target, Qt::transparent);
    painter_.setCompositionMode(mode);
}

void QZPainterContext::drawImage(const QImage& image, QZRect rect)
{
    const QRectF target = flipped(rect);
    if (isFinite(target.topLeft()))
        painter_.drawImage(target, image);
}

void QZPainterContext::drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect)
{
    const QRectF target = flipped(rect);
    if (!isFinite(target.topLeft()))
        return;
    const QZTextLayout layout(text, font);
    // A glyph may reach out of its line: accents upwards, italics to the side.
    const double margin = layout.size().height;
    const QRectF ink(target.topLeft(), QSizeF(layout.size().width, layout.size().height));
    if (!visible_.intersects(ink.adjusted(-margin, -margin, margin, margin)))
        return;
    painter_.setPen(color);
    penApplied_ = false;
    layout.draw(painter_, target.topLeft());
}
