#pragma once

#include "PobblewigLinux/desktop/WindowIdentity.h"
#include "PobblewigLinux/x11/X11Connection.h"

#include <span>

namespace pobblewig::X11WindowIdentity {

/// What each of these windows says of its application, in their order, for one round trip. A window
/// that has gone says nothing.
///
/// The process is not asked about: a sandboxed program tells a number that is another program's
/// outside of its sandbox.
std::vector<WindowIdentity> identities(
    X11Connection& connection, std::span<const xcb_window_t> windows);

} // namespace pobblewig::X11WindowIdentity
