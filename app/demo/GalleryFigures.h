#pragma once

#include "model/QZDrawingTypes.h"

#include <span>

/// A place beside a turning point of the gallery's market.
struct GallerySpot {
    int turn = 0;       ///< among the turning points that show, from 0 on
    int bars = 0;       ///< to the right of it
    double percent = 0; ///< of the visible prices above it
};

/// Bars of the daily sample with a well-known shape.
struct GalleryScene {
    int firstBar = 0; ///< of those that show
    int lastBar = 0;
    int swingReach = 0; ///< bars to each side that a turning point is the outermost of
};

/// Where the gallery draws the typical figure of a tool.
struct GalleryFigure {
    QZShapeType type;
    std::span<const GallerySpot> spots; ///< one for each click
    int lineWidth;                      ///< px
    GalleryScene scene;
};

/// One for each tool, in the palette's order; the range-statistics band, which is on no palette, comes last.
std::span<const GalleryFigure> galleryFigures();
