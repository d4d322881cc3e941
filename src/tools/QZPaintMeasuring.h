#pragma once

#include "model/QZHostRecords.h"
#include "model/QZPaintGraph.h"

#include <array>
#include <optional>

/// A ruler for one look: bars, percent and price between two clicks, written at the first one in the colour of a rise
/// or a fall. It measures and is never kept: its creation does not end, the second click starts the next measurement.
class QZPaintToolRule : public QZPaintGraph {
public:
    /// Takes the colours of a rise and a fall from the theme, or red and green.
    QZPaintToolRule();

    [[nodiscard]] bool showsConfigStrip() const override { return false; }
    [[nodiscard]] QColor riseColor() const { return riseColor_; }
    void setRiseColor(const QColor& color) { riseColor_ = color; }
    [[nodiscard]] QColor dropColor() const { return dropColor_; }
    void setDropColor(const QColor& color) { dropColor_ = color; }

    void mouseDown(QZPoint point) override;
    void drawInfomation(QZGraphicsContext& context) const;

protected:
    void drawFigure(QZGraphicsContext& context) override;
    /// Always a thin line, whatever width and dash new figures have.
    void applyStyle(QZGraphicsContext& context) const override;
    /// The points stay where they were clicked.
    [[nodiscard]] bool followsChart() const override { return false; }

private:
    [[nodiscard]] QColor captionColor(const QZPaintRetangleModel& range) const;

    QColor riseColor_;
    QColor dropColor_;
};

/// The price range between two heights: two bounds, a tinted band and the percent and price change across it.
class QZPaintRangeRule : public QZPaintGraph {
public:
    QZPaintRangeRule() : QZPaintGraph(QZSTRangeRule) {}

    /// Bounds and middle line; the band is no part of the figure.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    [[nodiscard]] std::array<QZLine, 2> bounds() const;
    [[nodiscard]] QZLine middleLine() const;
    void drawInfomation(QZGraphicsContext& context) const;
};

/// The box around the candles of a range of bars (a Darvas box): from their lowest to their highest price as the host
/// finds them, with the average cost as a dashed line and the host's figures beside it. Of the key points only x
/// counts.
class QZPaintBoxLine : public QZPaintGraph {
public:
    QZPaintBoxLine() : QZPaintGraph(QZSTBoxLine) {}

    /// Draws nothing, not even handles, when the host has no box for the range.
    void drawInContext(QZGraphicsContext& context) override;
    void drawInfomation(QZGraphicsContext& context, const QZBoxLineCalcData& data) const;
    /// Edges, cost line and key points; maxMinDistance when the host has no box.
    double minDistanceFromPoint(QZPoint point) override;
    /// A key point is taken hold of by its x alone.
    bool selectKeyPointNearPoint(QZPoint point) override;

    /// From the first horizontal edge to the second (px); the height is negative when the host has them the other way.
    static QZRect generateBoxRect(const QZBoxLineCalcData& data);

private:
    [[nodiscard]] std::optional<QZBoxLineCalcData> boxData() const;
    void drawBox(QZGraphicsContext& context, const QZBoxLineCalcData& data);
};
