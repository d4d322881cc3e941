#include "app/window/WindowCommands.h"

#include "app/chart/ChartPalette.h"
#include "app/chart/ChartSplitView.h"
#include "app/picture/PictureActions.h"
#include "app/window/Appearance.h"
#include "app/window/ChartWindow.h"
#include "app/window/Preferences.h"
#include "app/window/ScaleAction.h"

#include <QComboBox>
#include <QMenuBar>
#include <QMessageBox>
#include <QToolBar>

#include <functional>

namespace {

/// Adds one of several looks to a menu. It is checked as things are, however they came about.
void addChoice(QMenu& menu, const QString& name, const std::function<bool()>& isChosen,
               const std::function<void()>& choose)
{
    QAction* action = menu.addAction(name, choose);
    const auto follow = [action, isChosen] { action->setChecked(isChosen()); };
    action->setCheckable(true);
    follow();
    QObject::connect(action, &QAction::triggered, action, follow);
    QObject::connect(&Appearance::shared(), &Appearance::changed, action, follow);
}

} // namespace

WindowCommands::WindowCommands(ChartWindow& window)
    : window_(window), chartMenu_(new QMenu(tr("&Chart"), &window)), repeater_(window.chart())
{
    addFileMenu();
    addChartMenu();
    addViewMenu();
    addHelpMenu();
    addToolBar();
}

void WindowCommands::addFileMenu()
{
    QMenu* file = window_.menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open…"), QKeySequence::Open, &window_, &ChartWindow::openFile);
    file->addAction(tr("Open &folder…"), Qt::CTRL | Qt::SHIFT | Qt::Key_O, &window_, &ChartWindow::openFolder);
    file->addAction(tr("Open in &new window…"), QKeySequence::New, &window_, &ChartWindow::openWindow);
    file->addAction(tr("Change login &user…"), &window_, &ChartWindow::changeUser);
    file->addSeparator();
    addPictureActions(*file, window_.chart());
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, &window_, &QWidget::close);
}

// The window takes the plain keys itself, which a shortcut would keep from the panels: they only stand in the menu.
void WindowCommands::addChartMenu()
{
    window_.menuBar()->addMenu(chartMenu_);
    chartMenu_->addAction(tr("&Drawing tools\tP"), &window_, &ChartWindow::togglePalette);
    chartMenu_->addAction(tr("Range &statistics\tS"), &window_, &ChartWindow::toggleStatistics);
    keepTool_ = chartMenu_->addAction(tr("&Keep the tool\tK"));
    keepTool_->setCheckable(true);
    connect(keepTool_, &QAction::toggled, &repeater_, &ToolRepeater::setOn);
    addPeriodMenu();
    chartMenu_->addAction(tr("&Reset the view\tR"), &window_, &ChartWindow::resetView);
}

void WindowCommands::addPeriodMenu()
{
    QMenu* menu = chartMenu_->addMenu(tr("P&eriod"));
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        const QComboBox& periods = *window_.periods();
        for (int index = 0; index < periods.count(); ++index) {
            QAction* period = menu->addAction(periods.itemText(index), [this, index] { window_.choosePeriod(index); });
            period->setCheckable(true);
            period->setChecked(index == periods.currentIndex());
        }
    });
}

void WindowCommands::addViewMenu()
{
    QMenu* view = window_.menuBar()->addMenu(tr("&View"));
    WatchList& list = window_.watchList();
    view->addAction(list.toggleViewAction());
    view->addAction(tr("&Previous stock"), Qt::Key_PageUp, &list, [&list] { list.step(-1); });
    view->addAction(tr("&Next stock"), Qt::Key_PageDown, &list, [&list] { list.step(1); });
    QAction* find = view->addAction(tr("&Find a stock"), &list, &WatchList::startFilter);
    find->setShortcuts({Qt::CTRL | Qt::Key_K, Qt::Key_Slash});
    view->addSeparator();
    const QList<QAction*> shown = window_.chart().viewActions();
    view->addActions(shown);
    for (QAction* action : shown)
        Preferences::follow(*action, "view/" + action->objectName().toLatin1());
    QAction* separator = view->addSeparator();
    QMenu* theme = addThemeMenu(*view);
    QMenu* rising = addRisingMenu(*view);
    const QList<QAction*> offered = chartMenu_->actions() << separator << list.toggleViewAction() << theme->menuAction()
                                                          << rising->menuAction();
    contextMenu_ = std::make_unique<ChartContextMenu>(window_.chart(), offered);
}

QMenu* WindowCommands::addThemeMenu(QMenu& view)
{
    QMenu* menu = view.addMenu(tr("&Theme"));
    Appearance& appearance = Appearance::shared();
    for (const auto& [choice, name] : {std::pair{ThemeChoice::Light, tr("&Light")},
                                       {ThemeChoice::Dark, tr("&Dark")},
                                       {ThemeChoice::System, tr("Follow the &system")}}) {
        addChoice(
            *menu, name, [&appearance, choice = choice] { return appearance.choice() == choice; },
            [&appearance, choice = choice] { appearance.choose(choice); });
    }
    return menu;
}

