#include "panels/QZPaintTextConfigWindow.h"

#include <QKeyEvent>

void QZPaintTextConfigWindow::keyPressEvent(QKeyEvent* event)
{
    // Nothing typed here is meant for the chart: Delete would take the note away.
    if (event->key() == Qt::Key_Escape)
        close();
    event->accept();
}
