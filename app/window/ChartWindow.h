#pragma once

#include "app/bars/BarReader.h"
#include "app/chart/ChartData.h"
#include "app/chart/ChartPalette.h"
#include "app/chart/RangeStatisticsWindow.h"
#include "app/window/FigureKeeper.h"
#include "app/window/WatchList.h"
#include "app/window/WindowCommands.h"
#include "platform/QZNotificationCenter.h"

#include <QMainWindow>

#include <array>
#include <memory>
#include <optional>

class ChartSplitView;
class QComboBox;
class QLabel;
class QStackedWidget;

/// The reference host's window: candles above volume, drawing tools, and what the bar under the mouse says.
class ChartWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ChartWindow(QWidget* parent = nullptr);

    [[nodiscard]] ChartSplitView& chart() { return *chart_; }

    /// Shows what was read, which must be usable. The figures of what was shown are stored and those of what comes are
    /// loaded; the same stock and period keeps its figures.
    void showBars(const BarReadResult& result);

    /// Lists the stocks of these files and folders, and shows the first one that can be read. False when there is no
    /// file in them at all.
    bool showFiles(const QStringList& paths);
    /// Takes the place on the screen that was remembered.
    void restorePlace();
    /// Shows the files that were remembered; false when none of them can be read.
    bool restoreFiles();
    [[nodiscard]] WatchList& watchList() { return *watchList_; }

    /// Shows the file that the user picks.
    void openFile();
    /// Lists the stocks of the folder that the user picks.
    void openFolder();
    /// The same in a window of its own.
    void openWindow();
    void changeUser();
    void togglePalette() { palette_.toggle(); }
    void toggleStatistics() { statistics_.toggle(); }
    /// Shows the newest bars at the first width.
    void resetView();
    /// Shows the bars in the period at `index` of periods().
    void choosePeriod(int index);
    /// The list of the periods that the bars can be shown in, owned by the window.
    [[nodiscard]] QComboBox* periods() { return periods_; }

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Shows the file that the user picks in `target`; false when there is nothing to show.
    bool openFileIn(ChartWindow& target);
    /// Where file dialogs begin: at the file on show.
    [[nodiscard]] QString startFolder() const;
    /// Shows what was read, unless another window shows it already, which comes to the front then, or the user keeps
    /// figures that cannot be stored.
    bool takeBars(const BarReadResult& result);
    /// Shows a stock of the watch list, or why it cannot be shown.
    void showListed(const QString& path);
    /// Says in place of the chart why a file cannot be shown.
    void showFailure(const BarReadResult& result);
    /// Shows the bars that were read put together to a period of their list, with the figures of that period unless
    /// those on show are its.
    void showCycle(QZPaintCycle cycle, bool keepsFigures);
    /// Whether `series` is of the stock that was read, and of its period.
    [[nodiscard]] bool shows(const BarSeries& series) const;
    /// The palette offers what the active pane takes.
    void followPane();
    void applyTheme();
    void describeUser();
    void describeBar(std::optional<int> bar);
    /// Tells what the chosen tool waits for, or that the figures are hidden; else what is shown.
    void describeDrawing();

    std::shared_ptr<const ChartData> data_ = std::make_shared<const ChartData>();
    QStackedWidget* center_; ///< the chart or the failure
    ChartSplitView* chart_;
    QLabel* failure_;
    WatchList* watchList_;
    ChartPalette palette_;
    RangeStatisticsWindow statistics_;
    BarReadResult read_;
    QString file_;                                 ///< on show, or found unusable
    QZPaintCycle cycle_ = QZPCCandlestickCycleDay; ///< on show
    std::optional<QZPaintCycle> wantedCycle_;      ///< that the user chose last, shown of every stock that has it
    QComboBox* periods_;
    QString barsRead_; ///< where they come from and how many
    QLabel* summary_;
    QLabel* barLabel_;
    QLabel* user_;
    FigureKeeper figures_;
    WindowCommands commands_;
    std::array<QZObservation, 2> observations_;
};
