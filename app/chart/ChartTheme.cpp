#include "app/chart/ChartTheme.h"

#include "platform/QZGlobalEnv.h"

#include <QString>

#include <utility>

namespace {

/// Of what is disabled or only a hint.
constexpr int faintAlpha = 128;

QColor themeColor(const char* key, QRgb otherwise)
{
    const auto color = QZGlobalEnv::getShareInstance().paletteLoad().getCustomColor(QString::fromLatin1(key));
    return color.value_or(QColor::fromRgba(otherwise));
}

} // namespace

ChartTheme ChartTheme::current()
{
    ChartTheme theme{.background = themeColor("qzchart.background", 0xfffcfcfd),
                     .grid = themeColor("qzchart.grid", 0xffe9ebef),
                     .axisText = themeColor("qzchart.axisText", 0xff5a6270),
                     .candleUp = themeColor("qzchart.candleUp", 0xffd0312d),
                     .candleDown = themeColor("qzchart.candleDown", 0xff0b7f4b),
                     .volumeUp = themeColor("qzchart.volumeUp", 0x99d0312d),
                     .volumeDown = themeColor("qzchart.volumeDown", 0x990b7f4b),
                     .lines = {themeColor("qzchart.line1", 0xff9a6b00), themeColor("qzchart.line2", 0xff1666c0),
                               themeColor("qzchart.line3", 0xff8446c8), themeColor("qzchart.line4", 0xff007c92)}};
    if (greenRises_) {
        std::swap(theme.candleUp, theme.candleDown);
        std::swap(theme.volumeUp, theme.volumeDown);
    }
    return theme;
}

QPalette ChartTheme::windowPalette() const
{
    QPalette palette(background, background);
    palette.setColor(QPalette::Base, background);
    palette.setColor(QPalette::Window, background);
    palette.setColor(QPalette::WindowText, axisText);
    palette.setColor(QPalette::Text, axisText);
    palette.setColor(QPalette::ButtonText, axisText);
    palette.setColor(QPalette::ToolTipBase, grid);
    palette.setColor(QPalette::ToolTipText, axisText);
    QColor faint = axisText;
    faint.setAlpha(faintAlpha);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}
