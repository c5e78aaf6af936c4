#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QImage>

namespace pobblewig::X11Pixels {

/// Reads a part of a window or pixmap, in its own coordinates. Null if it has gone, is not on the
/// screen, or has an unknown pixel format.
QImage read(X11Connection& connection, xcb_drawable_t drawable, const QRect& part, int depth);

} // namespace pobblewig::X11Pixels
