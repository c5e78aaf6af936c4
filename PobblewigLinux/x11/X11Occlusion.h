#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

namespace pobblewig::X11Occlusion {

/// Whether a window is minimised, unmapped or entirely covered by opaque windows.
///
/// The server sends no visibility events for translucent windows, so this is derived from the
/// window manager's stacking list.
bool isCovered(X11Connection& connection, xcb_window_t window);

} // namespace pobblewig::X11Occlusion
