#include "PobblewigLinux/wayland/WaylandIdleTime.h"

#include <ext-idle-notify-client-header.h>

namespace pobblewig {

namespace {

constexpr ext_idle_notification_v1_listener listener {
    .idled = [](void* clock, auto*) { static_cast<IdleClock*>(clock)->begin(); },
    .resumed = [](void* clock, auto*) { static_cast<IdleClock*>(clock)->end(); },
};

} // namespace

bool WaylandIdleTime::isOffered(const WaylandConnection& connection)
{
    return connection.offers(ext_idle_notifier_v1_interface)
        && connection.offers(wl_seat_interface);
}

WaylandIdleTime::WaylandIdleTime(WaylandConnection& connection, Clock now)
    : m_connection(connection)
    , m_clock(std::move(now))
    , m_seat(connection.bind<wl_seat>(wl_seat_interface))
    , m_notifier(connection.bind<ext_idle_notifier_v1>(ext_idle_notifier_v1_interface))
{
    constexpr std::chrono::milliseconds announcedAfter = IdleClock::announcedAfter;
    m_notification.reset(ext_idle_notifier_v1_get_idle_notification(
        m_notifier.get(), std::uint32_t(announcedAfter.count()), m_seat.get()));
    ext_idle_notification_v1_add_listener(m_notification.get(), &listener, &m_clock);
    connection.flush();
}

double WaylandIdleTime::idleSeconds()
{
    return m_connection.isAlive() ? m_clock.seconds() : 0;
}

} // namespace pobblewig
