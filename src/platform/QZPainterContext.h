#pragma once

#include "platform/QZDevicePixels.h"
#include "platform/QZGraphicsContext.h"
#include "platform/QZLineStroker.h"

#include <QPainter>

#include <optional>
#include <span>
#include <vector>

/// QZGraphicsContext on a QPainter, and so on any paint device. This is where y is flipped.
///
/// What runs off the painter's clip costs no more than what shows of it: polylines are cut there, dashes in phase and
/// corners joined as if they were not, and fills are clipped. A shape is not drawn at all if one of its coordinates is
/// not a number or beyond a float's range, or if it is round with a radius over 1,000,000 px. Widths that are not
/// finite or negative count as 0, which draws the thinnest line. The painter gets its state back at the end.
class QZPainterContext final : public QZGraphicsContext {
public:
    enum class Edges {
        /// Filled rectangles and straight lines that are horizontal or vertical, in whatever shape, land on whole
        /// device pixels: for screens.
        PixelSnapped,
        /// Coordinates, whole lines and their dashes are handed to the device as they are: for vector files, printers.
        Exact,
    };

    /// `painter` is borrowed, already active and clipped as wanted; `height` is the layer's height (px). Lengths are
    /// multiplied by the painter's device pixel ratio only through the painter itself.
    QZPainterContext(QPainter& painter, double height, Edges edges);
    QZPainterContext(const QZPainterContext&) = delete;
    QZPainterContext& operator=(const QZPainterContext&) = delete;
    ~QZPainterContext() override;

    /// What saveState() saves.
    struct State {
        QZStrokeStyle stroke;
        QColor fillColor = Qt::black;
    };
    /// For a drawing that goes on in another context.
    [[nodiscard]] const State& state() const { return state_; }
    void setState(const State& state) { state_ = state; }

    void saveState() override { saved_.push_back(state_); }
    void restoreState() override;
    void setLineWidth(double width) override;
    void setLineCap(QZLineCap cap) override { state_.stroke.cap = cap; }
    void setLineJoin(QZLineJoin join) override { state_.stroke.join = join; }
    void setLineDash(double phase, std::span<const double> lengths) override { state_.stroke.dash = {phase, lengths}; }
    void setStrokeColor(const QColor& color) override { state_.stroke.color = color; }
    void setFillColor(const QColor& color) override { state_.fillColor = color; }

    void strokeSegment(QZLine line) override;
    void beginPath() override;
    void moveTo(QZPoint point) override;
    void lineTo(QZPoint point) override;
    void addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise) override;
    void closePath() override;
    void strokePath() override;
    void fillPath() override;

    void strokeRect(QZRect rect) override;
    void fillRect(QZRect rect) override;
    void strokeEllipse(QZRect bounds) override;
    void clearRect(QZRect rect) override;

    void drawImage(const QImage& image, QZRect rect) override;
    void drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect) override;

private:
    struct Subpath {
        std::size_t first = 0; // index into points_, up to the next subpath's
        bool isClosed = false;
        bool isRound = false; // flattened: none of its legs is meant to be horizontal or vertical
    };

    [[nodiscard]] QPointF flipped(QZPoint point) const { return {point.x, height_ - point.y}; }
    /// The rectangle for the painter; nothing when it cannot be drawn.
    [[nodiscard]] std::optional<QRectF> flipped(QZRect rect) const;
    [[nodiscard]] double snapped(double coordinate) const;
    [[nodiscard]] double snappedWidth() const;
    /// Puts horizontal and vertical legs on whole device pixels; false when there was none.
    [[nodiscard]] bool snapToPixels(std::span<QPointF> points, bool isClosed) const;
    /// Puts the edges between two device pixels each.
    [[nodiscard]] QRectF snapToPixels(const QRectF& area) const;

    void addPoint(QPointF point);
    void addRoundSubpath(QPointF center, QSizeF radii, double startAngle, double sweep);
    [[nodiscard]] std::span<QPointF> pointsOf(std::size_t subpath);
    void fillAxisLine(const QLineF& line);
    void fillOutline(const QRectF& middle);

    QPainter& painter_;
    double height_;
    double pixelRatio_; // device pixels per px where edges are snapped, 0 where they are exact
    QZDevicePixels pixels_;
    QRectF visible_; // the painter's clip, y downwards
    QZLineStroker stroker_;
    State state_;
    std::vector<State> saved_;

    // The path: all its points in one array, y downwards.
    std::vector<QPointF> points_;
    std::vector<Subpath> subpaths_;
    bool isVoidPath_ = false; // has a point that cannot be drawn
};
