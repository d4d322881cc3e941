#pragma once

#include <QImage>

#include <cstdint>
#include <memory>

class QZPaintControl;

/// Receives the commands of the tool palette. The palette forgets a delegate that is destroyed.
class QZPaintControlWCDelegate {
public:
    QZPaintControlWCDelegate() = default;
    QZPaintControlWCDelegate(const QZPaintControlWCDelegate&) = delete;
    QZPaintControlWCDelegate& operator=(const QZPaintControlWCDelegate&) = delete;
    virtual ~QZPaintControlWCDelegate() = default;

    /// The user chose another tool; `imageThumbnail` is its picture, null when the theme has none. The type is
    /// QZShapeTypeNone when the chosen tool goes over to another delegate.
    virtual void changeShapeTo(std::int64_t type, const QImage& imageThumbnail) = 0;
    /// The user asks to delete everything drawn. Asking back is up to the delegate.
    virtual void removeAllGraphs(QZPaintControl& sender) = 0;
    /// The sender's isHidden() changed.
    virtual void showOrHiddenAllGraphs(QZPaintControl& sender) = 0;
    /// The palette's window is about to close; no tool is chosen any more.
    virtual void windowWillClosed(QZPaintControl& sender) = 0;

private:
    friend class QZPaintControl;
    // Ends with the delegate, which the palette watches it for.
    std::shared_ptr<void> lifetime_ = std::make_shared<char>();
};
