#include "app/chart/BarProgress.h"

#include <QFileInfo>
#include <QProgressDialog>

BarReadResult readBarsShowingProgress(const QString& path, QWidget* parent)
{
    constexpr int steps = 1000;
    constexpr int patience = 400; // ms
    QProgressDialog dialog(QProgressDialog::tr("Reading %1…").arg(QFileInfo(path).fileName()),
                           QProgressDialog::tr("Cancel"), 0, steps, parent);
    dialog.setWindowTitle(QProgressDialog::tr("Open bars"));
    dialog.setWindowModality(parent == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
    dialog.setMinimumDuration(patience);
    dialog.setAutoReset(false);
    return readBars(path, [&dialog](double part) {
        dialog.setValue(static_cast<int>(part * steps)); // lets the dialog hear the user
        return !dialog.wasCanceled();
    });
}
