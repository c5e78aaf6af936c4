#pragma once

#include <QString>

namespace pobblewig {

enum class ThemePreference { system, light, dark };

/// An unknown stored name gives the system's theme.
ThemePreference themePreference(const QString& name);

/// The name for the user.
QString displayName(ThemePreference preference);

} // namespace pobblewig
