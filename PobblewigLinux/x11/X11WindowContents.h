#pragma once

#include "PobblewigLinux/x11/X11WindowTree.h"

#include <QImage>

namespace pobblewig {

/// All pixels of a top-level window, whatever covers it, for as long as this object lives.
///
/// With a compositor the server has them. Otherwise the server is told to keep them, and the
/// program has to paint the covered part first; until then that part is black and never shows what
/// covers it.
class X11WindowContents {
public:
    /// `covered` is the part of the window that is not visible, in screen coordinates.
    X11WindowContents(X11Connection& connection, X11TopLevel window, const QRegion& covered);
    ~X11WindowContents();
    Q_DISABLE_COPY_MOVE(X11WindowContents)

    /// Whether the program has painted the covered part and not changed it since the last call.
    bool hasSettled();

    /// A part of the screen that lies inside the window. Null if the window has gone or is no
    /// longer shown.
    QImage picture(const QRect& part) const;

private:
    xcb_pixmap_t namedPixmap() const;
    void keep();
    bool isBlank(const QImage& look) const;

    X11Connection& m_connection;
    X11TopLevel m_window;
    QRegion m_covered;
    xcb_pixmap_t m_pixmap = XCB_NONE;
    bool m_isKept = false;
    QImage m_lastLook;
};

} // namespace pobblewig
