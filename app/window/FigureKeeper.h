#pragma once

#include "model/QZDrawingTypes.h"

#include <QObject>
#include <QTimer>

class ChartSplitView;
class QLabel;
class QStatusBar;
class QString;

/// Keeps the figures of a window's chart in the store while the chart is open, and asks the user before any are lost.
class FigureKeeper : public QObject {
    Q_OBJECT

public:
    /// Both are borrowed and outlive this. The status bar gets a note that shows while the store fails.
    FigureKeeper(ChartSplitView& chart, QStatusBar& status);

    /// Writes what changed and takes over what another program changed; says so and returns false while that fails.
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

    ChartSplitView& chart_;
    QLabel* failure_; // owned by the status bar
    QTimer timer_;
};
