#pragma once

#include <QString>

#include <cstdint>

/// What a host says of the bars between two points.
struct QZPaintRetangleModel {
    std::int32_t count = 0; ///< bars in the range; negative when it runs to the left
    float varyScope = 0.0F; ///< relative change over the range (percent)
    QString varyPrice;      ///< price change, formatted by the host
    QString identify;       ///< a word of the host, shown in front of the count
};

/// Least-squares regression over the bars between two screen x positions. The tool sets x1 and x2 and zeroes the rest;
/// the host fills in the rest and may move x1 and x2 onto its bars. All in layer px.
struct QZRegressionCalcData {
    double x1 = 0.0;      ///< left end
    double x2 = 0.0;      ///< right end
    double line1Y1 = 0.0; ///< the regression line at x1
    double line1Y2 = 0.0; ///< ... and at x2
    double line2Y1 = 0.0; ///< first bounding line of the channel
    double line2Y2 = 0.0;
    double line3Y1 = 0.0; ///< second bounding line of the channel
    double line3Y2 = 0.0;
};

/// Extremes and costs of the bars between two screen x positions; set and filled in as QZRegressionCalcData is.
struct QZBoxLineCalcData {
    double x1 = 0.0;
    double x2 = 0.0;
    double firstEdgeY = 0.0;   ///< lower edge (px)
    double secondEdgeY = 0.0;  ///< upper edge (px)
    double averageCostY = 0.0; ///< height of the average cost (px)
    std::int32_t count = 0;    ///< bars in the range
    float averageCost = 0.0F;  ///< price
    float amplitude = 0.0F;    ///< percent
    float difference = 0.0F;   ///< price
};
