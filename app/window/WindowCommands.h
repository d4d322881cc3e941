#pragma once

#include <QObject>

class ChartWindow;
class QMenu;

/// The menus, the tool bar and the plain keys of a chart window. Each command calls an operation of the window; every
/// key stands in the list that Help shows.
class WindowCommands : public QObject {
    Q_OBJECT

public:
    /// `window` is borrowed, outlives this and owns the menus.
    explicit WindowCommands(ChartWindow& window);

    /// A key that no menu has; false for one that is no command.
    bool pressKey(int key);

private:
    void addFileMenu();
    void addViewMenu();
    void addThemeMenus(QMenu& view);
    void addHelpMenu();
    void addToolBar();
    void showKeys();

    ChartWindow& window_;
};
