#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <set>

namespace pobblewig {

/// The applications that are neither watched nor in a picture of the screen.
class ExcludedApps {
public:
    /// The identifier of the application that is known by this name, or nothing for a name that
    /// the platform does not know.
    using IdentifierOf = std::function<std::optional<QString>(const QString& name)>;

    /// Each application can be given by any of its names.
    ExcludedApps(const std::set<QString>& names, const IdentifierOf& identifierOf);

    /// Ignores case.
    bool contains(const QString& identifier) const;

private:
    /// In lower case.
    std::set<QString> m_identifiers;
};

} // namespace pobblewig
