#pragma once

#include "platform/QZGraphicsContext.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <array>
#include <optional>
#include <vector>

/// QZGraphicsContext on a QPainter, and so on any paint device. This is where y is flipped.
///
/// A shape with a non-finite coordinate is not drawn; a segment is cut at the painter's clip before it is stroked, so
/// lines that run far off the pane cost no more than what shows of them. The painter gets its state back at the end.
class QZPainterContext final : public QZGraphicsContext {
public:
    enum class Edges {
        PixelSnapped, ///< horizontal and vertical segments and rectangles land on whole device pixels: for screens
        Exact,        ///< coordinates are taken as they are: for vector files and printers
    };

    /// `painter` is borrowed, already active and clipped as wanted; `height` is the layer's height (px). Lengths are
    /// multiplied by the painter's device pixel ratio only through the painter itself.
    QZPainterContext(QPainter& painter, double height, Edges edges);
    QZPainterContext(const QZPainterContext&) = delete;
    QZPainterContext& operator=(const QZPainterContext&) = delete;
    ~QZPainterContext() override;

    void saveState() override { saved_.push_back(state_); }
    void restoreState() override;
    void setLineWidth(double width) override;
    void setLineCap(QZLineCap cap) override { state_.cap = cap; }
    void setLineJoin(QZLineJoin join) override { state_.join = join; }
    void setLineDash(double phase, std::span<const double> lengths) override;
    void setStrokeColor(const QColor& color) override { state_.strokeColor = color; }
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
    struct Dash {
        static constexpr std::size_t capacity = 8;

        double phase = 0.0;
        std::size_t count = 0; // 0 is a solid line
        std::array<double, capacity> lengths{};

        friend bool operator==(const Dash&, const Dash&) = default;
    };
    struct State {
        double lineWidth = 1.0;
        QZLineCap cap = QZLineCap::Butt;
        QZLineJoin join = QZLineJoin::Miter;
        Dash dash;
        QColor strokeColor = Qt::black;
        QColor fillColor = Qt::black;
    };

    [[nodiscard]] QPointF flipped(QZPoint point) const { return {point.x, height_ - point.y}; }
    [[nodiscard]] QRectF flipped(QZRect rect) const;
    [[nodiscard]] double snapped(double coordinate) const;
    [[nodiscard]] double snappedWidth() const;
    /// The point for the painter; nothing, and the whole path is void, when it is not finite.
    std::optional<QPointF> pathPoint(QZPoint point);

    void applyPen(double width, double phaseShift = 0.0);
    void fillAxisLine(const QLineF& line);
    void startGeneralPath();

    QPainter& painter_;
    double height_;
    double pixelRatio_; // device pixels per px where edges are snapped, 0 where they are exact
    QRectF visible_;    // the painter's clip, y downwards
    State state_;
    std::vector<State> saved_;

    // What the painter's pen was last made from: most figures share a style, and a new QPen allocates.
    State applied_;
    double appliedWidth_ = 0.0;
    double appliedPhaseShift_ = 0.0;
    bool penApplied_ = false;

    // A path of one run of lines stays a polyline, which the painter strokes without building a QPainterPath.
    QPolygonF polyline_;
    QPainterPath path_;
    bool isGeneralPath_ = false;
    bool isVoidPath_ = false;
};
