#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QAbstractNativeEventFilter>

#include <optional>

namespace pobblewig {

/// The window that the user works with: the active one or, while that is one of ours, the window
/// that was active before.
class X11FrontWindow : public QAbstractNativeEventFilter {
public:
    explicit X11FrontWindow(X11Connection& connection);

    /// Returns nothing if no window has the focus, if it is not on the screen, or if it is the
    /// desktop.
    std::optional<xcb_window_t> window();

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    xcb_window_t active();
    void remember(xcb_window_t active);

    X11Connection& m_connection;
    xcb_window_t m_last = XCB_WINDOW_NONE;
};

} // namespace pobblewig
