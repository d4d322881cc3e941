#pragma once

#include "model/QZPaintGraph.h"

#include <cstdint>

/// The open polyline through six key points: R. N. Elliott's five waves of a move with the trend (The Wave Principle,
/// 1938), three with it and two against it. Base of all polylines; they differ in the number of their points.
class QZPaintFiveWaves : public QZPaintGraph {
public:
    QZPaintFiveWaves() : QZPaintFiveWaves(QZST5Waves, 6) {}

    /// At most maxMinDistance. Measured to all waves, also to those that are still to be placed.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    QZPaintFiveWaves(std::int64_t type, int pointCount) : QZPaintGraph(type, pointCount) {}

    /// While points are placed, up to the one that follows the mouse.
    void drawFigure(QZGraphicsContext& context) override;
};

/// Elliott's three waves of a correction, A, B and C.
class QZPaintThreeWaves : public QZPaintFiveWaves {
public:
    QZPaintThreeWaves() : QZPaintFiveWaves(QZST3Waves, 4) {}
};

/// Elliott's full cycle: five waves with the trend and the three of the correction after them.
class QZPaintEightWaves : public QZPaintFiveWaves {
public:
    QZPaintEightWaves() : QZPaintFiveWaves(QZST8Waves, 9) {}
};

/// Head and shoulders (R. W. Schabacker, 1932): up to the left shoulder, the head and the right shoulder, with the
/// neckline's two points between them. Inverted it marks a bottom.
class QZPaintHeadLine : public QZPaintFiveWaves {
public:
    QZPaintHeadLine() : QZPaintFiveWaves(QZSTHeadLine, 7) {}
};

/// Double top, the letter M, or double bottom, the letter W: two extremes at about one price and the swing between
/// them.
class QZPaintMWLine : public QZPaintFiveWaves {
public:
    QZPaintMWLine() : QZPaintFiveWaves(QZSTMWLine, 5) {}
};
