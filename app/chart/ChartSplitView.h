#pragma once

#include "app/chart/ChartData.h"
#include "app/chart/ChartPane.h"
#include "app/chart/ChartViewport.h"
#include "surface/QZPaintSplitView.h"

#include <QAction>
#include <QList>
#include <QPointF>

#include <memory>
#include <optional>
#include <vector>

class CandlePane;

/// The chart: panes over one time axis, one above the other. What the mouse does not do to a figure it does to the
/// chart: dragging scrolls, the wheel zooms about the pointer (scrolls with Ctrl, or sideways). Arrow keys scroll, with
/// Shift by a screen; + and - zoom; Home and End go to the first and the last bar. Escape cancels the figure in
/// creation, else it deselects.
class ChartSplitView : public QZPaintSplitView {
    Q_OBJECT

public:
    explicit ChartSplitView(QWidget* parent = nullptr);

    [[nodiscard]] ChartViewport& viewport() { return viewport_; }
    [[nodiscard]] const std::vector<ChartPane*>& panes() const { return panes_; }

    /// Shows other bars, the most recent ones first. Figures stay at their dates.
    void setChartData(const std::shared_ptr<const ChartData>& shown);
    void applyTheme();
    /// Moving averages in the pane of prices; shown at first.
    void setAveragesVisible(bool visible) { averages_->setChecked(visible); }
    /// Checkable commands for what the chart shows beside the bars; owned by the chart.
    [[nodiscard]] QList<QAction*> viewActions() const { return viewActions_; }

    void changeShapeTo(std::int64_t shapeType, const QImage& imageThumbnail) override;
    void removeAllGraphs(QZPaintControl& sender) override;
    void showOrHiddenAllGraphs(QZPaintControl& sender) override;
    /// The figure that is being drawn, in whichever pane it is furthest; null for none.
    [[nodiscard]] std::shared_ptr<QZPaintGraph> figureInCreation() const;

Q_SIGNALS:
    /// The bar under the mouse, loaded or not; nothing when the mouse is on no pane's plot.
    void barPointedAt(std::optional<int> bar);
    /// A press chose another pane, or none.
    void activePaneChanged();
    /// A tool was chosen, a point placed, a key pressed, or the figures were hidden or shown.
    void drawingChanged();
    /// The user deleted all figures, or was asked and kept them.
    void figuresRemoved();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    /// The wheel belongs to the chart where a pane is, and nowhere else.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addPane(ChartPane* pane, int stretch);
    template <typename Show>
    QAction* addViewAction(const QString& name, bool isChecked, Show show);
    void refreshPanes();
    void startPanning(const QMouseEvent& event);
    void pan(QPointF position);
    void stopPanning();
    void turnWheel(const ChartPane& pane, const QWheelEvent& event);
    void deselect();
    bool scrollByKey(const QKeyEvent& event);
    /// Shows what is at a place of this widget, the mouse's, in every pane; nothing for no place.
    void pointAt(std::optional<QPointF> position);

    ChartViewport viewport_;
    CandlePane* prices_;
    std::vector<ChartPane*> panes_; // owned as child widgets
    QList<QAction*> viewActions_;
    QAction* averages_;
    QPointer<ChartPane> pannedPane_;
    std::optional<QPointF> pointer_; ///< where the mouse is over the chart
    double panX_ = 0;                ///< where the mouse was last while panning
};
