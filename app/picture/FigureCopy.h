#pragma once

#include <QString>
#include <QTemporaryDir>

/// A copy of a user's stored figures, made from a consistent state of the file and in place of it as long as this
/// lives: whatever the chart does to its figures then, the user's own file stays as it is.
class FigureCopy {
public:
    FigureCopy() = default;
    FigureCopy(const FigureCopy&) = delete;
    FigureCopy& operator=(const FigureCopy&) = delete;
    ~FigureCopy();

    /// Copies the login user's figures; to be called before the first pane is made. Returns why that failed, null if it
    /// did not. A user without any figures is no failure.
    QString take();
    /// Whether there was anything to copy.
    [[nodiscard]] bool hasFigures() const { return hasFigures_; }

private:
    QTemporaryDir folder_;
    QString rootBefore_;
    bool isInPlace_ = false;
    bool hasFigures_ = false;
};
