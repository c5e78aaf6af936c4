#pragma once

#include "screen/PermissionProviding.h"

#include <QDBusConnection>
#include <QObject>

namespace pobblewig {

/// What a Linux session lets every program do. X11 asks nobody; on Wayland the desktop portal asks
/// the user for each picture, and windows cannot be observed by right.
class SessionPermissions : public QObject, public PermissionProviding {
public:
    enum class Session { x11, wayland };

    /// Whether the bus has a portal is known a moment later, and until then not granted.
    SessionPermissions(Session session, QDBusConnection bus);

    bool screenCaptureGranted() override;
    Task<bool> requestScreenCapture() override;
    bool accessibilityGranted() override;

    /// On Wayland under GNOME, which has such a page.
    void openScreenCaptureSettings() override;

private:
    void lookForPortal(const QString& listing);

    Session m_session;
    QDBusConnection m_bus;
    bool m_hasPortal = false;
};

} // namespace pobblewig
