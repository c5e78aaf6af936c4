#include "PobblewigLinux/x11/X11BuddyWindowSystem.h"

#include "PobblewigLinux/x11/X11Occlusion.h"

#include <algorithm>
#include <iterator>

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
    , m_compositor(connection, "_NET_WM_CM_S0", [this] { applyShapeAtOnce(); })
{
}

void X11BuddyWindowSystem::accompanyUser(WindowID window)
{
    const auto id = xcb_window_t(window);
    constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
    m_connection.setValues(id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, { allDesktops });

    // The feet stay in the middle of the lower edge, so what is visible there is kept when the size
    // changes.
    constexpr std::uint32_t gravity = XCB_GRAVITY_SOUTH;
    xcb_change_window_attributes(m_connection.get(), id, XCB_CW_BIT_GRAVITY, &gravity);

    std::vector<std::uint32_t> states;
    for (const auto* state : { "ABOVE", "SKIP_PAGER", "SKIP_TASKBAR", "STICKY" })
        states.push_back(m_connection.atom(std::string("_NET_WM_STATE_") + state));
    m_connection.setValues(id, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
}

void X11BuddyWindowSystem::setShape(WindowID window, const BuddyShape& shape)
{
    const auto id = xcb_window_t(window);
    const auto isKnown = id == m_window && shape.pressable == m_shape.pressable
        && (m_compositor.isOwned() || shape.seen == m_shape.seen);
    m_window = id;
    m_shape = shape;
    if (!isKnown)
        applyShape();
}

bool X11BuddyWindowSystem::isCovered(WindowID window)
{
    return X11Occlusion::isCovered(m_connection, xcb_window_t(window));
}

void X11BuddyWindowSystem::watchFullScreen(std::function<void()> changed)
{
    m_fullScreenWatch.reset();
    if (changed)
        m_fullScreenWatch.emplace(m_connection, std::move(changed));
}

bool X11BuddyWindowSystem::isFullScreenInFront(const QRect& screen)
{
    return BuddySight::isFullScreenInFront(X11FullScreenWatch::windows(m_connection), screen);
}

void X11BuddyWindowSystem::applyShape()
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    m_rectangles.clear();
    std::ranges::transform(m_shape.pressable, std::back_inserter(m_rectangles), rectangle);
    const auto pressable = m_rectangles.size();
    std::ranges::transform(m_shape.seen, std::back_inserter(m_rectangles), rectangle);
    if (m_compositor.isOwned())
        clearBounds();
    else
        cut(XCB_SHAPE_SK_BOUNDING, m_rectangles.size());
    cut(XCB_SHAPE_SK_INPUT, pressable);
}

void X11BuddyWindowSystem::applyShapeAtOnce()
{
    applyShape();
    xcb_flush(m_connection.get());
}

void X11BuddyWindowSystem::cut(xcb_shape_kind_t kind, size_t rectangles)
{
    xcb_shape_rectangles(m_connection.get(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED,
        m_window, 0, 0, std::uint32_t(rectangles), m_rectangles.data());
}

void X11BuddyWindowSystem::clearBounds()
{
    xcb_shape_mask(m_connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, m_window, 0, 0,
        XCB_PIXMAP_NONE);
}

} // namespace pobblewig
