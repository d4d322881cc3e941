#include "surface/QZPaintOverlay.h"

#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"

#include <QPainter>

QZPaintOverlay::QZPaintOverlay(QZPaintManagerView& view) : QWidget(&view), view_(view)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void QZPaintOverlay::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setClipRect(view_.flippedValidateRect());
    painter.drawImage(0, 0, view_.paintLayer()->contents(size(), devicePixelRatioF()));
}
