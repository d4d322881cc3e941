#pragma once

#include "platform/QZNotificationCenter.h"

#include <QObject>

#include <functional>
#include <utility>

enum class ThemeChoice { System, Light, Dark };

/// How all windows of the program look: the theme, which the system's colours choose until the user does, the colour of
/// rising bars, and the application's palette, so that menus and dialogs look like the chart. Changes are remembered.
class Appearance : public QObject {
    Q_OBJECT

public:
    /// The application's, made on first use and gone with it.
    static Appearance& shared();

    [[nodiscard]] ThemeChoice choice() const { return choice_; }
    void choose(ThemeChoice choice);
    /// From dark to light or back.
    void toggle();
    /// Chooses for this run alone: nothing is remembered.
    void pin(ThemeChoice choice);

    [[nodiscard]] static bool greenRises();
    void setGreenRises(bool greenRises);

    /// Takes what was remembered, the system's colours if nothing was.
    void restore();
    /// Goes over to the system's colours if they choose the theme. A window calls it when they changed.
    void followSystem();

    /// Asks `isDark` in place of the desktop whether its colours are dark.
    void setSystem(std::function<bool()> isDark) { isSystemDark_ = std::move(isDark); }

Q_SIGNALS:
    void changed();

private:
    explicit Appearance(QObject* parent);
    void applyTheme();

    std::function<bool()> isSystemDark_;
    ThemeChoice choice_ = ThemeChoice::Light;
    QZObservation observation_;
};
