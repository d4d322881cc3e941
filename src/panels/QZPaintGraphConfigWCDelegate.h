#pragma once

#include <QColor>

#include <cstdint>
#include <memory>

class QZPaintGraphConfigWC;

/// Is told what the user does in the graph configuration strip. The strip borrows its delegate and forgets it when it
/// dies.
class QZPaintGraphConfigWCDelegate {
public:
    QZPaintGraphConfigWCDelegate() = default;
    QZPaintGraphConfigWCDelegate(const QZPaintGraphConfigWCDelegate&) = delete;
    QZPaintGraphConfigWCDelegate& operator=(const QZPaintGraphConfigWCDelegate&) = delete;
    virtual ~QZPaintGraphConfigWCDelegate() = default;

    virtual void paintGraphConfigDidEdit(QZPaintGraphConfigWC& panel) = 0;
    virtual void paintGraphConfigStrokeColorDidChange(QZPaintGraphConfigWC& panel, const QColor& color) = 0;
    virtual void paintGraphConfigFillColorDidChange(QZPaintGraphConfigWC& panel, const QColor& color) = 0;
    virtual void paintGraphConfigLineTypeDidChange(QZPaintGraphConfigWC& panel, std::uint64_t lineType) = 0;
    /// `lineWidth` in px, a whole number.
    virtual void paintGraphConfigLineWidthDidChange(QZPaintGraphConfigWC& panel, double lineWidth) = 0;
    virtual void paintGraphConfigIsLockedDidChange(QZPaintGraphConfigWC& panel, bool isLocked) = 0;
    virtual void paintGraphConfigDidDelete(QZPaintGraphConfigWC& panel) = 0;

private:
    friend class QZPaintGraphConfigWC;

    // Ends with the delegate, which the strip watches it for.
    std::shared_ptr<void> lifetime_ = std::make_shared<char>();
};
