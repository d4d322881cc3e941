#pragma once

#include <QByteArray>
#include <QPaintDevice>
#include <QSizeF>

#include <memory>

class SvgEngine;

/// A paint device that writes an SVG document: lines, dashes and texts stay such, and unlike QSvgGenerator's, what is
/// painted is clipped. Gradients and patterns are not known, they become plain colours.
class SvgDevice final : public QPaintDevice {
public:
    /// `size` is the picture's (px).
    explicit SvgDevice(QSizeF size);
    SvgDevice(const SvgDevice&) = delete;
    SvgDevice& operator=(const SvgDevice&) = delete;
    ~SvgDevice() override;

    [[nodiscard]] QPaintEngine* paintEngine() const override;
    /// The whole document, once the painter has ended.
    [[nodiscard]] QByteArray document() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QSizeF size_;
    std::unique_ptr<SvgEngine> engine_;
};
