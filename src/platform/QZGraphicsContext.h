#pragma once

#include "platform/QZGeometry.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <span>

enum class QZLineCap { Butt, Round, Square };
enum class QZLineJoin { Miter, Round, Bevel };

/// An abstract 2-D drawing target in layer coordinates (px, y upwards). Figures draw through it alone, so the same code
/// paints a pane, an SVG file, a printed page or a list of operations in a test.
///
/// A fresh context has line width 1, butt caps, mitred joins, a solid line and black colours. Angles are in radians,
/// counter-clockwise from the positive x axis.
class QZGraphicsContext {
public:
    virtual ~QZGraphicsContext() = default;

    /// Saves line width, cap, join, dash and both colours. States nest; the current path is not part of them.
    virtual void saveState() = 0;
    /// Takes back the state saved last; without one, does nothing.
    virtual void restoreState() = 0;

    virtual void setLineWidth(double width) = 0;
    virtual void setLineCap(QZLineCap cap) = 0;
    virtual void setLineJoin(QZLineJoin join) = 0;
    /// On and off lengths in px, starting `phase` px into the pattern. An odd count swaps the roles at each repeat; a
    /// pattern without gaps, such as {1, 0}, is a solid line.
    virtual void setLineDash(double phase, std::span<const double> lengths) = 0;
    virtual void setStrokeColor(const QColor& color) = 0;
    virtual void setFillColor(const QColor& color) = 0;

    virtual void strokeSegment(QZLine line) = 0;

    virtual void beginPath() = 0;
    virtual void moveTo(QZPoint point) = 0;
    virtual void lineTo(QZPoint point) = 0;
    /// An arc of a circle, as a subpath of its own.
    virtual void addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise) = 0;
    virtual void closePath() = 0;
    /// Strokes or fills the current path and leaves an empty one.
    virtual void strokePath() = 0;
    virtual void fillPath() = 0;

    /// Negative widths and heights extend the rectangle to the left and downwards.
    virtual void strokeRect(QZRect rect) = 0;
    virtual void fillRect(QZRect rect) = 0;
    virtual void strokeEllipse(QZRect bounds) = 0;
    /// Makes the rectangle transparent, where the target has transparency at all; otherwise does nothing.
    virtual void clearRect(QZRect rect) = 0;

    virtual void drawImage(const QImage& image, QZRect rect) = 0;
    /// Lays `text` out from the top left of `rect`, in lines as measureText() of QZFont.h measures them; what does not
    /// fit runs over the edges.
    virtual void drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect) = 0;
};
