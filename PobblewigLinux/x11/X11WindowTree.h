#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QRegion>
#include <QString>

#include <optional>

namespace pobblewig {

/// A child of the root window: what users regard as a window, including its title bar, or a menu.
struct X11TopLevel {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// The program's own window, which is inside the frame of the window manager if there is one.
    xcb_window_t client = XCB_WINDOW_NONE;
    /// In screen coordinates, including the X border.
    QRect frame;
    int border = 0;
    int depth = 0;
    /// The part that exists, relative to the frame.
    QRegion shape;

    bool isOpaque() const;
};

/// A window inside another one, at any depth.
struct X11Inside {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// The position of its corner on the screen.
    QPoint origin;
};

/// Queries the windows on the screen of an X server. A window that goes in the meantime is left
/// out.
namespace X11WindowTree {

/// The window below all others, as large as the screen.
X11TopLevel rootWindow(X11Connection& connection);

/// The mapped windows, from the bottom up.
std::vector<X11TopLevel> topLevels(X11Connection& connection);

/// The window and all windows inside it.
std::vector<X11Inside> withDescendants(X11Connection& connection, xcb_window_t window);

bool isOnScreen(X11Connection& connection, xcb_window_t window);

/// The area of the program's own window on the screen, without the shadow that it draws itself.
std::optional<QRect> content(X11Connection& connection, xcb_window_t client);

QString title(X11Connection& connection, xcb_window_t client);

/// Whether the window is the desktop, with its icons.
bool isDesktop(X11Connection& connection, xcb_window_t client);

std::optional<std::uint32_t> processID(X11Connection& connection, xcb_window_t client);

/// Identifies a program: all windows of one connection to the server have the same value.
std::uint32_t connectionOf(X11Connection& connection, xcb_window_t window);

/// Whether this process created the window.
bool isOurs(X11Connection& connection, xcb_window_t window);

} // namespace X11WindowTree

} // namespace pobblewig
