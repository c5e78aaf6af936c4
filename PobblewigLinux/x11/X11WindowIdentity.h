#pragma once

#include "PobblewigLinux/desktop/WindowIdentity.h"
#include "PobblewigLinux/x11/X11Connection.h"

#include <span>

namespace pobblewig::X11WindowIdentity {

/// The identity of each of these windows, in order, in one round trip. A window that has gone has
/// an empty identity.
///
/// The process id is not used, since in a sandbox it is that of a different process outside.
std::vector<WindowIdentity> identities(
    X11Connection& connection, std::span<const xcb_window_t> windows);

} // namespace pobblewig::X11WindowIdentity
