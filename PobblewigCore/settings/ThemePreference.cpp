#include "settings/ThemePreference.h"

#include "foundation/EnumNames.h"

namespace pobblewig {

ThemePreference themePreference(const QString& name)
{
    return EnumNames::fromName<ThemePreference>(name.toStdString())
        .value_or(ThemePreference::system);
}

} // namespace pobblewig
