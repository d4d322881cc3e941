#pragma once

#include <QColor>
#include <QPalette>

#include <array>

/// The colours of a chart, from the current theme; a theme that leaves one out gets the light theme's.
struct ChartTheme {
    QColor background;
    QColor grid;
    QColor axisText;
    QColor candleUp;
    QColor candleDown;
    QColor volumeUp;
    QColor volumeDown;
    std::array<QColor, 4> lines; ///< drawn beside the bars, legible as text

    [[nodiscard]] static ChartTheme current();

    /// Rising bars are red unless they are chosen to be green; the theme's two colours change places then.
    static void setGreenRises(bool rises) { greenRises_ = rises; }
    [[nodiscard]] static bool greenRises() { return greenRises_; }

    /// For the windows around the chart.
    [[nodiscard]] QPalette windowPalette() const;

private:
    inline static bool greenRises_ = false;
};
