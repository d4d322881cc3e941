#pragma once

#include "model/QZPaintGraph.h"

#include <QString>

#include <cstdint>
#include <vector>

/// Gann fan: rays from the first key point to the layer's edge, each captioned with its fraction. W. D. Gann's angles,
/// with the move to the second point as the 1x1: traders watch which ray holds a trend and expect it to run to the next
/// one when that breaks.
class QZPaintGannFan : public QZPaintGraph {
public:
    static constexpr std::uint64_t rayCount = 9;

    QZPaintGannFan() : QZPaintGraph(QZSTGannFan) {}

    /// Ray `index` in layer coordinates (px): 0 runs through the second key point, 1 to 4 reach its height after 1/2,
    /// 1/3, 1/4 and 1/8 of its distance, 5 to 8 reach those parts of its height after its distance. A vertical ray ends
    /// at missingPoint, one whose target is the first key point has no length.
    [[nodiscard]] QZLine linePoints(std::uint64_t index) const;
    /// Caption of ray `index`: "1/2" to "1/8", else "1".
    [[nodiscard]] static QString rateFromeCount(std::uint64_t index);

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;
};

/// Speed resistance lines of Edson Gould: the ray through both key points, and two dashed ones at two and at one third
/// of its rise. A reaction is expected to stop at the upper speed line and, below it, at the lower one.
class QZPaintSpeedResistance : public QZPaintGraph {
public:
    QZPaintSpeedResistance() : QZPaintGraph(QZSTSpeedResistance) {}

    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// The ray to the layer's edge, then the speed lines; a vertical ray has none.
    [[nodiscard]] std::vector<QZLine> rays() const;
};
