#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QImage>

namespace pobblewig::X11Pixels {

/// A part of a window or pixmap, in its own coordinates. Null if it has gone, is not on the screen,
/// or has pixels of a kind that we do not know.
QImage read(X11Connection& connection, xcb_drawable_t drawable, const QRect& part, int depth);

} // namespace pobblewig::X11Pixels
