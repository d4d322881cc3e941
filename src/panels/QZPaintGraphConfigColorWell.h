#pragma once

#include <QAbstractButton>
#include <QColor>

/// Shows a colour and, pressed, asks for a colour picker. The well is active while the picker edits its colour.
class QZPaintGraphConfigColorWell : public QAbstractButton {
    Q_OBJECT
public:
    explicit QZPaintGraphConfigColorWell(QWidget* parent = nullptr);

    /// Invalid when there is none, which a stroke through the well shows.
    [[nodiscard]] QColor color() const { return color_; }
    void setColor(const QColor& color);

    [[nodiscard]] bool isActive() const { return isActive_; }
    void setActive(bool isActive);

    /// Where the colour is drawn: 0.6 of `bounds` in each dimension, centred.
    [[nodiscard]] static QRectF wellRectForBounds(const QRectF& bounds);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color_;
    bool isActive_ = false;
};
