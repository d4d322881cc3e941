#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Contrast of two opaque colours, 1 to 21, by their relative luminance (Web Content Accessibility Guidelines 2, which
/// ask for 3 in shapes and 4.5 in text).
inline double contrast(const QColor& a, const QColor& b)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [linear](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}
