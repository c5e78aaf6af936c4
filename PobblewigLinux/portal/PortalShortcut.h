#pragma once

#include <QDBusArgument>
#include <QVariantMap>

namespace pobblewig {

/// A hot key on its way to the desktop portal and back.
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
