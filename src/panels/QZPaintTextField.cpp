#include "panels/QZPaintTextField.h"

#include <QKeyEvent>
#include <QTextBlock>

#include <cmath>

QZPaintTextField::QZPaintTextField(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
}

int QZPaintTextField::naturalHeight() const
{
    double height = 0.0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        height += blockBoundingRect(block).height();
    const double around = 2.0 * document()->documentMargin() + 2.0 * frameWidth();
    return static_cast<int>(std::ceil(height + around));
}

void QZPaintTextField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    if ((event->modifiers() & Qt::ShiftModifier) != 0)
        insertPlainText(QStringLiteral("\n"));
    else
        Q_EMIT editingEnded();
}
