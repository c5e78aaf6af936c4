#pragma once

#include <QDBusArgument>
#include <QVariantMap>

namespace pobblewig {

/// A hot key as exchanged with the desktop portal.
struct PortalShortcut {
    QString id;
    QVariantMap options;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.options;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.options;
    argument.endStructure();
    return argument;
}

} // namespace pobblewig

Q_DECLARE_METATYPE(pobblewig::PortalShortcut)
