#include "app/chart/ChartWindow.h"

#include "app/calendar/ChartCycle.h"
#include "app/calendar/Resample.h"
#include "app/chart/AxisTicks.h"
#include "app/chart/ChartSplitView.h"
#include "model/QZDrawingTypes.h"
#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "platform/QZFont.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

constexpr std::chrono::milliseconds storeInterval(500);
constexpr std::chrono::seconds retryInterval(10);

} // namespace

ChartWindow::ChartWindow(QWidget* parent)
    : QMainWindow(parent),
      chart_(new ChartSplitView(this)),
      palette_(*this),
      statistics_(*chart_),
      periods_(new QComboBox(this)),
      summary_(new QLabel(this)),
      barLabel_(new QLabel(this)),
      storeFailure_(new QLabel(tr("The drawings cannot be stored at present"), this))
{
    setWindowTitle(tr("qzchart"));
    resize(1280, 800);
    setCentralWidget(chart_);
    addMenu();
    addHelp();
    addTools();
    statusBar()->addWidget(summary_, 1);
    storeFailure_->hide();
    statusBar()->addPermanentWidget(storeFailure_);
    statusBar()->addPermanentWidget(barLabel_);
    // A crash costs what was done since.
    storeTimer_.setInterval(storeInterval);
    connect(&storeTimer_, &QTimer::timeout, this, [this] { storeFigures(); });
    storeTimer_.start();
    connect(chart_, &ChartSplitView::activePaneChanged, this, &ChartWindow::followPane);
    connect(chart_, &ChartSplitView::barPointedAt, this, &ChartWindow::describeBar);
    connect(chart_, &ChartSplitView::drawingChanged, this, &ChartWindow::describeDrawing);

    QZNotificationCenter& center = QZNotificationCenter::defaultCenter();
    styleObservation_ =
        center.observe(QZUIOverallStyleDidChangeNotification, [this](const QZNotification&) { applyTheme(); });
    applyTheme();
    chart_->setEnablePaintControl(true);
    chart_->setSupportPaint(true);
    chart_->setFocus();
}

void ChartWindow::addMenu()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open…"), QKeySequence::Open, this, [this] { openFile(*this); });
    file->addAction(tr("Open in &new window…"), QKeySequence::New, this, &ChartWindow::openWindow);
    file->addAction(tr("Change login &user…"), this, &ChartWindow::changeUser);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
}

void ChartWindow::addHelp()
{
    const auto showKeys = [this] {
        QString rows;
        for (const auto& [keys, meaning] :
             {std::pair{tr("P"), tr("open or close the drawing tools")},
              {tr("1 to 6"), tr("choose a line, in the order of the tools")},
              {tr("Escape"), tr("cancel the figure that is being drawn, else deselect")},
              {tr("Delete, Backspace"), tr("delete the selected figure")},
              {tr("S"), tr("range statistics: drag the band or its edges")},
              {tr("Left, Right"), tr("scroll; with Shift by a screen")},
              {tr("+, -, wheel"), tr("zoom; the wheel scrolls with Ctrl")},
              {tr("Home, End"), tr("go to the first or to the newest bar")},
              {tr("T"), tr("switch between the light and the dark theme")},
              {tr("Ctrl+O, Ctrl+N, Ctrl+Q"), tr("open bars here or in a new window, quit")}})
            rows += QStringLiteral("<tr><td><b>%1</b>&nbsp;&nbsp;</td><td>%2</td></tr>").arg(keys, meaning);
        QMessageBox::information(this, tr("Keys"), QStringLiteral("<table>%1</table>").arg(rows));
    };
    menuBar()->addMenu(tr("&Help"))->addAction(tr("&Keys…"), QKeySequence::HelpContents, this, showKeys);
}

