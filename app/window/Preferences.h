#pragma once

#include <QVariant>

class QAction;
class QString;

/// What the program remembers from one start to the next. Nothing is read or written before keepIn().
namespace Preferences {

inline constexpr char theme[] = "view/theme"; ///< "light", "dark" or "system"
inline constexpr char greenRises[] = "view/greenRises";
inline constexpr char logarithmic[] = "view/logarithmic";
inline constexpr char geometry[] = "window/geometry"; ///< of the window that was closed last
inline constexpr char docks[] = "window/docks";
inline constexpr char period[] = "chart/period"; ///< that the user chose last, by its name
inline constexpr char listed[] = "files/listed"; ///< files and folders of the watch list
inline constexpr char shown[] = "files/shown";

/// Keeps everything in a settings file from now on; an empty name stops it.
void keepIn(const QString& file);
/// Invalid when nothing was remembered.
QVariant value(const char* key);
void setValue(const char* key, const QVariant& value);
/// Switches a checkable action to what the user last made of it, and follows it.
void follow(QAction& action, const QByteArray& key);

} // namespace Preferences
