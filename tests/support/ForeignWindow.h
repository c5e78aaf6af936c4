#pragma once

#include <xcb/xcb.h>

#include <QRect>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace pobblewig {

/// A window of one colour that belongs to another program: to one of its own, or to that of
/// another such window.
class ForeignWindow {
public:
    /// `silent` does not want the keyboard; `unpainted` shows nothing until `paint`.
    enum class Kind { managed, silent, unpainted, menu };

    ForeignWindow(std::string_view title, const QRect& place, std::uint32_t color,
        Kind kind = Kind::managed, const ForeignWindow* owner = nullptr)
        : m_ownConnection(owner ? nullptr : xcb_connect(nullptr, nullptr))
        , m_connection(owner ? owner->m_connection : m_ownConnection)
        , m_id(freshID(m_connection))
    {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const auto isPainted = kind != Kind::unpainted;
        const std::uint32_t values[] = { isPainted ? color : XCB_BACK_PIXMAP_NONE,
            kind == Kind::menu, XCB_EVENT_MASK_EXPOSURE };
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_id, screen->root,
            std::int16_t(place.x()), std::int16_t(place.y()), std::uint16_t(place.width()),
            std::uint16_t(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
            (isPainted ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_OVERRIDE_REDIRECT
                | XCB_CW_EVENT_MASK,
            values);
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_id, XCB_ATOM_WM_NAME,
            XCB_ATOM_STRING, 8, std::uint32_t(title.size()), title.data());
        // The place is the user's wish: no window manager knows better.
        const std::uint32_t hints[18] = { 1 };
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_id, XCB_ATOM_WM_NORMAL_HINTS,
            XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
        const std::uint32_t input[9] = { 1, kind != Kind::silent };
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_id, XCB_ATOM_WM_HINTS,
            XCB_ATOM_WM_HINTS, 32, 9, input);
        xcb_map_window(m_connection, m_id);
        xcb_flush(m_connection);
    }

    ~ForeignWindow()
    {
        destroy();
        if (m_ownConnection)
            xcb_disconnect(m_ownConnection);
    }
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    xcb_window_t id() const { return m_id; }

    void raise() const
    {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection, m_id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        settle();
    }

    void hide() const
    {
        xcb_unmap_window(m_connection, m_id);
        settle();
    }

    void destroy() const
    {
        xcb_destroy_window(m_connection, m_id);
        settle();
    }

    void paint(std::uint32_t color) const
    {
        const auto context = xcb_generate_id(m_connection);
        xcb_create_gc(m_connection, context, m_id, XCB_GC_FOREGROUND, &color);
        const xcb_rectangle_t everything { 0, 0, 0x7fff, 0x7fff };
        xcb_poly_fill_rectangle(m_connection, m_id, context, 1, &everything);
        xcb_free_gc(m_connection, context);
        settle();
    }

private:
    /// The next connection would get the same numbers, and a window manager is slow to forget.
    static xcb_window_t freshID(xcb_connection_t* connection)
    {
        static int used = 0;
        for (int number = ++used; number > 0; --number)
            xcb_generate_id(connection);
        return xcb_generate_id(connection);
    }

    /// Returns once the server has done all that was asked.
    void settle() const
    {
        std::free(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t* m_ownConnection;
    xcb_connection_t* m_connection;
    xcb_window_t m_id;
};

} // namespace pobblewig
