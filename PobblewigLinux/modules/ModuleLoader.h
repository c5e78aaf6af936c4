#pragma once

#include <QObject>
#include <QStringList>

#include <tl/expected.hpp>

namespace pobblewig {

/// Finds what stands in modules beside the program and is loaded at its first use.
///
/// A module is a Qt plugin named after the one interface of its root object. It stays loaded for
/// the rest of the process.
class ModuleLoader {
public:
    /// The first directory that has a module of a name decides.
    explicit ModuleLoader(QStringList directories = standardDirectories());

    /// Where modules are built, and where they are installed.
    static QStringList standardDirectories();

    /// The same object each time. A sentence for the user if there is none; nothing runs of a file
    /// that does not claim to have this interface.
    template <typename Interface>
    tl::expected<Interface*, QString> load(const QString& name) const
    {
        const auto identifier = QLatin1String(qobject_interface_iid<Interface*>());
        return root(name, identifier).map([](QObject* root) {
            return qobject_cast<Interface*>(root);
        });
    }

private:
    tl::expected<QObject*, QString> root(const QString& name, QLatin1String interface) const;

    QStringList m_directories;
};

} // namespace pobblewig
