#include "panels/QZColorPicker.h"

#include <QSignalBlocker>

namespace {

/// Gives the keyboard back while it still has it.
class ColorDialog final : public QColorDialog {
public:
    explicit ColorDialog(QZPanelWindow& panel) : QColorDialog(&panel), panel_(panel) {}

    void done(int result) override
    {
        panel_.returnKeyboard();
        QColorDialog::done(result);
    }

private:
    QZPanelWindow& panel_;
};

} // namespace

QZColorPicker::~QZColorPicker()
{
    delete dialog_.data();
}

void QZColorPicker::makeDialog()
{
    dialog_ = new ColorDialog(panel_);
    connect(dialog_, &QColorDialog::currentColorChanged, this, [this](const QColor& color) {
        if (activeWell_ == nullptr)
            return;
        activeWell_->setColor(color);
        Q_EMIT colorPicked(activeWell_);
    });
    connect(dialog_, &QDialog::finished, this, &QZColorPicker::deactivateWell);
}

void QZColorPicker::deactivateWell()
{
    if (activeWell_ != nullptr)
        activeWell_->setActive(false);
    activeWell_ = nullptr;
}

void QZColorPicker::pick(QZPaintGraphConfigColorWell& well, QColorDialog::ColorDialogOptions options)
{
    if (dialog_ == nullptr)
        makeDialog();
    deactivateWell();
    {
        const QSignalBlocker silent(dialog_);
        dialog_->setOptions(options | QColorDialog::DontUseNativeDialog | QColorDialog::NoButtons);
    }
    activeWell_ = &well;
    well.setActive(true);
    reload(well);
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void QZColorPicker::reload(const QZPaintGraphConfigColorWell& well)
{
    if (activeWell_ != &well)
        return;
    const QSignalBlocker silent(dialog_);
    dialog_->setWindowTitle(well.toolTip());
    // Setting the same colour again would lose the hue of a grey that is being dragged.
    const QColor color = well.color().isValid() ? well.color() : QColor(Qt::white);
    if (dialog_->currentColor() != color)
        dialog_->setCurrentColor(color);
}

void QZColorPicker::close()
{
    if (dialog_ != nullptr)
        dialog_->close();
}
