#pragma once

#include "model/QZPaintGraph.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

/// Vertical lines over the chart's full height, each captioned with the bar that it stands on, counted from the first
/// key point's as 1 (as -1 towards the left). Only x counts for a hit.
class QZPaintCountedLines : public QZPaintGraph {
public:
    /// Draws one line at `x` (px) and its count.
    void drawLine(QZGraphicsContext& context, double x, std::int32_t count) const;

protected:
    using QZPaintGraph::QZPaintGraph;

    using CountOfTurn = std::function<std::optional<std::int32_t>(std::int32_t turn)>;
    using Visit = std::function<void(double x, std::int32_t count)>;

    /// Calls `visit` for each line that shows, which is a call of walk().
    virtual void forEachLine(const Visit& visit) const = 0;
    /// Line `turn`, from 1 on, stands on the bar that `countOfTurn` says; where it says nothing, there are no more.
    void walk(bool isRightward, const CountOfTurn& countOfTurn, const Visit& visit) const;
    void drawLines(QZGraphicsContext& context) const;
    /// Distance (px) from `x` to the nearest line, `farthest` when none is nearer.
    [[nodiscard]] double distanceToNearest(double x, double farthest) const;
};

/// Fibonacci time zones: lines on bar 1, 1, 2, 3, 5, 8, 13... from one key point, usually a major top or bottom. A turn
/// of the trend is looked for near them.
class QZPaintFibonacci : public QZPaintCountedLines {
public:
    QZPaintFibonacci() : QZPaintCountedLines(QZSTFibonacci, 1) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;
    void forEachLine(const Visit& visit) const override;
};

/// Lines at multiples of the bars between two key points, to the side on which the second one lies.
class QZPaintCycles : public QZPaintCountedLines {
public:
    double minDistanceFromPoint(QZPoint point) override;

protected:
    using Multiplier = std::optional<std::int32_t> (*)(std::int32_t turn);

    QZPaintCycles(std::int64_t type, Multiplier multiplier) : QZPaintCountedLines(type), multiplier_(multiplier) {}

    void drawFigure(QZGraphicsContext& context) override;
    void forEachLine(const Visit& visit) const override;

private:
    Multiplier multiplier_;
};

/// Cycle lines: the span from one low to the next, repeated over the chart. J. M. Hurst's equal cycles: the next lows
/// are expected on the lines to come.
class QZPaintCycleLine : public QZPaintCycles {
public:
    QZPaintCycleLine();
};

/// Free Fibonacci cycles: time zones whose unit is the span between two key points instead of one bar.
class QZPaintFreeFeis : public QZPaintCycles {
public:
    QZPaintFreeFeis();
};

/// Time rule: a tinted box between two key points with its number of bars. Drawing makes the tint its fill colour.
class QZPaintTimeRule : public QZPaintGraph {
public:
    QZPaintTimeRule() : QZPaintGraph(QZSTTimeRule) {}

    /// Measured to the upright edges and the middle line; the area is no hit.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// Edge at the first point, edge at the second one, middle line.
    [[nodiscard]] std::array<QZLine, 3> lines() const;
    void drawBarCount(QZGraphicsContext& context) const;
};

/// Symmetric lines: the span from a turning point to a second one, mirrored to the other side. Gann's balance of time:
/// a fall is expected to take as long as the rise before it.
class QZPaintSymmetricLine : public QZPaintGraph {
public:
    QZPaintSymmetricLine() : QZPaintGraph(QZSTSymmetric) {}

    /// The line `ratio` spans to the second point's side of the first one, on the nearest bar (px); -1 is the mirror.
    [[nodiscard]] QZLine linePoints(float ratio) const;
    double minDistanceFromPoint(QZPoint point) override;
    /// Draws the count of bars in the span.
    void drawInfomation(QZGraphicsContext& context) const;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] std::array<QZLine, 3> lines() const;
};

/// Symmetric angle: the arm from a turning point to a second one, its mirror image about the upright through the
/// turning point, and the angle (degrees, on the screen) of either to that axis. Shows whether a decline is as steep as
/// the advance was.
class QZPaintSymmetricAngleLine : public QZPaintGraph {
public:
    QZPaintSymmetricAngleLine() : QZPaintGraph(QZSTSymmetricAngle) {}

    /// From the first key point to the second one's height, `ratio` of the distance between them to its side (px).
    [[nodiscard]] QZLine linePoints(float ratio) const;
    double minDistanceFromPoint(QZPoint point) override;
    /// Draws the angle beside the apex, on the side of the second point; "0" for coincident points.
    void drawAngleText(QZGraphicsContext& context) const;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] QZPoint mirrored() const;
    [[nodiscard]] QZPoint axisEnd() const;
};