void ChartWindow::addTools()
{
    QToolBar* bar = addToolBar(tr("Chart"));
    bar->setMovable(false);
    const auto add = [this, bar](const QString& name, const QString& tip, auto slot) {
        QAction* action = bar->addAction(name, this, slot);
        action->setToolTip(tip);
    };
    add(tr("Drawing tools"), tr("Open or close the drawing tools (P); digits 1 to 6 pick a line"),
        [this] { palette_.toggle(); });
    add(tr("Range statistics"), tr("Show what the bars under a band came to (S); drag the band or its edges"),
        [this] { statistics_.toggle(); });
    periods_->setToolTip(tr("Period of a bar"));
    periods_->setFocusPolicy(Qt::NoFocus); // keys stay with the chart
    bar->addWidget(periods_);
    connect(periods_, &QComboBox::activated, this, [this](int index) {
        const auto cycle = static_cast<QZPaintCycle>(periods_->itemData(index).toInt());
        if (cycle != cycle_ && mayLeaveFigures())
            showCycle(cycle, false);
        periods_->setCurrentIndex(periods_->findData(static_cast<int>(cycle_)));
    });
    add(tr("Light / dark"), tr("Switch between the light and the dark theme (T)"), &ChartWindow::switchTheme);
}

void ChartWindow::openWindow()
{
    auto window = std::make_unique<ChartWindow>();
    if (!openFile(*window))
        return;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window.release()->show();
}

void ChartWindow::switchTheme()
{
    QZGlobalEnv& environment = QZGlobalEnv::getShareInstance();
    const bool isDark = environment.themeName() == QLatin1String("dark");
    environment.setTheme(isDark ? QStringLiteral("light") : QStringLiteral("dark"));
}

bool ChartWindow::openFile(ChartWindow& target)
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Open bars"), QString(), tr("Bars (*.csv *.tsv *.txt);;All files (*)"));
    if (path.isEmpty())
        return false;
    const BarReadResult result = readBars(path);
    if (!result.isOk()) {
        QMessageBox::warning(this, tr("Open bars"), result.error);
        return false;
    }
    // One window per group of figures: the last of two to close would overwrite what the other one saved.
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* each : windows) {
        auto* other = dynamic_cast<ChartWindow*>(each);
        if (other == nullptr || other == &target || !other->isVisible() || !other->shows(result.series))
            continue;
        other->raise();
        other->activateWindow();
        return false;
    }
    if (!target.shows(result.series) && !target.mayLeaveFigures())
        return false;
    target.showBars(result);
    return true;
}

bool ChartWindow::shows(const BarSeries& series) const
{
    return series.name() == read_.series.name() && cycleOf(series) == cycleOf(read_.series);
}

void ChartWindow::showBars(const BarReadResult& result)
{
    const bool isSameStock = shows(result.series);
    const QZPaintCycle base = cycleOf(result.series);
    read_ = result;
    barsRead_ = result.summary();
    periods_->clear();
    for (const QZPaintCycle cycle : longerCycles(base))
        periods_->addItem(cycleName(cycle), static_cast<int>(cycle));
    // The same stock again, perhaps with more bars: the figures stay where they are.
    showCycle(isSameStock ? cycle_ : base, isSameStock);
}

void ChartWindow::showCycle(QZPaintCycle cycle, bool keepsFigures)
{
    statistics_.close();
    if (!keepsFigures) {
        releaseTools();
        storeFigures();
    }
    cycle_ = cycle;
    periods_->setCurrentIndex(periods_->findData(static_cast<int>(cycle)));
    data_ = std::make_shared<const ChartData>(cycle == cycleOf(read_.series) ? read_.series
                                                                             : resampled(read_.series, cycle));
    chart_->setChartData(data_);
    if (!keepsFigures)
        loadFigures();
    describeDrawing();
    setWindowTitle(tr("%1 - qzchart").arg(data_->series.name()));
    describeBar(std::nullopt);
    followPane();
}

bool ChartWindow::storeFigures()
{
    if (data_->series.isEmpty())
        return true;
    // A locked file is waited for: once, and not again at once.
    const bool isStored = std::ranges::all_of(chart_->panes(), [](ChartPane* pane) { return pane->storeDB(); });
    storeFailure_->setVisible(!isStored);
    storeTimer_.setInterval(isStored ? storeInterval : retryInterval);
    return isStored;
}

