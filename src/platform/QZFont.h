#pragma once

#include <QFont>
#include <QString>

/// Extent of a text in logical px.
struct QZTextSize {
    double width = 0;
    double height = 0;
};

/// Font of captions. `size` is in logical px whatever the screen's dots per inch, rounded, at least 1. Its families
/// cover Latin text, arrows ("⬆︎") and Chinese, so that no caption depends on what a desktop falls back to.
QFont systemFont(double size);

/// Font of labels and text notes; the same face as systemFont().
QFont labelFont(double size);

/// What QZGraphicsContext::drawText() needs on a QZPainterContext: the widest line's advance, trailing spaces included,
/// by the heights of all lines. An empty text is one line of no width.
QZTextSize measureText(const QString& text, const QFont& font);
