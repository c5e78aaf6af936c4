#pragma once

#include <QString>

namespace pobblewig {

enum class ThemePreference { system, light, dark };

/// A stored name that is unknown stands for the system's theme.
ThemePreference themePreference(const QString& name);

/// For the user.
QString displayName(ThemePreference preference);

} // namespace pobblewig
