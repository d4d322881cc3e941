#pragma once

#include <QToolBar>

class QAction;
class QLabel;
class QString;

/// A bar that tells why drawings cannot be stored, what will happen to them, and offers what helps.
class StoreNotice : public QToolBar {
    Q_OBJECT

public:
    explicit StoreNotice(QWidget* parent);

    /// Shows what became of the file at `path`; `reason` is what the database said.
    void tell(const QString& path, const QString& reason);

    /// Reads and writes the file again at once.
    [[nodiscard]] QAction* tryAgain() const { return tryAgain_; }
    /// Puts the file aside; there only where that helps.
    [[nodiscard]] QAction* startNewFile() const { return startNewFile_; }

private:
    QLabel* text_;
    QAction* tryAgain_;
    QAction* startNewFile_;
};