bool ChartWindow::mayLeaveFigures()
{
    releaseTools();
    const auto hasFigures = [](const ChartPane* pane) { return pane->paintLayer()->graphs().count() > 0; };
    if (storeFigures() || std::ranges::none_of(chart_->panes(), hasFigures))
        return true;
    const QString file = QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
    return QZAlert::run({.message = tr("The drawings cannot be stored in %1. What changed since they were last stored "
                                       "would be lost.")
                                        .arg(file),
                         .buttons = {tr("Keep them on the screen"), tr("Lose the changes")}}) != QZAlert::firstButton;
}

void ChartWindow::releaseTools()
{
    for (const ChartPane* pane : chart_->panes())
        pane->paintLayer()->cancelCurrentGraph();
    QZPaintControl::sharedManager().resetAllButtons(false);
}

void ChartWindow::loadFigures()
{
    for (ChartPane* pane : chart_->panes())
        pane->loadDB(data_->series.name(), cycle_, pane->objectName());
}

void ChartWindow::changeUser()
{
    QZGlobalEnv& environment = QZGlobalEnv::getShareInstance();
    bool isAccepted = false;
    const QString user = QInputDialog::getText(this, tr("Login user"), tr("Whose figures to show:"), QLineEdit::Normal,
                                               environment.loginUser(), &isAccepted);
    if (!isAccepted || user.trimmed() == environment.loginUser())
        return;
    if (!mayLeaveFigures())
        return;
    environment.setLoginUser(user.trimmed());
}

void ChartWindow::closeEvent(QCloseEvent* event)
{
    if (mayLeaveFigures())
        QMainWindow::closeEvent(event);
    else
        event->ignore();
}

void ChartWindow::followPane()
{
    const QZPaintManagerView* active = chart_->activeView();
    const QZPaintManagerView& pane = active == nullptr ? *chart_->panes().front() : *active;
    ChartPalette::follow(data_->series.isIntraday(), pane.enableTypes());
}

void ChartWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow())
        return;
    QZGlobalEnv::getShareInstance().setMainWindow(windowHandle());
    chart_->resetPiantConfigDelegate();
    palette_.takeOver();
    followPane();
    describeDrawing();
}

void ChartWindow::applyTheme()
{
    setPalette(ChartTheme::current().windowPalette());
    chart_->applyTheme();
}

void ChartWindow::describeBar(std::optional<int> bar)
{
    QString text;
    if (bar) {
        text = momentText(data_->calendar.at(*bar), data_->series.isIntraday());
        if (*bar >= 0 && *bar < data_->series.size()) {
            const Bar& shown = data_->series.at(*bar);
            text += tr("   O %1   H %2   L %3   C %4   V %5")
                        .arg(priceText(shown.open), priceText(shown.high), priceText(shown.low), priceText(shown.close),
                             volumeText(shown.volume));
        }
    }
    if (barLabel_->text() != text)
        barLabel_->setText(text);
}

void ChartWindow::describeDrawing()
{
    QString text = barsRead_;
    if (QZPaintControl::sharedManager().isHidden()) {
        text = tr("The drawings are hidden: the eye of the drawing tools shows them again");
    } else if (const auto figure = chart_->figureInCreation()) {
        const QAbstractButton* button = ChartPalette::button(static_cast<QZShapeType>(figure->type()));
        const QString tool = button == nullptr ? strQZShapeType(figure->type()) : button->accessibleName();
        const int next = figure->currentPoint().value_or(0) + 1;
        text = figure->maxPointCount() == 1
                   ? tr("%1: click its place; Escape cancels").arg(tool)
                   : tr("%1: click point %2 of %3; Escape cancels").arg(tool).arg(next).arg(figure->maxPointCount());
    }
    summary_->setText(text);
}

void ChartWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    if (isPlain && event->key() == Qt::Key_P)
        palette_.toggle();
    else if (isPlain && event->key() == Qt::Key_S)
        statistics_.toggle();
    else if (isPlain && event->key() == Qt::Key_T)
        switchTheme();
    else if (!isPlain || !ChartPalette::pressKey(event->key()))
        QMainWindow::keyPressEvent(event);
}
