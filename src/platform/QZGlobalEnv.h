#pragma once

#include "platform/QZHostNotifications.h"
#include "platform/QZPaletteLoad.h"

#include <QHash>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWindow>

/// The application's shared environment: theme, main window, context flags and login user. Main thread only.
class QZGlobalEnv {
public:
    static QZGlobalEnv& getShareInstance();

    /// The palette of the current theme, the light one at first.
    QZPaletteLoad& paletteLoad() { return palette_; }

    /// The host's main window, borrowed; nullptr once it is destroyed.
    void setMainWindow(QWindow* window) { mainWindow_ = window; }
    QWindow* mainWindow() const { return mainWindow_.data(); }

    /// Flags by which the library and the host tell each other what is going on; an invalid value forgets the flag.
    void setGlobalContext(const QString& key, const QString& subKey, const QVariant& contextData);
    /// Invalid when the flag was never set.
    QVariant globalContext(const QString& key, const QString& subKey) const;

    QString loginUser() const { return loginUser_; }
    /// Posts "QZLoginUserWillChangeNotification" while the old user is still the current one and
    /// "QZUserNameChangedNotification" when the new one is; nothing when it is the same user.
    void setLoginUser(const QString& user);

    /// Loads the theme ":/qz/themes/<name>.json" ("light" and "dark" ship with the library, a host may add its own) and
    /// posts "QZUIOverallStyleDidChangeNotification". On failure logs why, keeps the present theme and returns false.
    bool setTheme(const QString& name);
    /// The same for a theme file of the host's.
    bool setThemeFile(const QString& jsonPath);
    /// The name that the loaded theme gives itself.
    QString themeName() const { return palette_.name(); }

private:
    QZGlobalEnv();
    bool loadTheme(const QString& jsonPath);

    QZPaletteLoad palette_;
    QPointer<QWindow> mainWindow_;
    QHash<QPair<QString, QString>, QVariant> context_;
    QString loginUser_;
};
