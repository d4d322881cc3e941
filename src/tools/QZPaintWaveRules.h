#pragma once

#include "model/QZPaintGraph.h"

#include <array>

/// Price targets of a wave: the move between the first two key points, in Fibonacci ratios from 0 to 2.618, set off
/// again from the third one, as a ladder of ticks with ratio and price. Elliott analysts project the length of a third
/// or fifth wave in this way from that of the first (Frost and Prechter, Elliott Wave Principle, 1978).
class QZPaintWaveRule : public QZPaintGraph {
public:
    static constexpr std::array waveRule{0.0F, 0.382F, 0.618F, 1.0F, 1.618F, 2.618F};

    QZPaintWaveRule() : QZPaintGraph(QZSTWaveRule, 3) {}

    /// To any part, also to those that are still to be placed.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// Height of the projected level (px).
    [[nodiscard]] double levelY(double ratio) const;
    [[nodiscard]] std::array<QZLine, waveRule.size()> ticks() const;
    /// The ladder's upright.
    [[nodiscard]] QZLine spine() const;
};

/// Where the swing after a turn may end: the move between the key points and its mirror image on the other side of the
/// second one, with ticks where that has gone back 0.382 and 0.618 of the move, the main Fibonacci retracements; and
/// the same turn again for a swing that ends at either of them.
class QZPaintTurnRule : public QZPaintGraph {
public:
    static constexpr std::array turnRule{0.382F, 0.618F};

    QZPaintTurnRule() : QZPaintGraph(QZSTTurnRule) {}

    double minDistanceFromPoint(QZPoint point) override;

    /// Adds one turn to the current path: the leg from `startPoint` to `endPoint`, its mirror image and the ticks on
    /// that; draws the ticks' ratios and prices when `isDrawInfo`. Points are px.
    void drawTrunLine(QZGraphicsContext& context, bool isDrawInfo, QZPoint startPoint, QZPoint endPoint) const;
    /// Distance (px) to that turn.
    [[nodiscard]] static double minTempDistanceFromPoint(QZPoint point, QZPoint startPoint, QZPoint endPoint);

protected:
    void drawFigure(QZGraphicsContext& context) override;

private:
    /// First legs of the turns: the measured one, and one per ratio from the second key point on.
    [[nodiscard]] std::array<QZLine, 1 + turnRule.size()> turns() const;
};
