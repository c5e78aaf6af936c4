#pragma once

#include "foundation/Time.h"

#include <algorithm>
#include <optional>

namespace pobblewig {

/// Counts the idle time where the session only announces its beginning and its end.
class IdleClock {
public:
    /// Sessions announce idle time after this long. Short against what counts as being away, long
    /// against the pauses of somebody who types.
    static constexpr std::chrono::seconds announcedAfter { 5 };

    explicit IdleClock(Clock now)
        : m_now(std::move(now))
    {
    }

    /// The session is idle, and has been for as long as it takes to be announced.
    void begin() { m_since = m_now() - announcedAfter; }
    void end() { m_since.reset(); }

    double seconds() const
    {
        if (!m_since)
            return 0;
        return std::max(0.0, std::chrono::duration<double>(m_now() - *m_since).count());
    }

private:
    Clock m_now;
    std::optional<TimePoint> m_since;
};

} // namespace pobblewig
