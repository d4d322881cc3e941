#include "app/bars/BarFiles.h"
#include "app/chart/BarProgress.h"
#include "app/chart/ChartSplitView.h"
#include "app/window/ChartWindow.h"
#include "app/window/Preferences.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QStackedWidget>

#include <algorithm>
#include <iterator>
#include <memory>

// The window's files: the user's choice of them, the watch list, and what was open last.

void ChartWindow::openFile()
{
    openFileIn(*this);
}

void ChartWindow::openWindow()
{
    auto window = std::make_unique<ChartWindow>();
    if (!openFileIn(*window))
        return;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window.release()->show();
}

QString ChartWindow::startFolder() const
{
    return file_.startsWith(QLatin1Char(':')) ? QString() : QFileInfo(file_).path();
}

bool ChartWindow::openFileIn(ChartWindow& target)
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Open bars"), startFolder(),
                                     tr("Bars (%1);;All files (*)").arg(barFilePatterns().join(QLatin1Char(' '))));
    if (path.isEmpty())
        return false;
    const BarReadResult result = readBarsShowingProgress(path, this);
    if (result.isCancelled)
        return false;
    if (!result.isOk()) {
        QMessageBox::warning(this, tr("Open bars"), result.error);
        return false;
    }
    return target.takeBars(result);
}

void ChartWindow::openFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open a folder of bars"), startFolder());
    if (folder.isEmpty() || showFiles({folder}))
        return;
    const QString endings = barFilePatterns().join(QLatin1String(", "));
    QMessageBox::warning(this, tr("Open a folder of bars"),
                         tr("%1 holds no bars: no file ends in %2").arg(folder, endings));
}

bool ChartWindow::showFiles(const QStringList& paths)
{
    const QStringList files = barFiles(paths);
    if (files.isEmpty())
        return false;
    watchList_->setFiles(files);
    QStringList remembered;
    std::ranges::transform(paths, std::back_inserter(remembered),
                           [](const QString& path) { return QFileInfo(path).absoluteFilePath(); });
    Preferences::setValue(Preferences::listed, remembered);
    for (const QString& file : files) {
        const BarReadResult result = readBars(file);
        if (!result.isOk())
            continue;
        takeBars(result);
        return true;
    }
    showListed(files.front());
    return true;
}

void ChartWindow::restorePlace()
{
    restoreGeometry(Preferences::value(Preferences::geometry).toByteArray());
    restoreState(Preferences::value(Preferences::docks).toByteArray());
}

bool ChartWindow::restoreFiles()
{
    const bool isListClosed = Preferences::value(Preferences::docks).isValid() && watchList_->isHidden();
    QStringList files = barFiles(Preferences::value(Preferences::listed).toStringList());
    watchList_->setFiles(files);
    watchList_->setVisible(watchList_->isVisibleTo(this) && !isListClosed);
    files.prepend(Preferences::value(Preferences::shown).toString());
    return std::ranges::any_of(files, [this](const QString& file) {
        const BarReadResult result = readBars(file);
        return result.isOk() && takeBars(result);
    });
}

bool ChartWindow::takeBars(const BarReadResult& result)
{
    // One window per group of figures: the last of two to close would overwrite what the other one saved.
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* each : windows) {
        auto* other = dynamic_cast<ChartWindow*>(each);
        if (other == nullptr || other == this || !other->isVisible() || !other->shows(result.series))
            continue;
        other->raise();
        other->activateWindow();
        return false;
    }
    if (!shows(result.series) && !figures_.mayLeave())
        return false;
    showBars(result);
    return true;
}

void ChartWindow::showListed(const QString& path)
{
    const BarReadResult result = readBarsShowingProgress(path, this);
    if (result.isOk())
        takeBars(result);
    else if (!result.isCancelled && figures_.mayLeave())
        showFailure(result);
    watchList_->setCurrentFile(file_);
    center_->currentWidget()->setFocus();
}

void ChartWindow::showFailure(const BarReadResult& result)
{
    statistics_.close();
    file_ = result.path;
    failure_->setText(result.error);
    center_->setCurrentWidget(failure_);
    setWindowTitle(tr("%1 - qzchart").arg(QFileInfo(result.path).completeBaseName()));
    summary_->setText(result.error);
    describeBar(std::nullopt);
}
