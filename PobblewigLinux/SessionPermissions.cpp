#include "PobblewigLinux/SessionPermissions.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QProcess>

namespace pobblewig {

SessionPermissions::SessionPermissions(Session session, QDBusConnection bus)
    : m_session(session)
    , m_bus(std::move(bus))
{
    if (m_session == Session::x11)
        return;
    lookForPortal(QStringLiteral("ListNames"));
    lookForPortal(QStringLiteral("ListActivatableNames"));
}

bool SessionPermissions::screenCaptureGranted()
{
    return m_session == Session::x11 || m_hasPortal;
}

Task<bool> SessionPermissions::requestScreenCapture()
{
    co_return screenCaptureGranted();
}

bool SessionPermissions::accessibilityGranted()
{
    return m_session == Session::x11;
}

void SessionPermissions::openScreenCaptureSettings()
{
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    if (m_session == Session::wayland && desktops.contains(QStringLiteral("GNOME")))
        QProcess::startDetached(
            QStringLiteral("gnome-control-center"), { QStringLiteral("applications") });
}

void SessionPermissions::lookForPortal(const QString& listing)
{
    const auto service = QStringLiteral("org.freedesktop.DBus");
    const auto message = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/DBus"), service, listing);
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QStringList> names = *call;
        m_hasPortal = m_hasPortal
            || (names.isValid()
                && names.value().contains(QStringLiteral("org.freedesktop.portal.Desktop")));
        call->deleteLater();
    });
}

} // namespace pobblewig
