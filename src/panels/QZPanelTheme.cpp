#include "panels/QZPanelTheme.h"

#include "platform/QZGlobalEnv.h"

namespace {

/// Share of the text's colour in what is drawn around the controls. A well's outline alone shows a colour that is like
/// the strip's own.
constexpr double outlineShare = 0.55;
constexpr double lineShare = 0.3;
constexpr double hoverShare = 0.12;

QColor mixed(const QColor& color, const QColor& background, double share)
{
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1.0 - share)); };
    return {mix(color.red(), background.red()), mix(color.green(), background.green()),
            mix(color.blue(), background.blue())};
}

} // namespace

QPalette panelColors(QPalette colors)
{
    const QZPaletteLoad& theme = QZGlobalEnv::getShareInstance().paletteLoad();
    const QColor background =
        theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.PanelBackgroundColor")).value_or(QColor(Qt::white));
    const QColor text = theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.IconNormalColor"))
                            .value_or(background.lightnessF() < 0.5F ? QColor(Qt::white) : QColor(Qt::black));
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        colors.setColor(role, background);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colors.setColor(role, text);
    colors.setColor(QPalette::Dark, mixed(text, background, outlineShare));
    colors.setColor(QPalette::Mid, mixed(text, background, lineShare));
    for (const auto role : {QPalette::Light, QPalette::Midlight})
        colors.setColor(role, mixed(text, background, hoverShare));
    return colors;
}
