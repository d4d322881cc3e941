#include "app/window/FigureKeeper.h"

#include "app/chart/ChartSplitView.h"
#include "app/window/StoreNotice.h"
#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "platform/QZFrameComFun.h"
#include "surface/QZGraphDatabase.h"
#include "surface/QZPaintLayer.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QMainWindow>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::milliseconds storeInterval(500);
constexpr std::chrono::seconds retryInterval(10);

QString file()
{
    return QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
}

} // namespace

FigureKeeper::FigureKeeper(ChartSplitView& chart, QMainWindow& window)
    : QObject(&window), chart_(chart), notice_(new StoreNotice(&window))
{
    window.addToolBar(Qt::BottomToolBarArea, notice_);
    connect(notice_->tryAgain(), &QAction::triggered, this, &FigureKeeper::store);
    connect(notice_->startNewFile(), &QAction::triggered, this, &FigureKeeper::startNewFile);
    // A crash costs what was done since.
    timer_.setInterval(storeInterval);
    connect(&timer_, &QTimer::timeout, this, &FigureKeeper::store);
    timer_.start();
}

bool FigureKeeper::store()
{
    if (chart_.panes().front()->chartData()->series.isEmpty())
        return true;
    // A locked file is waited for: once, and not again at once.
    const bool isStored = std::ranges::all_of(chart_.panes(), [this](ChartPane* pane) {
        if (!pane->isValidateSaveDB())
            loadPane(*pane, drawnIn(*pane));
        return pane->storeDB();
    });
    if (isStored)
        notice_->hide();
    else
        notice_->tell(file(), ChartPane::graphDatabase()->lastErrorMessage());
    timer_.setInterval(isStored ? storeInterval : retryInterval);
    return isStored;
}

void FigureKeeper::loadPane(ChartPane& pane, const Figures& drawn)
{
    pane.loadDB(stock_, cycle_, pane.objectName());
    QZGraphSet& figures = pane.paintLayer()->graphs();
    loaded_[&pane] = *figures.snapshot();
    figures.addAll(drawn);
    pane.displayPaintLayer();
}

FigureKeeper::Figures FigureKeeper::drawnIn(const ChartPane& pane) const
{
    Figures drawn = *pane.paintLayer()->graphs().snapshot();
    if (const auto loaded = loaded_.find(&pane); loaded != loaded_.end())
        std::erase_if(drawn, [&](const auto& each) { return std::ranges::count(loaded->second, each) > 0; });
    return drawn;
}

void FigureKeeper::startNewFile()
{
    const QString path = file();
    const QString aside =
        path + QStringLiteral(".kept-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    ChartPane::graphDatabase()->close();
    QFile whole(path);
    if (!whole.rename(aside)) {
        notice_->tell(path, tr("it cannot be renamed to %1: %2").arg(aside, whole.errorString()));
        return;
    }
    // What SQLite had not brought into the file yet belongs to it.
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        QFile::rename(path + QLatin1String(suffix), aside + QLatin1String(suffix));
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        for (FigureKeeper* keeper : window->findChildren<FigureKeeper*>()) {
            for (ChartPane* pane : keeper->chart_.panes())
                keeper->loadPane(*pane, Figures(*pane->paintLayer()->graphs().snapshot()));
            keeper->store();
        }
    }
}

bool FigureKeeper::mayLeave()
{
    releaseTools();
    const auto hasFigures = [](const ChartPane* pane) { return pane->paintLayer()->graphs().count() > 0; };
    if (store() || std::ranges::none_of(chart_.panes(), hasFigures))
        return true;
    return QZAlert::run({.message = tr("The drawings cannot be stored in %1. What changed since they were last stored "
                                       "would be lost.")
                                        .arg(file()),
                         .buttons = {tr("Keep them on the screen"), tr("Lose the changes")}}) != QZAlert::firstButton;
}

void FigureKeeper::leave()
{
    releaseTools();
    store();
}

void FigureKeeper::load(const QString& stock, QZPaintCycle cycle)
{
    stock_ = stock;
    cycle_ = cycle;
    for (ChartPane* pane : chart_.panes())
        loadPane(*pane, {});
}

void FigureKeeper::releaseTools()
{
    for (const ChartPane* pane : chart_.panes())
        pane->paintLayer()->cancelCurrentGraph();
    QZPaintControl::sharedManager().resetAllButtons(false);
}
