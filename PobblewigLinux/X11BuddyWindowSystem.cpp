#include "PobblewigLinux/X11BuddyWindowSystem.h"

#include "PobblewigLinux/X11Occlusion.h"

#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace pobblewig {

namespace {

xcb_rectangle_t rectangle(const QRect& rect)
{
    return { .x = std::int16_t(rect.x()),
        .y = std::int16_t(rect.y()),
        .width = std::uint16_t(rect.width()),
        .height = std::uint16_t(rect.height()) };
}

} // namespace

X11BuddyWindowSystem::X11BuddyWindowSystem(X11Connection& connection)
    : m_connection(connection)
    , m_compositor(connection, "_NET_WM_CM_S0", [this] { applyShape(); })
{
}

void X11BuddyWindowSystem::accompanyUser(WindowID window)
{
    const auto id = xcb_window_t(window);
    constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
    m_connection.setValues(id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, { allDesktops });

    std::vector<std::uint32_t> states;
    for (const auto* state : { "ABOVE", "SKIP_PAGER", "SKIP_TASKBAR", "STICKY" })
        states.push_back(m_connection.atom(std::string("_NET_WM_STATE_") + state));
    m_connection.setValues(id, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
}

void X11BuddyWindowSystem::setShape(WindowID window, const BuddyShape& shape)
{
    m_window = xcb_window_t(window);
    m_parts.clear();
    for (const auto& part : shape.pressable)
        m_parts.push_back(rectangle(part));
    m_pressableParts = m_parts.size();
    for (const auto& part : shape.seen)
        m_parts.push_back(rectangle(part));
    applyShape();
}

bool X11BuddyWindowSystem::isCovered(WindowID window)
{
    return X11Occlusion::isCovered(m_connection, xcb_window_t(window));
}

void X11BuddyWindowSystem::applyShape()
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    auto* connection = m_connection.get();
    const auto set = [&](xcb_shape_kind_t kind, xcb_xfixes_region_t region) {
        xcb_xfixes_set_window_shape_region(connection, m_window, kind, 0, 0, region);
    };
    const auto region = xcb_generate_id(connection);
    const auto setTo = [&](xcb_shape_kind_t kind, size_t parts) {
        xcb_xfixes_set_region(connection, region, std::uint32_t(parts), m_parts.data());
        set(kind, region);
    };
    xcb_xfixes_create_region(connection, region, 0, nullptr);
    if (m_compositor.isOwned())
        set(XCB_SHAPE_SK_BOUNDING, XCB_NONE);
    else
        setTo(XCB_SHAPE_SK_BOUNDING, m_parts.size());
    setTo(XCB_SHAPE_SK_INPUT, m_pressableParts);
    xcb_xfixes_destroy_region(connection, region);
    xcb_flush(connection);
}

} // namespace pobblewig
