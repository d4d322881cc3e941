#pragma once

#include "model/QZPaintGraph.h"
#include "model/QZPlaneGeometry.h"

#include <array>
#include <cstddef>
#include <span>

/// Horizontal levels at fixed ratios of the price range between two key points, each captioned with its ratio and its
/// price: 0 lies at the first point, 1 at the second, and ratios above 1 go on beyond it. Tools differ by their table.
class QZPaintLevels : public QZPaintGraph {
public:
    /// The level at `ratio`, in layer coordinates (px): between the two points' x, or over the whole layer.
    [[nodiscard]] QZLine linePoints(float ratio) const;
    double minDistanceFromPoint(QZPoint point) override;

protected:
    struct Table {
        std::span<const float> ratios;    ///< in the order of drawing
        std::array<std::size_t, 3> solid; ///< indices of the levels in the figure's own dash; the others are dashed
        bool spansLayer = false;
        double farthest = missingCoordinate; ///< most that is measured (px)
    };

    QZPaintLevels(std::int64_t type, const Table& table) : QZPaintGraph(type), table_(table) {}

    void drawFigure(QZGraphicsContext& context) override;

private:
    /// Left end of the captions: the figure's, or the left edge of what shows while the figure begins left of it.
    [[nodiscard]] double captionX() const;

    Table table_;
};

/// Percentage lines: the eighths that W. D. Gann divided a move into, and the thirds that Charles Dow expected a
/// reaction to take back. Traders look for support and resistance there.
class QZPaintPercentage : public QZPaintLevels {
public:
    QZPaintPercentage();
};

/// Equal spacing: a move divided into Gann's eighths alone, for price rungs of one height.
class QZPaintHorizonSpace : public QZPaintLevels {
public:
    QZPaintHorizonSpace();
};

/// Golden section, known as Fibonacci retracement and extension: levels over the full width at the powers of the golden
/// ratio (0.618, 0.382, 0.236), the halves beside them and their continuation up to 2.618. R. N. Elliott measured waves
/// by these ratios: where a reaction may end, and how far the next move may carry.
class QZPaintGoldenSelection : public QZPaintLevels {
public:
    QZPaintGoldenSelection();
};
