#pragma once

#include "app/chart/ChartTheme.h"

#include <QString>
#include <QWidget>

#include <optional>
#include <vector>

/// A part of a pane's legend. Parts that no longer fit are left out from the end.
struct LegendPart {
    QString text;
    QColor color; ///< invalid for the legend's own
};

struct Crosshair {
    double x = 0;            ///< px of the pane, the middle of the bar
    std::optional<double> y; ///< px of the pane, downwards; only where the mouse is
    QString dateTag;         ///< empty for none
    QString valueTag;        ///< beside `y`
};

/// What a pane shows over its bars and below its figures: the crosshair with its tags on the axes, and the legend of
/// one bar. It is painted by itself, so that following the mouse costs no redraw of the bars.
class PaneOverlay final : public QWidget {
public:
    explicit PaneOverlay(QWidget* parent);

    /// The area of the bars (px of the widget, y downwards): the legend stands inside, tags on its right and below it.
    void setPlot(const QRectF& plot);
    void setTheme(const ChartTheme& theme);
    void setCrosshair(std::optional<Crosshair> crosshair);
    void setLegend(std::vector<LegendPart> legend);
    void setLegendVisible(bool visible);
    [[nodiscard]] const std::vector<LegendPart>& legend() const { return legend_; }
    [[nodiscard]] const std::optional<Crosshair>& crosshair() const { return crosshair_; }

    /// The legend alone, in this widget's coordinates.
    void paintLegend(QPainter& painter) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintCrosshair(QPainter& painter) const;
    /// Light on dark, with the middle of its left or upper edge at `anchor`, moved as far as the widget needs.
    void paintTag(QPainter& painter, const QString& text, QPointF anchor, Qt::Edge side) const;

    QRectF plot_;
    ChartTheme theme_;
    std::optional<Crosshair> crosshair_;
    std::vector<LegendPart> legend_;
    bool isLegendVisible_ = true;
};