QMenu* WindowCommands::addRisingMenu(QMenu& view)
{
    QMenu* menu = view.addMenu(tr("&Rising bars"));
    for (const auto& [isGreen, name] : {std::pair{false, tr("&Red")}, {true, tr("&Green")}}) {
        addChoice(
            *menu, name, [isGreen = isGreen] { return Appearance::greenRises() == isGreen; },
            [isGreen = isGreen] { Appearance::shared().setGreenRises(isGreen); });
    }
    return menu;
}

void WindowCommands::addHelpMenu()
{
    window_.menuBar()
        ->addMenu(tr("&Help"))
        ->addAction(tr("&Keys…"), QKeySequence::HelpContents, this, &WindowCommands::showKeys);
}

void WindowCommands::showKeys()
{
    QString rows;
    for (const auto& [keys, meaning] :
         {std::pair{tr("P"), tr("open or close the drawing tools")},
          {tr("1 to 6"), tr("choose a line, in the order of the tools")},
          {tr("K"), tr("keep the tool for the next figures; Shift at the last point keeps it for one more")},
          {tr("Right button, Menu"), tr("what can be done with the figure or the chart")},
          {tr("Escape"), tr("cancel the figure that is being drawn, else deselect")},
          {tr("Delete, Backspace"), tr("delete the selected figure")},
          {tr("S"), tr("range statistics: drag the band or its edges")},
          {tr("Left, Right"), tr("scroll; with Shift by a screen")},
          {tr("+, -, wheel"), tr("zoom; the wheel scrolls with Ctrl")},
          {tr("Home, End"), tr("go to the first or to the newest bar")},
          {tr("R"), tr("reset the view")},
          {tr("drag the price axis"), tr("stretch the scale; Shift and drag moves it")},
          {tr("F, double click there"), tr("fit the scale to the bars again")},
          {tr("L"), tr("logarithmic or linear scale of prices")},
          {tr("Page Up, Page Down"), tr("previous or next stock of the watch list")},
          {tr("/, Ctrl+K"), tr("find a stock of the watch list by its name; Return shows it")},
          {tr("Ctrl+Shift+E, Ctrl+Shift+C, Ctrl+P"), tr("export, copy or print the picture")},
          {tr("Comma, full stop"), tr("previous or next period")},
          {tr("T"), tr("switch between the light and the dark theme")},
          {tr("Ctrl+O, Ctrl+Shift+O"), tr("open a file of bars, or a folder of them")},
          {tr("Ctrl+N, Ctrl+Q"), tr("open bars in a new window, quit")}})
        rows += QStringLiteral("<tr><td><b>%1</b>&nbsp;&nbsp;</td><td>%2</td></tr>").arg(keys, meaning);
    QMessageBox::information(&window_, tr("Keys"), QStringLiteral("<table>%1</table>").arg(rows));
}

void WindowCommands::addToolBar()
{
    QToolBar* bar = window_.addToolBar(tr("Chart"));
    bar->setObjectName(QStringLiteral("chartBar"));
    bar->setMovable(false);
    const auto add = [this, bar](const QString& name, const QString& tip, auto slot) {
        QAction* action = bar->addAction(name, &window_, slot);
        action->setToolTip(tip);
    };
    add(tr("Drawing tools"), tr("Open or close the drawing tools (P); digits 1 to 6 pick a line"),
        &ChartWindow::togglePalette);
    add(tr("Range statistics"), tr("Show what the bars under a band came to (S); drag the band or its edges"),
        &ChartWindow::toggleStatistics);
    bar->addWidget(window_.periods());
    addScaleAction(*bar, window_.chart());
    add(tr("Light / dark"), tr("Switch between the light and the dark theme (T)"),
        [] { Appearance::shared().toggle(); });
}

void WindowCommands::stepPeriod(int steps)
{
    const QComboBox& periods = *window_.periods();
    const int index = periods.currentIndex() + steps;
    if (index >= 0 && index < periods.count())
        window_.choosePeriod(index);
}

bool WindowCommands::pressKey(int key)
{
    switch (key) {
    case Qt::Key_P:
        window_.togglePalette();
        return true;
    case Qt::Key_S:
        window_.toggleStatistics();
        return true;
    case Qt::Key_K:
        keepTool_->toggle();
        return true;
    case Qt::Key_R:
        window_.resetView();
        return true;
    case Qt::Key_Comma:
        stepPeriod(-1);
        return true;
    case Qt::Key_Period:
        stepPeriod(1);
        return true;
    case Qt::Key_T:
        Appearance::shared().toggle();
        return true;
    default:
        return ChartPalette::pressKey(key);
    }
}
