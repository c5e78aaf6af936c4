#include "PobblewigLinux/x11/X11SelectionWatch.h"

#include <QCoreApplication>

#include <xcb/xfixes.h>

namespace pobblewig {

X11SelectionWatch::X11SelectionWatch(
    X11Connection& connection, const std::string& selection, std::function<void()> changed)
    : m_selection(connection.atom(selection))
    , m_changed(std::move(changed))
    , m_isOwned(connection.isOwned(m_selection))
{
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    m_eventType = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(connection.get(), connection.root(), m_selection,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool X11SelectionWatch::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "xcb_generic_event_t")
        return false;
    constexpr int sentByProgram = 0x80;
    const auto* event = static_cast<xcb_generic_event_t*>(message);
    if ((event->response_type & ~sentByProgram) != m_eventType)
        return false;
    const auto* notice = static_cast<xcb_xfixes_selection_notify_event_t*>(message);
    if (notice->selection != m_selection)
        return false;
    m_isOwned = notice->owner != XCB_WINDOW_NONE;
    m_changed();
    return false;
}

} // namespace pobblewig
