#pragma once

#include "platform/QZCursor.h"
#include "platform/QZGeometry.h"

#include <QString>

class QZPaintChart;
class QZPaintGraph;

/// What a figure asks of the layer that owns it. A figure knows its owner weakly.
class QZPaintGraphOwner {
public:
    virtual ~QZPaintGraphOwner() = default;

    /// Asks for a redraw; several requests before the next frame make one.
    virtual void setNeedsDisplay() = 0;
    /// Asks for a redraw because of a change of `graph` and nothing else.
    virtual void setNeedsDisplayOf(const QZPaintGraph& /*graph*/) { setNeedsDisplay(); }
    /// Tells that `graph` changed without asking for a redraw: it looks different in the next frame, whenever that is.
    virtual void forgetPictureOf(const QZPaintGraph& /*graph*/) {}
    /// The layer's rectangle in its own coordinates (px).
    [[nodiscard]] virtual QZRect frame() const = 0;
    [[nodiscard]] virtual bool isMouseInside() const = 0;
    /// Whether the layer's pane is the one that its split view last gave a click to.
    [[nodiscard]] virtual bool isActivePane() const = 0;
    /// Takes `graph` out of the finished figures, if it is one of them.
    virtual void removeGraph(const QZPaintGraph& graph) = 0;
    virtual void setCursor(QZCursor cursor) = 0;
    /// Opens the panel in which the text of `graph` is edited, where there is one.
    virtual void orderFrontPaintTextConfigWindow(QZPaintGraph& /*graph*/) {}
    /// The chart under the layer, null once its view is gone.
    [[nodiscard]] virtual const QZPaintChart* chart() const = 0;
    /// For the log.
    [[nodiscard]] virtual QString description() const = 0;
};
