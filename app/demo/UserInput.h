#pragma once

#include "app/chart/ChartPane.h"

#include <QEvent>
#include <QPoint>
#include <QPointF>

class QWidget;
class QWindow;

/// Does to a window what a user's hand does: events go to the window itself, and Qt delivers them from there.
class UserInput {
public:
    /// `window` is borrowed and shown.
    explicit UserInput(QWidget& window);

    // Positions are px of the window, y downwards.
    void moveTo(QPointF position);
    void click(QPointF position);
    void doubleClick(QPointF position);
    /// Presses at `from`, moves to `to` in small steps and releases there.
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void wheel(QPointF position, QPoint angleDelta, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Lets everything that is due happen, painting included.
    static void settle();

    /// Where a point of a pane (px, y upwards) is in the window.
    [[nodiscard]] QPointF positionOf(const ChartPane& pane, QZPoint point) const;

private:
    void mouse(QEvent::Type type, QPointF position, Qt::MouseButton button, Qt::MouseButtons buttons);

    QWidget& window_;
    QWindow& handle_;
    Qt::KeyboardModifiers modifiers_ = Qt::NoModifier; ///< held while the mouse moves
};
