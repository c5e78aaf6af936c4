#include "PobblewigLinux/x11/X11WindowContents.h"

#include "PobblewigLinux/x11/X11Pixels.h"

#include <QPainter>

#include <xcb/composite.h>

#include <utility>

namespace pobblewig {

namespace {

std::vector<xcb_rectangle_t> rectangles(const QRegion& region)
{
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(std::size_t(region.rectCount()));
    for (const auto& part : region)
        rectangles.push_back({ std::int16_t(part.x()), std::int16_t(part.y()),
            std::uint16_t(part.width()), std::uint16_t(part.height()) });
    return rectangles;
}

/// Errors about a window that goes in the meantime do not matter.
void ignoreErrors(xcb_connection_t* connection, xcb_void_cookie_t cookie)
{
    xcb_discard_reply(connection, cookie.sequence);
}

bool canCompose(xcb_connection_t* connection)
{
    const auto* extension = xcb_get_extension_data(connection, &xcb_composite_id);
    return extension && extension->present;
}

} // namespace

X11WindowContents::X11WindowContents(
    X11Connection& connection, X11TopLevel window, const QRegion& covered)
    : m_connection(connection)
    , m_window(std::move(window))
    , m_covered(covered)
{
    if (!canCompose(m_connection.get()))
        return;
    m_pixmap = namedPixmap();
    if (m_pixmap == XCB_NONE && !m_covered.isEmpty())
        keep();
}

X11WindowContents::~X11WindowContents()
{
    auto* const xcb = m_connection.get();
    if (m_pixmap != XCB_NONE)
        ignoreErrors(xcb, xcb_free_pixmap_checked(xcb, m_pixmap));
    if (m_isKept)
        ignoreErrors(xcb,
            xcb_composite_unredirect_window_checked(
                xcb, m_window.window, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
    xcb_flush(xcb);
}

xcb_pixmap_t X11WindowContents::namedPixmap() const
{
    auto* const xcb = m_connection.get();
    const auto pixmap = xcb_generate_id(xcb);
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(
        xcb, xcb_composite_name_window_pixmap_checked(xcb, m_window.window, pixmap)));
    return error ? XCB_NONE : pixmap;
}

void X11WindowContents::keep()
{
    auto* const xcb = m_connection.get();
    const auto window = m_window.window;
    const auto pixmap = xcb_generate_id(xcb);
    const auto context = xcb_generate_id(xcb);
    const auto covered = rectangles(m_covered.translated(-m_window.frame.topLeft()));
    const auto inside = X11WindowTree::withDescendants(m_connection, window);
    const std::uint32_t black = 0;

    // A pixmap begins as a copy of the screen. Pixels of the windows above must be erased from it
    // before the program is told to paint.
    xcb_grab_server(xcb);
    ignoreErrors(
        xcb, xcb_composite_redirect_window_checked(xcb, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
    const auto named = xcb_composite_name_window_pixmap_checked(xcb, window, pixmap);
    ignoreErrors(xcb, xcb_create_gc_checked(xcb, context, pixmap, XCB_GC_FOREGROUND, &black));
    ignoreErrors(xcb,
        xcb_poly_fill_rectangle_checked(
            xcb, pixmap, context, std::uint32_t(covered.size()), covered.data()));
    ignoreErrors(xcb, xcb_free_gc_checked(xcb, context));
    for (const auto& [inner, origin] : inside) {
        for (const auto& part : rectangles(m_covered.translated(-origin)))
            ignoreErrors(xcb,
                xcb_clear_area_checked(xcb, true, inner, part.x, part.y, part.width, part.height));
    }
    xcb_ungrab_server(xcb);

    m_isKept = true;
    if (!X11Reply<xcb_generic_error_t>(xcb_request_check(xcb, named)))
        m_pixmap = pixmap;
}

bool X11WindowContents::hasSettled()
{
    if (!m_isKept)
        return true;
    const auto look = picture(m_covered.boundingRect());
    const auto last = std::exchange(m_lastLook, look);
    return look.isNull() || (look == last && !isBlank(look));
}

QImage X11WindowContents::picture(const QRect& part) const
{
    const auto inside = part.translated(-m_window.frame.topLeft());
    if (m_pixmap != XCB_NONE)
        return X11Pixels::read(m_connection, m_pixmap, inside, m_window.depth);
    // For a covered window the server would return the pixels of what covers it.
    if (!m_covered.isEmpty())
        return {};
    const auto inWindow = inside.translated(-m_window.border, -m_window.border);
    return X11Pixels::read(m_connection, m_window.window, inWindow, m_window.depth);
}

bool X11WindowContents::isBlank(const QImage& look) const
{
    auto blank = look.copy();
    QPainter painter(&blank);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const auto origin = m_covered.boundingRect().topLeft();
    for (const auto& part : m_covered.translated(-origin))
        painter.fillRect(part, Qt::transparent);
    painter.end();
    return blank == look;
}

} // namespace pobblewig
