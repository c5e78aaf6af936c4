#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QRegion>
#include <QString>

#include <optional>

namespace pobblewig {

/// A child of the root window: what the user takes for a window, its title bar included, or a menu.
struct X11TopLevel {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// The program's own window: inside, where a window manager has framed it, or the same one.
    xcb_window_t client = XCB_WINDOW_NONE;
    /// On the screen, the X border included.
    QRect frame;
    int border = 0;
    int depth = 0;
    /// Relative to the frame: the part that is there at all.
    QRegion shape;

    bool isOpaque() const;
};

/// A window somewhere inside another.
struct X11Inside {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// Its corner on the screen.
    QPoint origin;
};

/// What is on the screen of an X server. A window that goes meanwhile is simply not among the
/// answers.
namespace X11WindowTree {

/// What everything else lies on, as large as the screen.
X11TopLevel rootWindow(X11Connection& connection);

/// The mapped ones, from the bottom up.
std::vector<X11TopLevel> topLevels(X11Connection& connection);

/// The window itself and all that are inside it.
std::vector<X11Inside> withDescendants(X11Connection& connection, xcb_window_t window);

bool isOnScreen(X11Connection& connection, xcb_window_t window);

/// Where the program's own window is on the screen, without the shadow that it draws around itself.
std::optional<QRect> content(X11Connection& connection, xcb_window_t client);

QString title(X11Connection& connection, xcb_window_t client);

/// Whether the window is the desktop's background, with its icons.
bool isDesktop(X11Connection& connection, xcb_window_t client);

std::optional<std::uint32_t> processID(X11Connection& connection, xcb_window_t client);

/// Tells programs apart: every window of one connection to the server yields the same.
std::uint32_t connectionOf(X11Connection& connection, xcb_window_t window);

/// Whether this process has made the window.
bool isOurs(X11Connection& connection, xcb_window_t window);

} // namespace X11WindowTree

} // namespace pobblewig
