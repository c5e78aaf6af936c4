#include "PobblewigLinux/x11/X11FullScreenWatch.h"

#include "PobblewigLinux/x11/X11WindowSurvey.h"
#include "PobblewigLinux/x11/X11WindowTree.h"

#include <QCoreApplication>
#include <QSize>

#include <algorithm>

namespace pobblewig {

namespace {

using Window = BuddySight::Window;

using Atoms = std::vector<std::uint32_t>;

class FrontSurvey {
public:
    explicit FrontSurvey(X11Connection& connection)
        : m_connection(connection)
        , m_fullScreen(state("FULLSCREEN"))
        , m_hidden(state("HIDDEN"))
        , m_above(state("ABOVE"))
        , m_wide(state("MAXIMIZED_HORZ"))
        , m_high(state("MAXIMIZED_VERT"))
        , m_normal(connection.atom("_NET_WM_WINDOW_TYPE_NORMAL"))
    {
    }

    /// Takes one round trip for all windows.
    std::vector<Window> windows()
    {
        const auto foreign = foreignWindows();
        std::vector<Question> questions;
        questions.reserve(foreign.size());
        for (const auto window : foreign)
            questions.push_back({ m_connection.ask(window, "_NET_WM_STATE"),
                m_connection.ask(window, "_NET_WM_WINDOW_TYPE") });
        const auto facts = X11WindowSurvey(m_connection, foreign).facts();
        std::vector<Window> windows;
        for (size_t i = 0; i < foreign.size(); ++i) {
            const auto states = m_connection.values(questions[i].states);
            const auto types = m_connection.values(questions[i].types);
            if (facts[i].isMapped && !contains(states, m_hidden))
                windows.push_back({ facts[i].rect, kind(states, types) });
        }
        return windows;
    }

private:
    struct Question {
        xcb_get_property_cookie_t states;
        xcb_get_property_cookie_t types;
    };

    xcb_atom_t state(const std::string& name) { return m_connection.atom("_NET_WM_STATE_" + name); }

    /// From top to bottom.
    std::vector<xcb_window_t> foreignWindows()
    {
        auto windows = m_connection.values(m_connection.root(), "_NET_CLIENT_LIST_STACKING");
        const auto ours = xcb_get_setup(m_connection.get())->resource_id_base;
        std::erase_if(windows, [&](xcb_window_t window) {
            return X11WindowTree::connectionOf(m_connection, window) == ours;
        });
        std::ranges::reverse(windows);
        return windows;
    }

    Window::Kind kind(const Atoms& states, const Atoms& types) const
    {
        if (contains(states, m_fullScreen))
            return Window::Kind::fullScreen;
        if (contains(states, m_above) || (!types.empty() && !contains(types, m_normal)))
            return Window::Kind::beside;
        const auto isMaximised = contains(states, m_wide) && contains(states, m_high);
        return isMaximised ? Window::Kind::maximised : Window::Kind::ordinary;
    }

    static bool contains(const Atoms& atoms, xcb_atom_t atom)
    {
        return std::ranges::find(atoms, atom) != atoms.end();
    }

    X11Connection& m_connection;
    xcb_atom_t m_fullScreen;
    xcb_atom_t m_hidden;
    xcb_atom_t m_above;
    xcb_atom_t m_wide;
    xcb_atom_t m_high;
    xcb_atom_t m_normal;
};

} // namespace

X11FullScreenWatch::X11FullScreenWatch(X11Connection& connection, std::function<void()> changed)
    : m_connection(connection)
    , m_changed(std::move(changed))
{
    followActiveWindow();
    // Qt itself subscribes to the root window's property changes.
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11FullScreenWatch::~X11FullScreenWatch()
{
    listen(m_active, XCB_EVENT_MASK_NO_EVENT);
}

bool X11FullScreenWatch::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type == "xcb_generic_event_t" && isNews(*static_cast<xcb_generic_event_t*>(message)))
        announce();
    return false;
}

std::vector<BuddySight::Window> X11FullScreenWatch::windows(X11Connection& connection)
{
    return FrontSurvey(connection).windows();
}

bool X11FullScreenWatch::isNews(const xcb_generic_event_t& event)
{
    constexpr int sentByProgram = 0x80;
    const auto kind = event.response_type & ~sentByProgram;
    if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.window == m_connection.root())
            return notice.atom == m_connection.atom("_NET_ACTIVE_WINDOW")
                || notice.atom == m_connection.atom("_NET_CLIENT_LIST_STACKING");
        return notice.window == m_active && notice.atom == m_connection.atom("_NET_WM_STATE");
    }
    if (kind != XCB_CONFIGURE_NOTIFY)
        return false;
    const auto& notice = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    const QSize size(notice.width, notice.height);
    return notice.window == m_active && std::exchange(m_activeSize, size) != size;
}

void X11FullScreenWatch::announce()
{
    if (std::exchange(m_isAnnounced, true))
        return;
    const auto tell = [this] {
        m_isAnnounced = false;
        followActiveWindow();
        m_changed();
    };
    QMetaObject::invokeMethod(&m_context, tell, Qt::QueuedConnection);
}

void X11FullScreenWatch::followActiveWindow()
{
    const auto values = m_connection.values(m_connection.root(), "_NET_ACTIVE_WINDOW");
    const auto active = values.empty() ? XCB_WINDOW_NONE : xcb_window_t(values.front());
    // Qt needs its own event mask on our windows, and a film behind the chat may still end.
    const auto ours = xcb_get_setup(m_connection.get())->resource_id_base;
    if (active == XCB_WINDOW_NONE || active == m_active
        || X11WindowTree::connectionOf(m_connection, active) == ours)
        return;
    listen(std::exchange(m_active, active), XCB_EVENT_MASK_NO_EVENT);
    listen(active, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void X11FullScreenWatch::listen(xcb_window_t window, std::uint32_t events)
{
    if (window == XCB_WINDOW_NONE)
        return;
    auto* const xcb = m_connection.get();
    const auto cookie =
        xcb_change_window_attributes_checked(xcb, window, XCB_CW_EVENT_MASK, &events);
    // The window may have gone in the meantime, which is not an error.
    xcb_discard_reply(xcb, cookie.sequence);
    xcb_flush(xcb);
}

} // namespace pobblewig
