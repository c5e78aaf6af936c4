#pragma once

#include "PobblewigLinux/x11/KeyRepeatFilter.h"
#include "PobblewigLinux/x11/X11Connection.h"
#include "presence/HotKeyProviding.h"

#include <QSocketNotifier>

#include <xcb/xcb_keysyms.h>

namespace pobblewig {

/// Hot keys that are grabbed from the X server. They follow changes of the keyboard layout.
class X11HotKeys : public HotKeyProviding {
public:
    /// Uses a connection of its own, since Qt's does not report new keyboard layouts. Returns null
    /// if there is no such server. Without a name, uses the session's display.
    static std::unique_ptr<X11HotKeys> create(const std::string& display = {});

    Task<Outcome> assign(QKeySequence keys) override;

private:
    struct FreeSymbols {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    using Keycodes = std::vector<xcb_keycode_t>;

    explicit X11HotKeys(std::unique_ptr<X11Connection> connection);

    Outcome take(const QKeySequence& keys);
    Keycodes keycodes(Qt::Key key) const;
    bool grab(const Keycodes& keycodes, Qt::KeyboardModifiers modifiers) const;
    void release();

    /// Sends the request for each key and each combination of locks. Waits until the server has
    /// executed all of them, and returns whether all succeeded.
    bool askForEach(const Keycodes& keycodes, Qt::KeyboardModifiers modifiers,
        const std::function<xcb_void_cookie_t(xcb_keycode_t, std::uint16_t)>& request) const;

    void readEvents();
    void handleKey(const xcb_key_press_event_t& event);
    void followLayout(xcb_mapping_notify_event_t& event);

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<xcb_key_symbols_t, FreeSymbols> m_symbols;
    QSocketNotifier m_events;
    /// The user's hot key, followed by its keycodes on this keyboard.
    QKeySequence m_keys;
    Keycodes m_grabbed;
    KeyRepeatFilter m_repeats;
};

} // namespace pobblewig
