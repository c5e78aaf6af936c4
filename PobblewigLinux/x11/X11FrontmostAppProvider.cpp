#include "PobblewigLinux/x11/X11FrontmostAppProvider.h"

#include "PobblewigLinux/x11/X11WindowIdentity.h"

#include <xcb/screensaver.h>

namespace pobblewig {

bool X11FrontmostAppProvider::tellsIdleTime(X11Connection& connection)
{
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_screensaver_id);
    return extension && extension->present;
}

X11FrontmostAppProvider::X11FrontmostAppProvider(X11Connection& connection, ApplicationNames& names)
    : m_connection(connection)
    , m_names(names)
    , m_tellsIdleTime(tellsIdleTime(connection))
{
}

std::optional<FrontmostApp> X11FrontmostAppProvider::frontmostApp()
{
    const auto active = m_connection.values(m_connection.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == XCB_WINDOW_NONE)
        return std::nullopt;
    const auto window = std::span(active).first(1);
    return m_names.application(X11WindowIdentity::identities(m_connection, window).front());
}

double X11FrontmostAppProvider::idleSeconds()
{
    if (!m_tellsIdleTime)
        return 0;
    auto* x11 = m_connection.get();
    const X11Reply<xcb_screensaver_query_info_reply_t> reply(xcb_screensaver_query_info_reply(
        x11, xcb_screensaver_query_info(x11, m_connection.root()), nullptr));
    constexpr double millisecondsPerSecond = 1000;
    return reply ? reply->ms_since_user_input / millisecondsPerSecond : 0;
}

} // namespace pobblewig
