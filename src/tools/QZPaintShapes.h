#pragma once

#include "model/QZPaintGraph.h"

#include <array>

/// The triangle of three key points: the narrowing ranges of classical charting (Schabacker; Edwards and Magee,
/// Technical Analysis of Stock Trends, 1948), from which a breakout is awaited.
class QZPaintTriangle : public QZPaintGraph {
public:
    QZPaintTriangle() : QZPaintGraph(QZSTTriangle, 3) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// The corners, the first one again at the end.
    [[nodiscard]] std::array<QZPoint, 4> outline() const;
};

/// The parallelogram of three key points, which are neighbouring corners: a trading range that leans, such as a flag.
class QZPaintParallelogram : public QZPaintGraph {
public:
    QZPaintParallelogram() : QZPaintGraph(QZSTParallelogram, 3) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] std::array<QZPoint, 5> outline() const;
};

/// The rectangle between two opposite corners with what the chart says of its bars: their number inside, the change of
/// price from the first corner to the second, relative and absolute, beside it. A trading range, or a move to measure.
class QZPaintRectangle : public QZPaintGraph {
public:
    QZPaintRectangle() : QZPaintGraph(QZSTRectangle) {}

    /// To the nearest edge; the inside is no hit.
    double minDistanceFromPoint(QZPoint point) override;

    /// Draws the captions; nothing where the chart knows nothing of the bars.
    void drawInfomation(QZGraphicsContext& context) const;

protected:
    void applyStyle(QZGraphicsContext& context) const override;
    void drawFigure(QZGraphicsContext& context) override;
};

/// Fibonacci arcs: half circles around the first key point, on the side of the second one, whose radii are Fibonacci
/// ratios of the distance between both. Places where a correction may find support both in price and in time.
class QZPaintArc : public QZPaintGraph {
public:
    static constexpr std::array arc{0.0F, 0.236F, 0.382F, 0.5F, 0.618F};

    QZPaintArc() : QZPaintGraph(QZSTArc) {}

    /// maxMinDistance on the side without arcs, and at most that.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// Radius of the arc of `ratio` (px).
    [[nodiscard]] double radius(float ratio) const;
};
