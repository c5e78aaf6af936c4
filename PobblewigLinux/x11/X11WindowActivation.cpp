#include "PobblewigLinux/x11/X11WindowActivation.h"

namespace pobblewig {

X11WindowActivation::X11WindowActivation(X11Connection& connection)
    : m_connection(connection)
{
}

void X11WindowActivation::activate(quintptr window)
{
    constexpr std::uint32_t forTheUser = 2;
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window);
    message.type = m_connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = forTheUser;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_connection.get(), false, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection.get());
}

} // namespace pobblewig
