#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

namespace pobblewig::X11Occlusion {

/// Whether a window is minimised, unmapped or wholly under windows that one cannot see through.
///
/// The server's own notice of this does not come for see-through windows, so it is worked out from
/// the window manager's stacking list.
bool isCovered(X11Connection& connection, xcb_window_t window);

} // namespace pobblewig::X11Occlusion
