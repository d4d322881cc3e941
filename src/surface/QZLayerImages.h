#pragma once

#include "platform/QZPainterContext.h"
#include "surface/QZGraphSet.h"

#include <QImage>
#include <QRectF>

#include <functional>
#include <memory>
#include <optional>
#include <span>

/// An image of a layer and how figures come onto it. The image is borrowed.
struct QZLayerCanvas {
    QImage& image;
    std::optional<QRectF> clip; ///< px, y downwards
    double height = 0.0;        ///< of the layer (px)

    /// Hands a fresh context on the image to `draw`.
    void paint(const std::function<void(QZPainterContext&)>& draw) const;
};

/// While one figure of a layer is dragged or placed the others stand still: a picture of those under it and a picture
/// of those over it, between which a frame draws that one figure. They hold as long as nothing else changes in the
/// layer or under it; whoever keeps them lets go of them when something does.
class QZLayerImages {
public:
    using Members = std::shared_ptr<const QZGraphSet::Members>;
    using Figures = std::span<const std::shared_ptr<QZPaintGraph>>;

    /// Draws all of a frame and takes the pictures on the way: `under` in their order, `graph`, then `over`, all of
    /// which are of the set `members`.
    QZLayerImages(const QZLayerCanvas& canvas, Members members, Figures under, QZPaintGraph& graph, Figures over);

    /// Whether `over` can be drawn on a picture of its own. Handles cannot, which punch through what lies under them,
    /// nor can a line type that leaves the dash as the figure before it had it.
    [[nodiscard]] static bool canPicture(Figures over);
    /// Whether they were taken of this very set, in which nothing came or went since.
    [[nodiscard]] bool areOf(const Members& members) const { return members_ == members; }
    /// The frame with `graph` as it is now. The canvas is like the one that the pictures were taken from.
    void draw(const QZLayerCanvas& canvas, QZPaintGraph& graph) const;

private:
    void drawOver(const QZLayerCanvas& canvas) const;

    Members members_;                    // kept, so that a change of the set makes another one
    QImage under_;                       // null when nothing lies there
    QImage over_;                        // the same
    QZPainterContext::State styleUnder_; // what the figures under it leave on the context
};
