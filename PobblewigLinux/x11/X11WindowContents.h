#pragma once

#include "PobblewigLinux/x11/X11WindowTree.h"

#include <QImage>

namespace pobblewig {

/// All pixels of a top-level window, for as long as this object lives, whatever covers it.
///
/// Under a compositor the server has them. Otherwise it is told to keep them, and the program has
/// to paint what was covered first: until it has, that part is black, never what covers it.
class X11WindowContents {
public:
    /// `covered`, on the screen, is what the user cannot see of the window.
    X11WindowContents(X11Connection& connection, X11TopLevel window, const QRegion& covered);
    ~X11WindowContents();
    Q_DISABLE_COPY_MOVE(X11WindowContents)

    /// Whether the program has painted what was covered and did not change it since the last call.
    bool hasSettled();

    /// A part of the screen that lies in the window. Null if the window has gone or is not shown
    /// any more.
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
