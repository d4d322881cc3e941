#pragma once

#include "panels/QZPaintGraphConfigColorWell.h"
#include "panels/QZPanelWindow.h"

#include <QColor>
#include <QColorDialog>
#include <QObject>
#include <QPointer>
#include <QRect>

/// The colour dialog of a panel, made on first use. It edits one well at a time, which is active meanwhile, and moves
/// over to another one that asks for it. Escape brings back the colour that the well had when the dialog opened for it
/// or was last told another one. It opens beside the chart window where the screen has room, else over the oldest bars.
class QZColorPicker final : public QObject {
    Q_OBJECT
public:
    /// `panel` is borrowed and owns the dialog, which stays above it and gives the keyboard back to it.
    explicit QZColorPicker(QZPanelWindow& panel) : panel_(panel) {}
    ~QZColorPicker() override;

    /// Opens the dialog for `well`, which is borrowed until the dialog closes.
    void pick(QZPaintGraphConfigColorWell& well, QColorDialog::ColorDialogOptions options = {});
    /// Shows the well's colour anew, if it is the one that is edited.
    void reload(const QZPaintGraphConfigColorWell& well);
    void close();
    /// Null while the dialog is closed.
    [[nodiscard]] const QZPaintGraphConfigColorWell* activeWell() const { return activeWell_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The well has another colour.
    void colorPicked(QZPaintGraphConfigColorWell* well);

private:
    void makeDialog();
    void deactivateWell();
    void placeDialog();

    QZPanelWindow& panel_;
    QPointer<QColorDialog> dialog_;
    QZPaintGraphConfigColorWell* activeWell_ = nullptr;
    QColor colorBefore_;
    QRect placedBeside_; // the chart window when the dialog was placed
};
