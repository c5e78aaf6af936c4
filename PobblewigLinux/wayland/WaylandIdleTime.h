#pragma once

#include "PobblewigLinux/desktop/IdleClock.h"
#include "PobblewigLinux/desktop/IdleTimeProviding.h"
#include "PobblewigLinux/wayland/WaylandConnection.h"

struct ext_idle_notification_v1;
struct ext_idle_notifier_v1;

namespace pobblewig {

/// The idle time of the seat, as announced by the compositor. Playing films delay it, as they delay
/// the screen lock.
class WaylandIdleTime : public IdleTimeProviding {
public:
    static bool isOffered(const WaylandConnection& connection);

    /// The compositor must offer it.
    WaylandIdleTime(WaylandConnection& connection, Clock now);

    double idleSeconds() override;

private:
    WaylandConnection& m_connection;
    IdleClock m_clock;
    WaylandProxy<wl_seat> m_seat;
    WaylandProxy<ext_idle_notifier_v1> m_notifier;
    WaylandProxy<ext_idle_notification_v1> m_notification;
};

} // namespace pobblewig
