#pragma once

#include "model/QZDrawingTypes.h"

#include <cstdint>

class QAbstractButton;
class QWidget;

/// A chart window's dealings with the tool palette, which all windows share: it shows it, chooses tools by key and says
/// which tools its chart takes.
class ChartPalette {
public:
    /// `window` is borrowed and outlives this.
    explicit ChartPalette(QWidget& window) : window_(window) {}

    /// Opens the palette over the window, at the chart's left edge the first time, or closes it.
    void toggle();
    /// Whether it is open over this window.
    [[nodiscard]] bool isOpen() const;
    /// Brings an open palette over from another window.
    void takeOver();

    /// Presses the button of a digit's tool: 1 to 6 are the straight-line tools. False for any other key.
    static bool pressKey(int key);
    /// The button of a tool; null when the palette's interface has none.
    static QAbstractButton* button(QZShapeType type);

    /// Enables what suits the chart, of days' lines or of candles, and is among `paneTypes`, the active pane's tools.
    /// The others' tooltips say why not.
    static void follow(bool isLine, std::int64_t paneTypes);

private:
    QWidget& window_;
};
