#include "PobblewigLinux/x11/KeyRepeatFilter.h"

#include <utility>

namespace pobblewig {

namespace {

/// No keyboard repeats more slowly. A key held longer without a sign of life was let go while
/// somebody else, a screen locker for example, had the keyboard.
constexpr xcb_timestamp_t longestPause = 2000;

} // namespace

bool KeyRepeatFilter::press(xcb_timestamp_t time)
{
    // Before each made-up press there is a made-up release, at the same time.
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
