#pragma once

#include "app/chart/ChartPane.h"
#include "panels/QZPanelWindow.h"
#include "platform/QZNotificationCenter.h"

#include <QPointer>

#include <utility>
#include <vector>

class ChartSplitView;
class QLabel;

/// What the bars under the range-statistics band came to, in a small window over the chart. It is open as long as the
/// band is shown: it follows the band, whose edges it puts on bars, and closing either closes the other. There is one
/// band, so opening it over one chart closes it over another.
class RangeStatisticsWindow final : public QZPanelWindow {
public:
    /// `chart` is borrowed and outlives this.
    explicit RangeStatisticsWindow(ChartSplitView& chart);
    ~RangeStatisticsWindow() override;

    /// Shows the band over the middle third of the bars in view, in the active pane; closes it when it is open.
    void toggle();

private:
    void open(ChartPane& pane);
    void followBand(const QZNotification& notification);
    /// Puts the band's edges on two bars, in the order of its points.
    void placeBand(int first, int second);
    /// Tells what the bars under the band came to; dashes when none of them is loaded.
    void tell();
    /// The bars that the band's points are at, loaded or not.
    [[nodiscard]] std::pair<int, int> barsOfBand() const;
    void removeBand();
    /// The band went with the pane's figures: other figures came, or all were deleted.
    void closeWithoutBand();
    void applyTheme();

    ChartSplitView& chart_;
    QPointer<ChartPane> pane_;    ///< that shows the band
    std::vector<QLabel*> values_; // owned as child widgets
    std::vector<QZObservation> observations_;
};
