#include "app/demo/UserInput.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWindow>

namespace {

constexpr int dragSteps = 24;

} // namespace

UserInput::UserInput(QWidget& window) : window_(window), handle_(*window.windowHandle()) {}

QPointF UserInput::positionOf(const ChartPane& pane, QZPoint point) const
{
    return pane.mapTo(&window_, QPointF(point.x, pane.height() - point.y));
}

void UserInput::mouse(QEvent::Type type, QPointF position, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, position, position, handle_.mapToGlobal(position), button, buttons, modifiers_);
    QCoreApplication::sendEvent(&handle_, &event);
}

void UserInput::moveTo(QPointF position)
{
    mouse(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
}

void UserInput::click(QPointF position)
{
    moveTo(position);
    mouse(QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
    settle();
}

void UserInput::doubleClick(QPointF position)
{
    click(position);
    mouse(QEvent::MouseButtonDblClick, position, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
    settle();
}

void UserInput::drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers)
{
    modifiers_ = modifiers;
    moveTo(from);
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= dragSteps; ++step) {
        // A hand starts slowly.
        const double part = static_cast<double>(step) / dragSteps;
        mouse(QEvent::MouseMove, from + (to - from) * part * part, Qt::NoButton, Qt::LeftButton);
        settle();
    }
    mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    modifiers_ = Qt::NoModifier;
    settle();
}

void UserInput::wheel(QPointF position, QPoint angleDelta, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(position, handle_.mapToGlobal(position), QPoint(), angleDelta, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&handle_, &event);
    settle();
}

void UserInput::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&handle_, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&handle_, &release);
    settle();
}

void UserInput::settle()
{
    QCoreApplication::processEvents();
}
