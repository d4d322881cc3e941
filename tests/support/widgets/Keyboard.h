#pragma once

#include <QApplication>
#include <QTest>
#include <QWidget>

/// Waits until `window` has the keyboard. Some styles call every tool window active: QWidget::isActiveWindow() won't
/// do.
inline bool getsKeyboard(const QWidget* window)
{
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}
