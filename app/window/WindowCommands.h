#pragma once

#include "app/window/ChartContextMenu.h"
#include "app/window/ToolRepeater.h"

#include <QObject>

#include <memory>

class ChartWindow;
class QAction;
class QMenu;

/// The menus, the context menu, the tool bar and the plain keys of a chart window. Each command calls an operation of
/// the window; every key stands in the list that Help shows.
class WindowCommands : public QObject {
    Q_OBJECT

public:
    /// `window` is borrowed, outlives this and owns the menus.
    explicit WindowCommands(ChartWindow& window);

    /// A key that no menu has; false for one that is no command.
    bool pressKey(int key);

private:
    void addFileMenu();
    void addChartMenu();
    void addPeriodMenu();
    void addViewMenu();
    static QMenu* addThemeMenu(QMenu& view);
    static QMenu* addRisingMenu(QMenu& view);
    void addHelpMenu();
    void addToolBar();
    void showKeys();
    /// Shows the period that stands `steps` further down the list, if there is one.
    void stepPeriod(int steps);

    ChartWindow& window_;
    QMenu* chartMenu_;
    QAction* keepTool_ = nullptr;
    ToolRepeater repeater_;
    std::unique_ptr<ChartContextMenu> contextMenu_;
};
