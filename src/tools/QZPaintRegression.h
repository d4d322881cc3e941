#pragma once

#include "model/QZHostRecords.h"
#include "model/QZPaintGraph.h"

#include <array>
#include <optional>

/// What the three regression tools share: a range of bars between two key points, of which only x counts, and the lines
/// that the host fits through the prices of those bars (least squares, after Gauss). The host may move the range onto
/// its bars; drawing takes that over. While the figure is drawn or selected, two dashed guides show the range.
///
/// They neither save nor restore the context's state: colour, width and dash stay set.
class QZPaintRegressionTool : public QZPaintGraph {
public:
    void drawInContext(QZGraphicsContext& context) override;
    /// Two vertical guides at the key points, over the height of the chart's rectangle.
    void drawTimeRangeInContext(QZGraphicsContext& context) const;
    double minDistanceFromPoint(QZPoint point) override;
    /// A key point is taken hold of anywhere along its guide.
    bool selectKeyPointNearPoint(QZPoint point) override;

protected:
    /// The fitted line and the two that bound the channel, from the left end of the range to its right end (px).
    using Lines = std::array<QZLine, 3>;

    using QZPaintGraph::QZPaintGraph;

    virtual void drawLines(QZGraphicsContext& context, const Lines& lines) const = 0;
    /// Distance (px) to the lines, once the host has fitted them.
    [[nodiscard]] virtual double distanceToLines(QZPoint point, const Lines& lines) const = 0;
    /// Whether the host is asked for the lines although `x` (px) lies off the range.
    [[nodiscard]] virtual bool reachesBeyondRange() const { return false; }

private:
    [[nodiscard]] std::optional<QZRegressionCalcData> regressionData() const;
    void takeOverRange(const QZRegressionCalcData& data);
};

/// The linear regression of the prices in a range: the trend of these bars without their noise.
class QZPaintRegressionLine : public QZPaintRegressionTool {
public:
    QZPaintRegressionLine() : QZPaintRegressionTool(QZSTLineRegression) {}

protected:
    void drawLines(QZGraphicsContext& context, const Lines& lines) const override;
    /// Measured to the infinite line.
    [[nodiscard]] double distanceToLines(QZPoint point, const Lines& lines) const override;
};

/// The regression line between two parallels that bound the prices of the range (Raff's regression channel).
class QZPaintRegressionRegion : public QZPaintRegressionTool {
public:
    QZPaintRegressionRegion() : QZPaintRegressionTool(QZSTRegionRegression) {}

protected:
    void drawLines(QZGraphicsContext& context, const Lines& lines) const override;
    /// Measured to the infinite lines.
    [[nodiscard]] double distanceToLines(QZPoint point, const Lines& lines) const override;
};

/// The regression channel, continued in dashes to the right edge of the chart: where prices go if the trend holds.
class QZPaintRegressionPipe : public QZPaintRegressionTool {
public:
    QZPaintRegressionPipe() : QZPaintRegressionTool(QZSTPipeRegression) {}

    /// One line from `points.start` to `points.end`, and its dashed continuation.
    void drawRegressionLine(QZGraphicsContext& context, const QZLine& points) const;

protected:
    void drawLines(QZGraphicsContext& context, const Lines& lines) const override;
    /// Measured to the lines as they are drawn, continuation included.
    [[nodiscard]] double distanceToLines(QZPoint point, const Lines& lines) const override;
    [[nodiscard]] bool reachesBeyondRange() const override { return true; }

private:
    [[nodiscard]] QZPoint endOfContinuation(const QZLine& line) const;
};
