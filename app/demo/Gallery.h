#pragma once

#include "app/bars/Swings.h"
#include "app/chart/ChartSplitView.h"
#include "app/demo/GalleryFigures.h"

#include <QImage>
#include <QString>

#include <functional>
#include <vector>

/// Draws the typical figure of each tool on the sample bars, by a user's gestures, and makes pictures of them. No
/// figure is stored.
class Gallery {
public:
    /// Shows a chart without a window around it; `pictureSize` is that of a tool's picture (px).
    explicit Gallery(QSize pictureSize = {480, 300});

    /// The tool's figure on the chart, null if the gestures made none.
    QImage picture(const GalleryFigure& figure);
    /// The chart of a figure without it.
    QImage bareChart(const GalleryFigure& figure);
    /// The tool's name, as the palette tells it.
    [[nodiscard]] static QString nameOf(const GalleryFigure& figure);

    /// Writes a picture of each tool, named after its type, and a sheet of all of them, with a page that shows them.
    /// `progress` is told each file. Returns what went wrong, null if nothing did.
    QString write(const QString& folder, const std::function<void(const QString&)>& progress);

private:
    void show(const GalleryFigure& figure);
    /// What the user does: chooses the tool and clicks the spots.
    void draw(const GalleryFigure& figure);
    void writeNote();
    void showBand(const GalleryFigure& figure);
    void clear();
    [[nodiscard]] QPointF positionOf(const GallerySpot& spot) const;

    ChartSplitView chart_;
    ChartPane& pane_;
    std::vector<Swing> turns_; ///< that show, highs and lows in turn
};
