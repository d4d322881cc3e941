#pragma once

#include "platform/QZFont.h"

#include <QPointF>
#include <QTextLayout>

#include <vector>

class QPainter;

/// A text as it is drawn: the one layout that measures and paints. Lines end only at "\n", "\r\n", "\r" and Unicode's
/// line and paragraph separators; an end of line at the very end opens one more, empty line. Tabs go on to the next
/// multiple of 28 px. A line is as high as the highest font that its characters come from.
class QZTextLayout {
public:
    QZTextLayout(const QString& text, const QFont& font);

    [[nodiscard]] QZTextSize size() const { return size_; }
    [[nodiscard]] int lineCount() const { return layout_.lineCount(); }
    /// How far (px) below the top the first line's characters stand.
    [[nodiscard]] double baseline() const { return layout_.lineAt(0).ascent(); }
    /// Where (px) each character's glyph stands; empty unless there is one for each character, all of one font.
    [[nodiscard]] std::vector<double> stops() const;
    /// Paints in the painter's pen colour with the first line's top left corner at `topLeft`, y downwards.
    void draw(QPainter& painter, QPointF topLeft) const { layout_.draw(&painter, topLeft); }

private:
    QTextLayout layout_;
    QZTextSize size_;
};
