#include "app/picture/PictureActions.h"

#include "app/chart/ChartSplitView.h"
#include "app/picture/ChartPicture.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>

#include <memory>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("PictureActions", text);
}

QString stockName(const ChartSplitView& chart)
{
    return chart.panes().front()->chartData()->series.name();
}

/// Shows a dialog, which goes afterwards; `take` gets it when the user accepted it. False when they did not, and when
/// the dialog's window has gone meanwhile and the dialog with it.
template <typename Dialog, typename Take>
bool ask(Dialog* made, Take take)
{
    const QPointer<Dialog> dialog(made);
    const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog;
    if (isAccepted)
        take(*dialog);
    delete dialog;
    return isAccepted;
}

void exportPicture(const ChartSplitView& chart)
{
    auto* dialog = new QFileDialog(chart.window(), tr("Export picture"), QString(),
                                   tr("PNG picture (*.png);;SVG drawing (*.svg);;PDF document (*.pdf)"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    const auto followFilter = [dialog](const QString& filter) {
        dialog->setDefaultSuffix(filter.section(QStringLiteral("*."), 1).section(u')', 0, 0));
    };
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, followFilter);
    followFilter(dialog->selectedNameFilter());
    dialog->selectFile(stockName(chart));
    QString file;
    if (!ask(dialog, [&file](const QFileDialog& answered) { file = answered.selectedFiles().value(0); }))
        return;
    const QString failure = ChartPicture::write(chart, file);
    if (!failure.isNull())
        QMessageBox::warning(chart.window(), tr("Export picture"), failure);
}

void printPicture(const ChartSplitView& chart)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(stockName(chart));
    if (!ask(new QPrintDialog(&printer, chart.window()), [](const QPrintDialog&) {}))
        return;
    if (!ChartPicture::print(chart, printer))
        QMessageBox::warning(chart.window(), tr("Print"), tr("The printer does not take the picture."));
}

void copyPicture(const ChartSplitView& chart)
{
    auto content = std::make_unique<QMimeData>();
    content->setImageData(ChartPicture::image(chart, chart.devicePixelRatioF()));
    content->setData(QStringLiteral("image/svg+xml"), ChartPicture::svg(chart));
    QGuiApplication::clipboard()->setMimeData(content.release()); // the clipboard owns it
}

} // namespace

void addPictureActions(QMenu& menu, const ChartSplitView& chart)
{
    const auto add = [&](const QString& name, const QKeySequence& keys, void (*act)(const ChartSplitView&)) {
        menu.addAction(name, keys, &chart, [&chart, act] { act(chart); });
    };
    add(tr("&Export picture…"), Qt::CTRL | Qt::SHIFT | Qt::Key_E, exportPicture);
    add(tr("&Print…"), QKeySequence::Print, printPicture);
    add(tr("&Copy picture"), Qt::CTRL | Qt::SHIFT | Qt::Key_C, copyPicture);
}
