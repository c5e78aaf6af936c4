#include "settings/ThemePreference.h"

#include "foundation/EnumNames.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

constexpr std::array names {
    QT_TRANSLATE_NOOP("ThemePreference", "Same as the system"),
    QT_TRANSLATE_NOOP("ThemePreference", "Light"),
    QT_TRANSLATE_NOOP("ThemePreference", "Dark"),
};

} // namespace

ThemePreference themePreference(const QString& name)
{
    return EnumNames::fromName<ThemePreference>(name.toStdString())
        .value_or(ThemePreference::system);
}

QString displayName(ThemePreference preference)
{
    return QCoreApplication::translate("ThemePreference", names[size_t(preference)]);
}

} // namespace pobblewig
