#pragma once

#include "panels/QZPanelWindow.h"

/// The window of the text editor: takes the keyboard although it has no title bar, and keeps it while it is used.
/// Escape closes it.
class QZPaintTextConfigWindow final : public QZPanelWindow {
    Q_OBJECT
public:
    QZPaintTextConfigWindow() : QZPanelWindow(Qt::FramelessWindowHint)
    {
        setAttribute(Qt::WA_ShowWithoutActivating, false);
    }

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
