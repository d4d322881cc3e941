#include "app/window/ChartWindow.h"

#include "app/calendar/ChartCycle.h"
#include "app/calendar/Resample.h"
#include "app/chart/AxisTicks.h"
#include "app/chart/ChartSplitView.h"
#include "app/window/Appearance.h"
#include "app/window/Preferences.h"
#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>
#include <QWindow>

#include <algorithm>
#include <memory>

namespace {

/// Between what the bar under the mouse says and the user's name (px).
constexpr int userIndent = 12;

} // namespace

ChartWindow::ChartWindow(QWidget* parent)
    : QMainWindow(parent),
      center_(new QStackedWidget(this)),
      chart_(new ChartSplitView(center_)),
      failure_(new QLabel(center_)),
      watchList_(new WatchList(this)),
      palette_(*this),
      statistics_(*chart_),
      periods_(new QComboBox(this)),
      summary_(new QLabel(statusBar())),
      barLabel_(new QLabel(statusBar())),
      user_(new QLabel(statusBar())),
      figures_(*chart_, *this),
      commands_(*this)
{
    if (const QString period = Preferences::value(Preferences::period).toString(); !period.isEmpty())
        wantedCycle_ = enumZPaintCycle(period);
    setWindowTitle(tr("qzchart"));
    resize(1280, 800);
    setCentralWidget(center_);
    center_->addWidget(chart_);
    center_->addWidget(failure_);
    failure_->setAlignment(Qt::AlignCenter);
    failure_->setWordWrap(true);
    failure_->setFocusPolicy(Qt::StrongFocus);
    addDockWidget(Qt::LeftDockWidgetArea, watchList_);
    connect(watchList_, &WatchList::fileChosen, this, &ChartWindow::showListed);
    connect(watchList_, &WatchList::filterLeft, this, [this] { center_->currentWidget()->setFocus(); });
    statusBar()->addWidget(summary_, 1);
    statusBar()->addPermanentWidget(barLabel_);
    user_->setIndent(userIndent);
    statusBar()->addPermanentWidget(user_);
    describeUser();
    periods_->setToolTip(tr("Period of a bar, or the days of a line (comma, full stop)"));
    periods_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    periods_->setFocusPolicy(Qt::NoFocus); // keys stay with the chart
    connect(periods_, &QComboBox::activated, this, &ChartWindow::choosePeriod);
    connect(chart_, &ChartSplitView::activePaneChanged, this, &ChartWindow::followPane);
    connect(chart_, &ChartSplitView::barPointedAt, this, &ChartWindow::describeBar);
    connect(chart_, &ChartSplitView::drawingChanged, this, &ChartWindow::describeDrawing);

    QZNotificationCenter& center = QZNotificationCenter::defaultCenter();
    observations_ = {
        center.observe(QZUIOverallStyleDidChangeNotification, [this](const QZNotification&) { applyTheme(); }),
        center.observe(QZUserNameChangedNotification, [this](const QZNotification&) { describeUser(); })};
    Appearance::shared(); // menus and dialogs look like the chart from now on
    applyTheme();
    chart_->setEnablePaintControl(true);
    chart_->setSupportPaint(true);
    chart_->setFocus();
}

void ChartWindow::resetView()
{
    chart_->resetView();
}

