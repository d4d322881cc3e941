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
class MacdPane;

/// The chart: panes over one time axis, one above the other. What the mouse does not do to a figure it does to the
/// chart: dragging scrolls, the wheel zooms about the pointer (scrolls with Ctrl, or sideways). Arrow keys scroll, with
/// Shift by a screen; + and - zoom about the last bar where it is visible, else about the middle; Home and End go to
/// the first and the last bar. Escape cancels the figure in creation, else it deselects.
///
/// The values fit the visible bars until the user drags or turns the wheel on the value axis, which stretches them, or
/// drags the chart with Shift, which moves them. Dragging then moves them as well, until a double click on the axis or
/// F fits them again. L switches between a linear and a logarithmic scale of prices. What happens on an axis reaches no
/// figure, and does not choose the pane.
class ChartSplitView : public QZPaintSplitView {
    Q_OBJECT

public:
    explicit ChartSplitView(QWidget* parent = nullptr);

    [[nodiscard]] ChartViewport& viewport() { return viewport_; }
    /// All of them, also those that do not show: these keep their figures, and take no clicks.
    [[nodiscard]] const std::vector<ChartPane*>& panes() const { return panes_; }
    /// Prices and volumes, and the MACD if it is wanted.
    [[nodiscard]] std::vector<ChartPane*> shownPanes() const;

    /// Shows other bars: the most recent candles, or the whole days of a line chart. Figures stay at their dates.
    void setChartData(const std::shared_ptr<const ChartData>& shown);
    /// Shows the stretch of time that is shown at first.
    void resetView();
    void applyTheme();
    /// Moving averages in the pane of prices; shown at first.
    void setAveragesVisible(bool visible) { averages_->setChecked(visible); }
    /// The pane of the MACD below the others; not shown at first.
    void setMacdVisible(bool visible) { macdShown_->setChecked(visible); }
    /// Checkable commands for what the chart shows beside the bars, told apart by their object names; owned by the
    /// chart.
    [[nodiscard]] QList<QAction*> viewActions() const { return viewActions_; }

    void changeShapeTo(std::int64_t shapeType, const QImage& imageThumbnail) override;
    void removeAllGraphs(QZPaintControl& sender) override;
    void showOrHiddenAllGraphs(QZPaintControl& sender) override;
    /// Whether prices shall have a logarithmic scale; prices that cannot keep the linear one.
    void setLogarithmic(bool isLogarithmic);
    [[nodiscard]] bool isLogarithmic() const { return isLogarithmic_; }
    /// Whether some pane's values have logarithms.
    [[nodiscard]] bool hasLogarithms() const;

    /// The figure that is being drawn, in whichever pane it is furthest; null for none.
    [[nodiscard]] std::shared_ptr<QZPaintGraph> figureInCreation() const;

Q_SIGNALS:
    /// The bar under the mouse, loaded or not; nothing when the mouse is on no pane's plot.
    void barPointedAt(std::optional<int> bar);
    /// A press chose another pane, or none.
    void activePaneChanged();
    /// A tool was chosen, a point placed, a key pressed, or the figures were hidden or shown.
    void drawingChanged();
    /// The scale of prices was switched, or other bars are shown, which may have no logarithms.
    void scaleChanged();
    /// The user deleted all figures, or was asked and kept them; or a pane that held the band does not show any more.
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
    void addViewActions();
    template <typename Show>
    QAction* addViewAction(const char* name, const QString& text, bool isChecked, Show show);
    void showMacd(bool isShown);
    void refreshPanes();
    void startPanning(const QMouseEvent& event);
    void pan(QPointF position, bool movesValues);
    void stopPanning();
    /// The pane whose value axis is at a place of this widget; null for none.
    [[nodiscard]] ChartPane* paneWithAxisAt(QPointF position) const;
    /// Takes a press on a value axis; false for any other.
    bool takeAxis(const QMouseEvent& press);
    void stretch(ChartPane& pane, double factor);
    void showAxisCursor(QPointF position);
    bool scaleByKey(const QKeyEvent& event);
    void turnWheel(ChartPane& pane, const QWheelEvent& event);
    void deselect();
    bool scrollByKey(const QKeyEvent& event);
    /// Shows what is at a place of this widget, the mouse's, in every pane; nothing for no place.
    void pointAt(std::optional<QPointF> position);

    ChartViewport viewport_;
    CandlePane* prices_; // the panes are owned as child widgets
    MacdPane* macd_;
    std::vector<ChartPane*> panes_;
    QList<QAction*> viewActions_;
    QAction* averages_ = nullptr;
    QAction* macdShown_ = nullptr;
    QPointer<ChartPane> pannedPane_;
    std::optional<QPointF> pointer_; ///< where the mouse is over the chart
    QPointF dragged_;                ///< where the mouse was last while panning or stretching
    QPointer<ChartPane> stretchedPane_;
    bool isLogarithmic_ = false;
};
