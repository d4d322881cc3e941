#include "app/window/Appearance.h"

#include "app/chart/ChartTheme.h"
#include "app/window/Preferences.h"
#include "platform/QZGlobalEnv.h"

#include <QApplication>
#include <QPointer>
#include <QStyleHints>
#include <QToolTip>

#include <array>
#include <utility>

namespace {

constexpr int darkLightness = 128;
constexpr std::array choiceNames{std::pair{ThemeChoice::System, "system"}, std::pair{ThemeChoice::Light, "light"},
                                 std::pair{ThemeChoice::Dark, "dark"}};

bool isThemeDark()
{
    return QZGlobalEnv::getShareInstance().themeName() == QLatin1String("dark");
}

void setTheme(bool isDark)
{
    if (isDark != isThemeDark())
        QZGlobalEnv::getShareInstance().setTheme(isDark ? QStringLiteral("dark") : QStringLiteral("light"));
}

bool isSystemDark()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QGuiApplication::styleHints()->colorScheme() == Qt::ColorScheme::Dark;
#else
    // The application's own palette hides the system's.
    const QPalette own = QApplication::palette();
    QApplication::setPalette(QPalette());
    const bool isDark = QApplication::palette().color(QPalette::Window).lightness() < darkLightness;
    QApplication::setPalette(own);
    return isDark;
#endif
}

} // namespace

Appearance::Appearance(QObject* parent) : QObject(parent), isSystemDark_(isSystemDark)
{
    observation_ = QZNotificationCenter::defaultCenter().observe(QZUIOverallStyleDidChangeNotification,
                                                                 [this](const QZNotification&) { applyTheme(); });
    applyTheme();
}

Appearance& Appearance::shared()
{
    static QPointer<Appearance> appearance;
    if (appearance == nullptr)
        appearance = new Appearance(QCoreApplication::instance());
    return *appearance;
}

void Appearance::choose(ThemeChoice choice)
{
    for (const auto& [value, name] : choiceNames) {
        if (value == choice)
            Preferences::setValue(Preferences::theme, QLatin1String(name));
    }
    pin(choice);
}

void Appearance::pin(ThemeChoice choice)
{
    choice_ = choice;
    if (choice == ThemeChoice::System)
        followSystem();
    else
        setTheme(choice == ThemeChoice::Dark);
    Q_EMIT changed();
}

void Appearance::toggle()
{
    choose(isThemeDark() ? ThemeChoice::Light : ThemeChoice::Dark);
}

bool Appearance::greenRises()
{
    return ChartTheme::greenRises();
}

void Appearance::setGreenRises(bool greenRises)
{
    if (greenRises == ChartTheme::greenRises())
        return;
    Preferences::setValue(Preferences::greenRises, greenRises);
    ChartTheme::setGreenRises(greenRises);
    QZNotificationCenter::defaultCenter().post(QZUIOverallStyleDidChangeNotification);
    Q_EMIT changed();
}

void Appearance::restore()
{
    const QString remembered = Preferences::value(Preferences::theme).toString();
    ThemeChoice choice = ThemeChoice::System;
    for (const auto& [value, name] : choiceNames) {
        if (remembered == QLatin1String(name))
            choice = value;
    }
    pin(choice);
    setGreenRises(Preferences::value(Preferences::greenRises).toBool());
}

void Appearance::followSystem()
{
    if (choice_ == ThemeChoice::System)
        setTheme(isSystemDark_());
}

void Appearance::applyTheme()
{
    const QPalette palette = ChartTheme::current().windowPalette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
