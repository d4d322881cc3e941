#pragma once

#include "app/bars/Bars.h"
#include "app/chart/ChartSplitView.h"

#include <QSize>

#include <optional>

/// A chart without a window, for pictures: it is never on the screen, and it only reads the stored figures.
class PictureSheet {
public:
    /// `size` is the picture's (px).
    explicit PictureSheet(QSize size);

    /// Shows the bars, put together to the period, with their stored figures. Returns how many there are.
    int show(const BarSeries& series, QZPaintCycle cycle);
    /// Shows the bars from one moment to another, both included; all there are on the side where none is given. Returns
    /// why it cannot, null if it does.
    QString showRange(std::optional<BarTime> from, std::optional<BarTime> to);
    /// Loads the figures stored for a stock and period. Returns how many there are.
    int loadFigures(const QString& stock, QZPaintCycle cycle);

    [[nodiscard]] ChartSplitView& chart() { return chart_; }

private:
    ChartSplitView chart_;
};
