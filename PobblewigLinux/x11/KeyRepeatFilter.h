#pragma once

#include <xcb/xcb.h>

#include <optional>

namespace pobblewig {

/// Tells real presses of the hot key from the repeats that an X server generates while it is held.
class KeyRepeatFilter {
public:
    /// Returns whether the user has pressed the key.
    bool press(xcb_timestamp_t time);
    void release(xcb_timestamp_t time);

private:
    std::optional<xcb_timestamp_t> m_pressedAt;
    std::optional<xcb_timestamp_t> m_releasedAt;
};

} // namespace pobblewig
