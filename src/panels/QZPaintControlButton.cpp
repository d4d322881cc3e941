#include "panels/QZPaintControlButton.h"

#include "model/QZDrawingTypes.h"
#include "platform/QZGlobalEnv.h"

#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int buttonSide = 26;
constexpr double cornerRadius = 3.0;
constexpr double disabledOpacity = 0.35;
constexpr QColor defaultSelectedColor(254, 100, 0);

enum ImageIndex : std::size_t { NormalImage, SelectedImage, HoverImage };

} // namespace

QZPaintControlButton::QZPaintControlButton(const QString& identifier, QWidget* parent)
    : QZPaintControlButton(identifier, 2, parent)
{}

QZPaintControlButton::QZPaintControlButton(const QString& identifier, int imageCount, QWidget* parent)
    : QAbstractButton(parent), imageCount_(imageCount)
{
    setObjectName(identifier);
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    // Assistive technology toggles a checkable button without clicking it.
    connect(this, &QAbstractButton::toggled, this, [this](bool checked) {
        if (checked == selected_)
            return;
        setChecked(selected_);
        click();
    });
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    getFontAndColor();
    images_ = configImages();
    themeObservation_ = QZNotificationCenter::defaultCenter().observe(QZUIOverallStyleDidChangeNotification,
                                                                      [this](const QZNotification&) {
                                                                          getFontAndColor();
                                                                          images_ = configImages();
                                                                          update();
                                                                      });
}

void QZPaintControlButton::getFontAndColor()
{
    const QZPaletteLoad& theme = QZGlobalEnv::getShareInstance().paletteLoad();
    selectedBgColor_ = theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.ControlButtonSelectedColor"))
                           .value_or(defaultSelectedColor);
    hoverBgColor_ = theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.ControlButtonHoverColor"))
                        .value_or(QColor(Qt::lightGray));
}

std::vector<QImage> QZPaintControlButton::configImages() const
{
    const QString key = QStringLiteral("QZLinePaintToolFactory.%1").arg(objectName());
    const QImage strip = QZGlobalEnv::getShareInstance().paletteLoad().getCustomImage(key);
    return QZPaletteLoad::getImagesInGroupByScale(strip, imageCount_, 1, imageHeight);
}

QImage QZPaintControlButton::image() const
{
    return shownImage_ < images_.size() ? images_[shownImage_] : QImage();
}

void QZPaintControlButton::showImage(std::size_t index)
{
    shownImage_ = index;
    update();
}

QColor QZPaintControlButton::backgroundColor() const
{
    switch (background_) {
    case Background::Window:
        return window()->palette().color(QPalette::Window);
    case Background::Hover:
        return hoverBgColor_;
    case Background::Selected:
        return selectedBgColor_;
    case Background::None:
        break;
    }
    return {};
}

void QZPaintControlButton::setBackground(Background background)
{
    background_ = background;
    update();
}

void QZPaintControlButton::mouseEntered()
{
    if (isEnabled() && !selected_)
        setBackground(Background::Hover);
}

void QZPaintControlButton::mouseExited()
{
    // A button that was disabled while it was hovered must not keep the hover colour.
    if (!selected_)
        setBackground(Background::Window);
}

bool QZPaintControlButton::changeSelected(bool selected)
{
    if (selected_ == selected)
        return false;
    selected_ = selected;
    setChecked(selected);
    return true;
}

void QZPaintControlButton::setSelected(bool selected)
{
    if (!changeSelected(selected))
        return;
    setBackground(selected ? Background::Selected : Background::Window);
    showImage(selected ? SelectedImage : NormalImage);
}

QSize QZPaintControlButton::sizeHint() const
{
    return {buttonSide, buttonSide};
}

void QZPaintControlButton::enterEvent(QEnterEvent* event)
{
    mouseEntered();
    QAbstractButton::enterEvent(event);
}

void QZPaintControlButton::leaveEvent(QEvent* event)
{
    mouseExited();
    QAbstractButton::leaveEvent(event);
}

void QZPaintControlButton::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else if (!isReturn)
        QAbstractButton::keyPressEvent(event);
}

void QZPaintControlButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const QColor background = backgroundColor(); background.isValid()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(background);
        painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    }
    if (const QImage shown = image(); !shown.isNull()) {
        QRectF target(QPointF(), shown.deviceIndependentSize());
        target.moveCenter(QRectF(rect()).center());
        painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
        painter.drawImage(target, shown);
        painter.setOpacity(1.0);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    }
}

QZPaintToolCtrlBtn::QZPaintToolCtrlBtn(const QString& identifier, QWidget* parent)
    : QZPaintControlButton(identifier, 3, parent)
{}

void QZPaintToolCtrlBtn::mouseEntered()
{
    if (!isEnabled())
        return;
    isInside_ = true;
    if (!isSelected() && images().size() == static_cast<std::size_t>(imageCount()))
        showImage(HoverImage);
}

void QZPaintToolCtrlBtn::mouseExited()
{
    isInside_ = false;
    if (!isSelected())
        showImage(NormalImage);
}

void QZPaintToolCtrlBtn::setSelected(bool selected)
{
    if (!changeSelected(selected))
        return;
    if (selected)
        showImage(SelectedImage);
    else
        showImage(isInside_ ? HoverImage : NormalImage);
}
