#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <string_view>

namespace pobblewig {

/// Another X client that announces a service of the desktop, such as a compositor, for as long as
/// this object lives.
class SelectionOwner {
public:
    explicit SelectionOwner(std::string_view selection)
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const auto window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
            XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto cookie =
            xcb_intern_atom(m_connection, false, std::uint16_t(selection.size()), selection.data());
        auto* atom = xcb_intern_atom_reply(m_connection, cookie, nullptr);
        xcb_set_selection_owner(m_connection, window, atom->atom, XCB_CURRENT_TIME);
        std::free(atom);
        xcb_flush(m_connection);
    }

    ~SelectionOwner() { xcb_disconnect(m_connection); }
    SelectionOwner(const SelectionOwner&) = delete;
    SelectionOwner& operator=(const SelectionOwner&) = delete;

private:
    xcb_connection_t* m_connection;
};

} // namespace pobblewig
