#include "PobblewigLinux/x11/X11Connection.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

namespace pobblewig {

std::unique_ptr<X11Connection> X11Connection::create()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return nullptr;
    return std::unique_ptr<X11Connection>(new X11Connection(x11->connection()));
}

std::unique_ptr<X11Connection> X11Connection::open(const std::string& display)
{
    OwnConnection own(xcb_connect(display.c_str(), nullptr));
    if (xcb_connection_has_error(own.get()))
        return nullptr;
    std::unique_ptr<X11Connection> connection(new X11Connection(own.get()));
    connection->m_own = std::move(own);
    return connection;
}

X11Connection::X11Connection(xcb_connection_t* connection)
    : m_connection(connection)
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
{
}

xcb_atom_t X11Connection::atom(const std::string& name)
{
    if (const auto known = m_atoms.find(name); known != m_atoms.end())
        return known->second;
    const auto cookie =
        xcb_intern_atom(m_connection, false, std::uint16_t(name.size()), name.data());
    const X11Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return m_atoms[name] = reply ? reply->atom : XCB_ATOM_NONE;
}

std::vector<std::uint32_t> X11Connection::values(xcb_window_t window, const std::string& property)
{
    return values(ask(window, property));
}

xcb_get_property_cookie_t X11Connection::ask(xcb_window_t window, const std::string& property)
{
    constexpr std::uint32_t longest = 4096;
    return xcb_get_property(m_connection, false, window, atom(property), XCB_ATOM_ANY, 0, longest);
}

std::vector<std::uint32_t> X11Connection::values(xcb_get_property_cookie_t question) const
{
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, question, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<std::uint32_t*>(xcb_get_property_value(reply.get()));
    return { first, first + reply->value_len };
}

bool X11Connection::isOwned(xcb_atom_t selection) const
{
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void X11Connection::setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
    const std::vector<std::uint32_t>& values)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
        std::uint32_t(values.size()), values.data());
}

} // namespace pobblewig
