#include "settings/ExcludedApps.h"

namespace pobblewig {

ExcludedApps::ExcludedApps(const std::set<QString>& names, const IdentifierOf& identifierOf)
{
    for (const auto& entry : names) {
        const auto name = entry.trimmed();
        m_identifiers.insert(name.toLower());
        if (const auto identifier = identifierOf ? identifierOf(name) : std::nullopt)
            m_identifiers.insert(identifier->toLower());
    }
}

bool ExcludedApps::contains(const QString& identifier) const
{
    return m_identifiers.contains(identifier.toLower());
}

} // namespace pobblewig
