#include "PobblewigLinux/x11/X11FrontWindow.h"

#include "PobblewigLinux/x11/X11WindowTree.h"

#include <QCoreApplication>

namespace pobblewig {

X11FrontWindow::X11FrontWindow(X11Connection& connection)
    : m_connection(connection)
{
    remember(active());
    // Qt itself subscribes to the root window's property changes.
    QCoreApplication::instance()->installNativeEventFilter(this);
}

std::optional<xcb_window_t> X11FrontWindow::window()
{
    const auto now = active();
    if (now == XCB_WINDOW_NONE)
        return std::nullopt;
    remember(now);
    if (!X11WindowTree::isOnScreen(m_connection, m_last)
        || X11WindowTree::isDesktop(m_connection, m_last))
        return std::nullopt;
    return m_last;
}

bool X11FrontWindow::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "xcb_generic_event_t")
        return false;
    constexpr int sentByProgram = 0x80;
    const auto* event = static_cast<xcb_generic_event_t*>(message);
    if ((event->response_type & ~sentByProgram) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto* notice = static_cast<xcb_property_notify_event_t*>(message);
    if (notice->window == m_connection.root()
        && notice->atom == m_connection.atom("_NET_ACTIVE_WINDOW"))
        remember(active());
    return false;
}

xcb_window_t X11FrontWindow::active()
{
    const auto windows = m_connection.values(m_connection.root(), "_NET_ACTIVE_WINDOW");
    return windows.empty() ? XCB_WINDOW_NONE : windows.front();
}

void X11FrontWindow::remember(xcb_window_t active)
{
    if (active != XCB_WINDOW_NONE && !X11WindowTree::isOurs(m_connection, active))
        m_last = active;
}

} // namespace pobblewig