void ChartWindow::choosePeriod(int index)
{
    const auto cycle = static_cast<QZPaintCycle>(periods_->itemData(index).toInt());
    if (cycle != cycle_ && figures_.mayLeave()) {
        wantedCycle_ = cycle;
        Preferences::setValue(Preferences::period, strQZPaintCycle(cycle));
        showCycle(cycle, false);
    }
    periods_->setCurrentIndex(periods_->findData(static_cast<int>(cycle_)));
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
    file_ = result.path;
    if (!file_.startsWith(QLatin1Char(':'))) // the sample comes by itself
        Preferences::setValue(Preferences::shown, QFileInfo(file_).absoluteFilePath());
    watchList_->setCurrentFile(file_);
    center_->setCurrentWidget(chart_);
    barsRead_ = result.summary();
    periods_->clear();
    for (const QZPaintCycle cycle : cyclesFor(result.series))
        periods_->addItem(cycleName(cycle), static_cast<int>(cycle));
    const auto isListed = [this](QZPaintCycle cycle) { return periods_->findData(static_cast<int>(cycle)) >= 0; };
    // The same stock again, perhaps with more bars: the figures stay where they are.
    if (isSameStock && isListed(cycle_))
        showCycle(cycle_, true);
    else
        showCycle(wantedCycle_ && isListed(*wantedCycle_) ? *wantedCycle_ : base, false);
}

void ChartWindow::showCycle(QZPaintCycle cycle, bool keepsFigures)
{
    statistics_.close();
    if (!keepsFigures)
        figures_.leave();
    cycle_ = cycle;
    periods_->setCurrentIndex(periods_->findData(static_cast<int>(cycle)));
    data_ = std::make_shared<const ChartData>(read_.series, cycle);
    chart_->setChartData(data_);
    if (!keepsFigures)
        figures_.load(data_->series.name(), cycle_);
    describeDrawing();
    setWindowTitle(tr("%1 - qzchart").arg(data_->series.name()));
    describeBar(std::nullopt);
    followPane();
}

void ChartWindow::changeUser()
{
    QZGlobalEnv& environment = QZGlobalEnv::getShareInstance();
    bool isAccepted = false;
    const QString user = QInputDialog::getText(this, tr("Login user"), tr("Whose figures to show:"), QLineEdit::Normal,
                                               environment.loginUser(), &isAccepted);
    if (!isAccepted || user.trimmed() == environment.loginUser())
        return;
    const auto windows = QApplication::topLevelWidgets();
    const bool mayLeave = std::ranges::all_of(windows, [](QWidget* each) {
        auto* window = dynamic_cast<ChartWindow*>(each);
        return window == nullptr || window->figures_.mayLeave();
    });
    if (!mayLeave)
        return;
    environment.setLoginUser(user.trimmed());
}

void ChartWindow::describeUser()
{
    const QString user = QZGlobalEnv::getShareInstance().loginUser();
    user_->setText(user.isEmpty() ? tr("No login user") : tr("User: %1").arg(user));
}

void ChartWindow::closeEvent(QCloseEvent* event)
{
    if (!figures_.mayLeave()) {
        event->ignore();
        return;
    }
    Preferences::setValue(Preferences::geometry, saveGeometry());
    Preferences::setValue(Preferences::docks, saveState());
    QMainWindow::closeEvent(event);
}

void ChartWindow::followPane()
{
    const QZPaintManagerView* active = chart_->activeView();
    const QZPaintManagerView& pane = active == nullptr ? *chart_->panes().front() : *active;
    ChartPalette::follow(data_->isLine, pane.enableTypes());
}

bool ChartWindow::event(QEvent* event)
{
    if (event->type() == QEvent::ThemeChange)
        Appearance::shared().followSystem();
    return QMainWindow::event(event);
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
    chart_->applyTheme();
    watchList_->applyTheme();
}

void ChartWindow::describeBar(std::optional<int> bar)
{
    QString text;
    if (bar) {
        text = momentText(data_->calendar.at(*bar), data_->series.isIntraday());
        if (*bar >= 0 && *bar < data_->series.size()) {
            const Bar& shown = data_->series.at(*bar);
            const auto price = [this](double value) { return priceText(value, data_->series.priceDecimals()); };
            text += tr("   O %1   H %2   L %3   C %4   V %5")
                        .arg(price(shown.open), price(shown.high), price(shown.low), price(shown.close),
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
    if (!isPlain || !commands_.pressKey(event->key()))
        QMainWindow::keyPressEvent(event);
}
