#pragma once

#include "model/QZPaintDefaults.h"

/// The style and the magnet switch as the strip and the palette show them; initial values for a panel that does not
/// exist yet. A split view installs it; a host's own defaults come before it.
class QZPanelDefaults final : public QZPaintDefaults {
public:
    static void install();

    [[nodiscard]] std::uint64_t lineType() const override;
    [[nodiscard]] double lineWidth() const override;
    [[nodiscard]] QColor strokeColor() const override;
    [[nodiscard]] QColor fillColor() const override;
    [[nodiscard]] QString text() const override;
    [[nodiscard]] double textSize() const override;
    [[nodiscard]] bool isMagnet() const override;
};
