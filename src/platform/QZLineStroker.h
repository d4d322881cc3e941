#pragma once

#include "platform/QZDevicePixels.h"
#include "platform/QZGraphicsContext.h"
#include "platform/QZLineDash.h"

#include <QPainter>

#include <functional>
#include <optional>
#include <span>
#include <vector>

struct QZStrokeStyle {
    double width = 1.0; ///< px; 0 is the thinnest line that the device has
    QZLineCap cap = QZLineCap::Butt;
    QZLineJoin join = QZLineJoin::Miter;
    QZLineDash dash;
    QColor color = Qt::black;

    friend bool operator==(const QZStrokeStyle&, const QZStrokeStyle&) = default;
};

/// Strokes polylines on a QPainter, in its coordinates, cut at an area first.
///
/// On pixel devices dashes are lines of their own: the raster painter's own run at other lengths on thin slanted lines,
/// lose their phase where it cuts a line, and melt into a solid line on long ones. And a wide opaque polyline is put
/// together from short pieces round the corners and plain lines between them, because the raster painter's time for one
/// outline grows with the square of its length. Vector devices get whole polylines and the pen's dashes.
class QZLineStroker {
public:
    /// `painter` and its `pixels` are borrowed; nothing outside `visible` needs to be drawn. `pixelRatio` is device
    /// pixels per px, 0 for vectors.
    QZLineStroker(QPainter& painter, const QZDevicePixels& pixels, double pixelRatio, const QRectF& visible)
        : painter_(painter), pixels_(pixels), pixelRatio_(pixelRatio), visible_(visible)
    {}

    struct Subpath {
        std::span<const QPointF> points; ///< at least two
        bool isClosed = false;
    };
    /// Subpaths of one path: where they overlap, a translucent colour counts once.
    void stroke(std::span<const Subpath> path, const QZStrokeStyle& style);
    void strokeLine(const QLineF& line, const QZStrokeStyle& style);
    /// A horizontal or vertical line whose sides lie between device pixels; its dashes come from strips where they can.
    void strokeAxisLine(const QLineF& line, const QZStrokeStyle& style);
    /// A whole ellipse, which is not cut. `style` is solid.
    void strokeEllipse(const QRectF& bounds, const QZStrokeStyle& style);

    /// The part of `line` that can leave ink in the visible area: a stroke has a width.
    [[nodiscard]] std::optional<QZCutLine> cutLine(const QLineF& line, double width) const;

    /// To be called when others have changed the painter's pen.
    void forgetPen() { isPenApplied_ = false; }

private:
    using RunHandler = std::function<void(const QZLineRun&)>;

    void applyPen(const QZStrokeStyle& style, double dashOffset = 0.0);
    void forEachRun(std::span<const Subpath> path, const QZStrokeStyle& style, const RunHandler& handle) const;
    void strokeAsOne(std::span<const Subpath> path, const QZStrokeStyle& style);
    void strokeRun(const QZLineRun& run, double width);
    void strokeInPieces(std::span<const QPointF> polyline, double reach);
    bool strokeFromStrip(const QZCutLine& cut, const QZStrokeStyle& style);
    void strokeDashes(const QZLineRun& run, const QZStrokeStyle& style);

    QPainter& painter_;
    const QZDevicePixels& pixels_;
    double pixelRatio_;
    QRectF visible_;

    // What the painter's pen was last made from: most figures share a style, and a new QPen allocates.
    QZStrokeStyle applied_;
    double appliedOffset_ = 0.0;
    bool isPenApplied_ = false;

    std::vector<QLineF> lines_; // dashes that are drawn in one go
};
