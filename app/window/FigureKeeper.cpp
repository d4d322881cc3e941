#include "app/window/FigureKeeper.h"

#include "app/chart/ChartSplitView.h"
#include "panels/QZPaintControl.h"
#include "platform/QZAlert.h"
#include "platform/QZFrameComFun.h"
#include "surface/QZPaintLayer.h"

#include <QLabel>
#include <QStatusBar>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::milliseconds storeInterval(500);
constexpr std::chrono::seconds retryInterval(10);

} // namespace

FigureKeeper::FigureKeeper(ChartSplitView& chart, QStatusBar& status)
    : chart_(chart), failure_(new QLabel(tr("The drawings cannot be stored at present"), &status))
{
    failure_->hide();
    status.addPermanentWidget(failure_);
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
    const bool isStored = std::ranges::all_of(chart_.panes(), [](ChartPane* pane) { return pane->storeDB(); });
    failure_->setVisible(!isStored);
    timer_.setInterval(isStored ? storeInterval : retryInterval);
    return isStored;
}

bool FigureKeeper::mayLeave()
{
    releaseTools();
    const auto hasFigures = [](const ChartPane* pane) { return pane->paintLayer()->graphs().count() > 0; };
    if (store() || std::ranges::none_of(chart_.panes(), hasFigures))
        return true;
    const QString file = QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
    return QZAlert::run({.message = tr("The drawings cannot be stored in %1. What changed since they were last stored "
                                       "would be lost.")
                                        .arg(file),
                         .buttons = {tr("Keep them on the screen"), tr("Lose the changes")}}) != QZAlert::firstButton;
}

void FigureKeeper::leave()
{
    releaseTools();
    store();
}

void FigureKeeper::load(const QString& stock, QZPaintCycle cycle)
{
    for (ChartPane* pane : chart_.panes())
        pane->loadDB(stock, cycle, pane->objectName());
}

void FigureKeeper::releaseTools()
{
    for (const ChartPane* pane : chart_.panes())
        pane->paintLayer()->cancelCurrentGraph();
    QZPaintControl::sharedManager().resetAllButtons(false);
}
