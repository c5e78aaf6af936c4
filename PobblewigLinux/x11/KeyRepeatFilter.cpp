#include "PobblewigLinux/x11/KeyRepeatFilter.h"

#include <utility>

namespace pobblewig {

namespace {

/// No keyboard repeats more slowly. A key held longer without an event was released while another
/// program, such as a screen locker, had the keyboard.
constexpr xcb_timestamp_t longestPause = 2000;

} // namespace

bool KeyRepeatFilter::press(xcb_timestamp_t time)
{
    // Each synthetic press follows a synthetic release with the same time.
    const auto isMadeUp = std::exchange(m_releasedAt, std::nullopt) == time;
    const auto isHeld = m_pressedAt && time - *m_pressedAt < longestPause;
    m_pressedAt = time;
    return !isMadeUp && !isHeld;
}

void KeyRepeatFilter::release(xcb_timestamp_t time)
{
    m_pressedAt.reset();
    m_releasedAt = time;
}

} // namespace pobblewig
