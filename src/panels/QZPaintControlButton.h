#pragma once

#include "platform/QZNotificationCenter.h"

#include <QAbstractButton>
#include <QColor>
#include <QImage>
#include <QString>

#include <vector>

/// A button of the tool palette. Its identifier is its object name, the name of a shape type, and also picks its
/// picture in the theme. A chosen or hovered button is told by its background; a chosen one also by its picture.
/// Follows a change of theme.
class QZPaintControlButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool fnButton READ isFnButton WRITE setFnButton)
public:
    explicit QZPaintControlButton(const QString& identifier, QWidget* parent = nullptr);

    /// Pictures in the theme's strip for this button: normal, selected and, where there is a third one, hover.
    [[nodiscard]] virtual int imageCount() const { return imageCount_; }
    /// As many as imageCount(), 18 px high, or none when the theme has no such strip.
    [[nodiscard]] const std::vector<QImage>& images() const { return images_; }
    /// The one of them that is shown; null when there is none.
    [[nodiscard]] QImage image() const;
    /// Invalid until the button was first hovered or chosen: then nothing is painted behind the picture.
    [[nodiscard]] QColor backgroundColor() const;

    [[nodiscard]] bool isSelected() const { return selected_; }
    virtual void setSelected(bool selected);

    /// A function (magnet, eye, delete) rather than a tool; set in the interface file only.
    [[nodiscard]] bool isFnButton() const { return fnButton_; }
    void setFnButton(bool fnButton) { fnButton_ = fnButton; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    QZPaintControlButton(const QString& identifier, int imageCount, QWidget* parent);

    virtual void mouseEntered();
    virtual void mouseExited();

    /// Stores the state, also for assistive technology; false when it was that already.
    bool changeSelected(bool selected);
    void showImage(std::size_t index);

    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Selection is the palette's business: a click alone changes nothing.
    void nextCheckState() override {}

private:
    enum class Background { None, Window, Hover, Selected };

    void getFontAndColor();
    [[nodiscard]] std::vector<QImage> configImages() const;
    void setBackground(Background background);

    int imageCount_;
    std::vector<QImage> images_;
    std::size_t shownImage_ = 0;
    Background background_ = Background::None;
    QColor selectedBgColor_;
    QColor hoverBgColor_;
    bool selected_ = false;
    bool fnButton_ = false;
    QZObservation themeObservation_;
};

/// A function button, which tells its state by its picture alone: normal, selected or hovered.
class QZPaintToolCtrlBtn final : public QZPaintControlButton {
    Q_OBJECT
public:
    explicit QZPaintToolCtrlBtn(const QString& identifier, QWidget* parent = nullptr);

    void setSelected(bool selected) override;

protected:
    void mouseEntered() override;
    void mouseExited() override;

private:
    bool isInside_ = false;
};
