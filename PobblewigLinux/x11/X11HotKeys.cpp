#include "PobblewigLinux/x11/X11HotKeys.h"

#include "PobblewigLinux/desktop/KeySymbols.h"
#include "foundation/Log.h"
#include "presence/HotKeyLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// The keys mean the same whether Caps Lock or Num Lock is on.
constexpr std::array<std::uint16_t, 4> locks { 0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 };

std::uint16_t mask(Qt::KeyboardModifiers modifiers)
{
    std::uint16_t mask = 0;
    if (modifiers & Qt::ShiftModifier)
        mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        mask |= XCB_MOD_MASK_CONTROL;
    if (modifiers & Qt::AltModifier)
        mask |= XCB_MOD_MASK_1;
    if (modifiers & Qt::MetaModifier)
        mask |= XCB_MOD_MASK_4;
    return mask;
}

} // namespace

std::unique_ptr<X11HotKeys> X11HotKeys::create(const std::string& display)
{
    auto connection = X11Connection::open(display);
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11HotKeys>(new X11HotKeys(std::move(connection)));
}

X11HotKeys::X11HotKeys(std::unique_ptr<X11Connection> connection)
    : m_connection(std::move(connection))
    , m_symbols(xcb_key_symbols_alloc(m_connection->get()))
    , m_events(xcb_get_file_descriptor(m_connection->get()), QSocketNotifier::Read)
{
    connect(&m_events, &QSocketNotifier::activated, this, &X11HotKeys::readEvents);
}

Task<X11HotKeys::Outcome> X11HotKeys::assign(QKeySequence keys)
{
    const auto before = m_keys;
    release();
    auto outcome = keys.isEmpty() ? Outcome() : take(keys);
    if (!outcome && !before.isEmpty() && !take(before))
        Log::line(QStringLiteral("buddy: the hot key was lost"));
    // Events that arrived with the replies trigger no further notification.
    QMetaObject::invokeMethod(this, &X11HotKeys::readEvents, Qt::QueuedConnection);
    co_return outcome;
}

X11HotKeys::Outcome X11HotKeys::take(const QKeySequence& keys)
{
    using Kind = HotKeyError::Kind;
    const auto codes = HotKeyLogic::isUsable(keys) ? keycodes(keys[0].key()) : Keycodes();
    if (xcb_connection_has_error(m_connection->get()))
        return tl::unexpected(HotKeyError { Kind::unavailable, keys });
    if (codes.empty())
        return tl::unexpected(HotKeyError { Kind::unusable, keys });
    m_keys = keys;
    m_grabbed = codes;
    if (grab(codes, keys[0].keyboardModifiers()))
        return {};
    release();
    return tl::unexpected(HotKeyError { Kind::taken, keys });
}

X11HotKeys::Keycodes X11HotKeys::keycodes(Qt::Key key) const
{
    const auto symbol = KeySymbols::symbol(key);
    const std::unique_ptr<xcb_keycode_t, FreeReply> codes(
        symbol ? xcb_key_symbols_get_keycode(m_symbols.get(), *symbol) : nullptr);
    Keycodes found;
    for (const auto* code = codes.get(); code && *code != XCB_NO_SYMBOL; ++code)
        found.push_back(*code);
    return found;
}

bool X11HotKeys::grab(const Keycodes& keycodes, Qt::KeyboardModifiers modifiers) const
{
    return askForEach(keycodes, modifiers, [this](xcb_keycode_t code, std::uint16_t state) {
        return xcb_grab_key_checked(m_connection->get(), false, m_connection->root(), state, code,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    });
}

void X11HotKeys::release()
{
    if (m_keys.isEmpty())
        return;
    const auto modifiers = m_keys[0].keyboardModifiers();
    askForEach(m_grabbed, modifiers, [this](xcb_keycode_t code, std::uint16_t state) {
        return xcb_ungrab_key_checked(m_connection->get(), code, m_connection->root(), state);
    });
    m_keys = {};
    m_grabbed.clear();
}

bool X11HotKeys::askForEach(const Keycodes& keycodes, Qt::KeyboardModifiers modifiers,
    const std::function<xcb_void_cookie_t(xcb_keycode_t, std::uint16_t)>& request) const
{
    std::vector<xcb_void_cookie_t> requests;
    for (const auto code : keycodes) {
        for (const auto lock : locks)
            requests.push_back(request(code, mask(modifiers) | lock));
    }
    bool isGranted = true;
    for (const auto sent : requests) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection->get(), sent));
        isGranted &= !error;
    }
    return isGranted;
}

void X11HotKeys::readEvents()
{
    using Event = X11Reply<xcb_generic_event_t>;
    while (const auto event = Event(xcb_poll_for_event(m_connection->get()))) {
        void* const raw = event.get();
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
            handleKey(*static_cast<xcb_key_press_event_t*>(raw));
            break;
        case XCB_MAPPING_NOTIFY:
            followLayout(*static_cast<xcb_mapping_notify_event_t*>(raw));
            break;
        default:
            break;
        }
    }
    if (xcb_connection_has_error(m_connection->get()))
        m_events.setEnabled(false);
}

void X11HotKeys::handleKey(const xcb_key_press_event_t& event)
{
    // While the hot key is held, all other keys arrive here as well.
    if (std::ranges::count(m_grabbed, event.detail) == 0)
        return;
    if ((event.response_type & 0x7f) == XCB_KEY_RELEASE)
        m_repeats.release(event.time);
    else if (m_repeats.press(event.time))
        Q_EMIT pressed();
}

void X11HotKeys::followLayout(xcb_mapping_notify_event_t& event)
{
    xcb_refresh_keyboard_mapping(m_symbols.get(), &event);
    if (m_keys.isEmpty() || keycodes(m_keys[0].key()) == m_grabbed)
        return;
    const auto keys = m_keys;
    release();
    if (const auto taken = take(keys); !taken) {
        Log::line(QStringLiteral("buddy: the hot key cannot be had on this keyboard layout"));
        m_keys = keys;
    }
}

} // namespace pobblewig
