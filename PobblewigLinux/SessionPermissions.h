#pragma once

#include "screen/PermissionProviding.h"

#include <QDBusConnection>
#include <QObject>

namespace pobblewig {

/// What a Linux session permits programs to do. X11 needs no permission. On Wayland the desktop
/// portal asks the user for each picture, and there is no permission to observe windows.
class SessionPermissions : public QObject, public PermissionProviding {
public:
    enum class Session { x11, wayland };

    /// Whether the bus has a portal is known shortly afterwards; until then capture is not granted.
    SessionPermissions(Session session, QDBusConnection bus);

    bool screenCaptureGranted() override;
    Task<bool> requestScreenCapture() override;
    bool accessibilityGranted() override;

    /// Opens the page on Wayland under GNOME, which has one.
    void openScreenCaptureSettings() override;

private:
    void lookForPortal(const QString& listing);

    Session m_session;
    QDBusConnection m_bus;
    bool m_hasPortal = false;
};

} // namespace pobblewig
