#include "app/window/Preferences.h"

#include <QAction>
#include <QSettings>

#include <memory>

namespace {

std::unique_ptr<QSettings>& settings()
{
    static std::unique_ptr<QSettings> kept;
    return kept;
}

} // namespace

void Preferences::keepIn(const QString& file)
{
    settings() = file.isEmpty() ? nullptr : std::make_unique<QSettings>(file, QSettings::IniFormat);
}

QVariant Preferences::value(const char* key)
{
    return settings() ? settings()->value(QLatin1String(key)) : QVariant();
}

void Preferences::setValue(const char* key, const QVariant& value)
{
    if (settings())
        settings()->setValue(QLatin1String(key), value);
}

void Preferences::follow(QAction& action, const QByteArray& key)
{
    if (const QVariant last = value(key); last.isValid())
        action.setChecked(last.toBool());
    QObject::connect(&action, &QAction::toggled, &action, [key](bool isOn) { setValue(key, isOn); });
}
