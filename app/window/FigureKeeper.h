#pragma once

#include "model/QZDrawingTypes.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <map>
#include <memory>
#include <vector>

class ChartPane;
class ChartSplitView;
class QMainWindow;
class QZPaintGraph;
class StoreNotice;

/// Keeps the figures of a window's chart in the store while the chart is open, and asks the user before any are lost.
/// While the file fails, the window tells why.
class FigureKeeper : public QObject {
    Q_OBJECT

public:
    /// Both are borrowed and outlive this; the window owns the notice.
    FigureKeeper(ChartSplitView& chart, QMainWindow& window);

    /// Writes what changed and takes over what another program changed; says so and returns false while that fails.
    /// Figures that could not be loaded are loaded then, beside those that were drawn since.
    bool store();
    /// Lets go of the tools and stores what is shown; where that fails the user decides whether it may be lost.
    bool mayLeave();
    /// Lets go of the tools and stores what is shown, before other figures are loaded.
    void leave();
    /// Replaces the figures by those of a stock and period.
    void load(const QString& stock, QZPaintCycle cycle);

private:
    /// Cancels what is being drawn and selected, and lets go of the palette's tool.
    void releaseTools();
    using Figures = std::vector<std::shared_ptr<QZPaintGraph>>;
    /// Loads a pane's group; `drawn` are added to it.
    void loadPane(ChartPane& pane, const Figures& drawn);
    /// What was drawn in a pane since its group was loaded.
    [[nodiscard]] Figures drawnIn(const ChartPane& pane) const;
    /// Gives the user's file another name and stores what all windows show in a new one.
    void startNewFile();

    ChartSplitView& chart_;
    StoreNotice* notice_;
    QTimer timer_;
    QString stock_; ///< whose figures are shown, of the period `cycle_`
    QZPaintCycle cycle_ = QZPCCandlestickCycleDay;
    std::map<const ChartPane*, Figures> loaded_; ///< what came from the file
};
