#pragma once

#include "PobblewigLinux/SessionObservationLogic.h"
#include "PobblewigLinux/desktop/ApplicationNames.h"
#include "PobblewigLinux/wayland/WaylandCompositor.h"
#include "PobblewigLinux/x11/X11Connection.h"
#include "foundation/Time.h"
#include "settings/Environment.h"

#include <QDBusConnection>

namespace pobblewig {

/// Observes which application is in front and how long the user has been idle, by the means of the
/// current session.
class SessionObservation {
public:
    /// `x11` may be null; otherwise it must outlive this object. Asks the compositor and the bus
    /// what they offer, which takes a few milliseconds.
    SessionObservation(X11Connection* x11, const Environment& environment,
        const QDBusConnection& bus = QDBusConnection::sessionBus(), Clock now = systemNow);

    FrontmostAppProviding& provider() { return *m_provider; }
    ApplicationNames& names() { return m_names; }

    const ObservationReport& report() const { return m_report; }
    bool isWayland() const { return m_isWayland; }

private:
    bool m_isWayland;
    ApplicationNames m_names;
    std::unique_ptr<WaylandCompositor> m_wayland;
    ObservationReport m_report;
    std::unique_ptr<FrontmostAppProviding> m_provider;
};

} // namespace pobblewig
