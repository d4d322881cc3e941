#pragma once

#include <QLatin1StringView>

/// What the host application tells everybody. The first three are posted by QZGlobalEnv.
inline constexpr QLatin1StringView QZUIOverallStyleDidChangeNotification("QZUIOverallStyleDidChangeNotification");
/// The old user is still the current one.
inline constexpr QLatin1StringView QZLoginUserWillChangeNotification("QZLoginUserWillChangeNotification");
/// The new user is in place.
inline constexpr QLatin1StringView QZUserNameChangedNotification("QZUserNameChangedNotification");
inline constexpr QLatin1StringView QZApplicationShouldTerminate("QZApplicationShouldTerminate");
