#pragma once

#include <QColor>
#include <QString>

#include <cstdint>
#include <memory>

class QZPaintTextConfigWC;

/// Is told what the user does in the text configuration panel. The panel borrows its delegate and forgets it when it
/// dies.
class QZPaintTextConfigWCDelegate {
public:
    QZPaintTextConfigWCDelegate() = default;
    QZPaintTextConfigWCDelegate(const QZPaintTextConfigWCDelegate&) = delete;
    QZPaintTextConfigWCDelegate& operator=(const QZPaintTextConfigWCDelegate&) = delete;
    virtual ~QZPaintTextConfigWCDelegate() = default;

    /// `text` is all of it, lines separated by line feeds.
    virtual void paintTextConfigTextDidChange(QZPaintTextConfigWC& panel, const QString& text) = 0;
    virtual void paintTextConfigColorDidChange(QZPaintTextConfigWC& panel, const QColor& color) = 0;
    /// `size` in px.
    virtual void paintTextConfigSizeDidChange(QZPaintTextConfigWC& panel, std::int64_t size) = 0;

private:
    friend class QZPaintTextConfigWC;

    // Ends with the delegate, which the panel watches it for.
    std::shared_ptr<void> lifetime_ = std::make_shared<char>();
};
