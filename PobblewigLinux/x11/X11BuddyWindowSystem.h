#pragma once

#include "PobblewigLinux/x11/X11FullScreenWatch.h"
#include "PobblewigLinux/x11/X11SelectionWatch.h"
#include "buddy/BuddyWindowSystem.h"

#include <xcb/shape.h>

namespace pobblewig {

/// The buddy's window under X11, with any window manager that follows EWMH.
///
/// With a compositor only the input region is shaped, and the picture may be translucent; without
/// one the window itself is cut to its shape. A compositor may start or stop at any time.
class X11BuddyWindowSystem : public BuddyWindowSystem {
public:
    explicit X11BuddyWindowSystem(X11Connection& connection);

    void accompanyUser(WindowID window) override;
    void setShape(WindowID window, const BuddyShape& shape) override;
    bool canBlend() const override { return m_compositor.isOwned(); }
    bool isCovered(WindowID window) override;
    void watchFullScreen(std::function<void()> changed) override;
    bool isFullScreenInFront(const QRect& screen) override;

private:
    /// Applied by the server together with the next picture, so that neither is seen without the
    /// other.
    void applyShape();
    void applyShapeAtOnce();

    /// Cuts to the first of the rectangles.
    void cut(xcb_shape_kind_t kind, size_t rectangles);
    void clearBounds();

    X11Connection& m_connection;
    X11SelectionWatch m_compositor;
    std::optional<X11FullScreenWatch> m_fullScreenWatch;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    BuddyShape m_shape;
    std::vector<xcb_rectangle_t> m_rectangles;
};

} // namespace pobblewig
