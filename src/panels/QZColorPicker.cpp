#include "panels/QZColorPicker.h"

#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>

#include <algorithm>
#include <array>

namespace {

/// What a window manager puts around a dialog, roughly (px).
constexpr int frameWidth = 4;
constexpr int titleHeight = 30;

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
    dialog_->installEventFilter(this);
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
    placeDialog();
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void QZColorPicker::reload(const QZPaintGraphConfigColorWell& well)
{
    if (activeWell_ != &well)
        return;
    const QSignalBlocker silent(dialog_);
    colorBefore_ = well.color();
    dialog_->setWindowTitle(well.toolTip());
    // Setting the same colour again would lose the hue of a grey that is being dragged.
    const QColor color = well.color().isValid() ? well.color() : QColor(Qt::white);
    if (dialog_->currentColor() != color)
        dialog_->setCurrentColor(color);
}

bool QZColorPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        colorBefore_.isValid() && dialog_->currentColor() != colorBefore_)
        dialog_->setCurrentColor(colorBefore_);
    return QObject::eventFilter(watched, event);
}

void QZColorPicker::placeDialog()
{
    const QWidget* chart = panel_.chartWindow();
    // Where its user has put it, it stays as long as the chart stays where it is.
    if (chart == nullptr || dialog_->isVisible() || chart->frameGeometry() == placedBeside_)
        return;
    placedBeside_ = chart->frameGeometry();
    const QRect screen = chart->screen()->availableGeometry();
    const QSize size = dialog_->sizeHint() + QSize(2 * frameWidth, titleHeight + frameWidth);
    const QRect& beside = placedBeside_;
    const std::array places{QRect(QPoint(beside.right() + 1, beside.top()), size),
                            QRect(QPoint(beside.left() - size.width(), beside.top()), size),
                            QRect(QPoint(beside.left(), beside.bottom() + 1), size),
                            QRect(QPoint(beside.left(), beside.top() - size.height()), size)};
    const auto* free = std::ranges::find_if(places, [&screen](const QRect& place) { return screen.contains(place); });
    const QRect seen = beside & screen;
    dialog_->move(free != places.end() ? free->topLeft() : seen.bottomLeft() - QPoint(0, size.height() - 1));
}

void QZColorPicker::close()
{
    if (dialog_ != nullptr)
        dialog_->close();
}
