#pragma once

#include "model/QZPaintGraph.h"

#include <array>
#include <cstdint>
#include <span>

/// A line and its parallel from three key points: the first two fix the line, the third one is on the parallel. Nothing
/// is drawn while the first two are the same.
///
/// The trend channel of classical charting: the trend line lies along the lows (or highs) of a move, the channel line
/// through the extreme on its other side shows where swings within the trend tend to end.
class QZPaintParallelChannel : public QZPaintGraph {
protected:
    /// What is settled, and the parallel that follows its key point.
    enum class Part { Lines, Preview };

    /// `roundPart` has the common style, in which wide lines end round; the other one takes its colour, width and dash
    /// alone.
    QZPaintParallelChannel(std::int64_t type, Part roundPart) : QZPaintGraph(type, 3), roundPart_(roundPart) {}

    /// The line and its parallel (px).
    [[nodiscard]] virtual std::array<QZLine, 2> channelLines() const = 0;

    void applyStyle(QZGraphicsContext& context) const override;
    void drawFigure(QZGraphicsContext& context) override;

private:
    void stroke(Part part, std::span<const QZLine> lines, QZGraphicsContext& context) const;

    Part roundPart_;
};

/// The channel of two straight lines over the full width of the layer; over its full height when they are vertical.
class QZPaintParalleLine : public QZPaintParallelChannel {
public:
    QZPaintParalleLine() : QZPaintParallelChannel(QZSTParallel, Part::Lines) {}

    /// The line through the first two key points, from edge to edge of the layer (px).
    [[nodiscard]] QZLine line1Points() const;
    /// `line1` moved up or down, a vertical one to the side, until it goes through the third key point.
    [[nodiscard]] QZLine line2Points(QZLine line1) const;
    double minDistanceFromPoint(QZPoint point) override;

protected:
    [[nodiscard]] std::array<QZLine, 2> channelLines() const override;
};

/// The segment between the first two key points and an equal one square across from it, in line with the third.
class QZPaintParalleSegment : public QZPaintParallelChannel {
public:
    QZPaintParalleSegment() : QZPaintParallelChannel(QZSTParallelSegment, Part::Preview) {}

    [[nodiscard]] QZLine line2Points() const;
    /// The third key point counts too: it may lie beyond the ends of its segment.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    [[nodiscard]] std::array<QZLine, 2> channelLines() const override;
};
