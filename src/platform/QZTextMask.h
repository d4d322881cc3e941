#pragma once

#include <QFont>
#include <QImage>
#include <QPoint>
#include <QString>

#include <optional>
#include <vector>

/// How much ink one line of text leaves in each device pixel around it.
struct QZTextMask {
    /// The painter's text engine tells apart as many places of a text between two device pixels.
    static constexpr int phaseCount = 4;

    QPoint corner; ///< top left, in device pixels from the one where the text starts on its baseline
    QSize size;
    std::vector<uchar> ink; ///< row by row, 255 is full

    [[nodiscard]] std::size_t bytes() const { return sizeof(*this) + ink.capacity(); }
};

/// The ink of `text`, which has one line, as a painter with `ratio` device pixels per px leaves it, starting `phase`
/// quarters of a device pixel behind one. Nothing where the text has colours of its own, as emoji do.
std::optional<QZTextMask> textMask(const QString& text, const QFont& font, double ratio, int phase);
