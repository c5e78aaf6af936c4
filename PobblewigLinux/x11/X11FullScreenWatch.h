#pragma once

#include "PobblewigLinux/x11/X11Connection.h"
#include "buddy/BuddySight.h"

#include <QAbstractNativeEventFilter>

#include <functional>

namespace pobblewig {

/// Follows which windows are in front, by events of the window manager and the active window. Never
/// polls.
class X11FullScreenWatch : public QAbstractNativeEventFilter {
public:
    /// `changed` is called from the event loop, once for all simultaneous changes.
    X11FullScreenWatch(X11Connection& connection, std::function<void()> changed);
    ~X11FullScreenWatch() override;
    Q_DISABLE_COPY_MOVE(X11FullScreenWatch)

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    /// The windows of other programs, from top to bottom.
    static std::vector<BuddySight::Window> windows(X11Connection& connection);

private:
    bool isNews(const xcb_generic_event_t& event);
    void announce();
    void followActiveWindow();
    void listen(xcb_window_t window, std::uint32_t events);

    X11Connection& m_connection;
    std::function<void()> m_changed;
    /// The latest active window of another program.
    xcb_window_t m_active = XCB_WINDOW_NONE;
    QSize m_activeSize;
    QObject m_context;
    bool m_isAnnounced = false;
};

} // namespace pobblewig
