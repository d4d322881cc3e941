#pragma once

#include "platform/QZFont.h"

#include <QPointF>
#include <QTextLayout>

class QPainter;

/// A text as it is drawn: the one layout that measures and paints. Lines end only at "\n", "\r\n", "\r" and Unicode's
/// line and paragraph separators; an end of line at the very end opens one more, empty line. Tabs go on to the next
/// multiple of 28 px. A line is as high as the highest font that its characters come from.
class QZTextLayout {
public:
    QZTextLayout(const QString& text, const QFont& font);

    [[nodiscard]] QZTextSize size() const { return size_; }
    /// Paints in the painter's pen colour with the first line's top left corner at `topLeft`, y downwards.
    void draw(QPainter& painter, QPointF topLeft) const { layout_.draw(&painter, topLeft); }

private:
    QTextLayout layout_;
    QZTextSize size_;
};
