#pragma once

#include "model/QZPaintGraph.h"

/// The segment between two key points.
class QZPaintSegmentLine : public QZPaintGraph {
public:
    QZPaintSegmentLine() : QZPaintGraph(QZSTLineSegment) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;
};

/// The line through two key points, from the edge of the layer behind the first one to the edge beyond the second.
class QZPaintStraightLine : public QZPaintGraph {
public:
    QZPaintStraightLine() : QZPaintGraph(QZSTStraight) {}

    /// Measured to the infinite line.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;
};

/// The ray from the first key point through the second one to the edge of the layer.
class QZPaintRayLine : public QZPaintGraph {
public:
    QZPaintRayLine() : QZPaintGraph(QZSTRay) {}

    /// The first key point and the point at the edge (px): left or right, top or bottom for a vertical ray.
    [[nodiscard]] QZLine linePoints() const;
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;
};

/// The segment between two key points with an open arrow head at the second one.
class QZPaintSegmentArrow : public QZPaintGraph {
public:
    QZPaintSegmentArrow() : QZPaintGraph(QZSTArrowSegment) {}

    double minDistanceFromPoint(QZPoint point) override;
    /// Strokes the head: two solid strokes of `length` px at `alpha` degrees to the shaft. Nothing for equal points.
    void drawArrowWithContext(QZGraphicsContext& context, QZPoint startPoint, QZPoint endPoint, int length,
                              int alpha) const;

protected:
    void drawFigure(QZGraphicsContext& context) override;
};

/// The horizontal line through one key point, over the full width of the layer.
class QZPaintHorizonLine : public QZPaintGraph {
public:
    QZPaintHorizonLine() : QZPaintGraph(QZSTHorizon, 1) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] QZLine linePoints() const;
};

/// The horizontal line from one key point to the right edge of the layer, with the price at its start.
class QZPaintToolPriceLine : public QZPaintGraph {
public:
    QZPaintToolPriceLine() : QZPaintGraph(QZSTToolPriceLine, 1) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] QZLine linePoints() const;
};
