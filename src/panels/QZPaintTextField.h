#pragma once

#include <QPlainTextEdit>

/// A field for a few lines of text that is as high as its text. Return ends the edit, with Shift it begins a new line;
/// while an input method composes, Return is the input method's.
class QZPaintTextField final : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit QZPaintTextField(QWidget* parent = nullptr);

    /// Height (px) at which all lines show, with the frame.
    [[nodiscard]] int naturalHeight() const;

Q_SIGNALS:
    void editingEnded();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
