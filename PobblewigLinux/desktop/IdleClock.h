#pragma once

#include "foundation/Time.h"

#include <algorithm>
#include <optional>

namespace pobblewig {

/// Measures idle time where the session announces only its beginning and end.
class IdleClock {
public:
    /// Sessions announce idle time after this long. It is short compared to an absence, and long
    /// compared to the pauses while typing.
    static constexpr std::chrono::seconds announcedAfter { 5 };

    explicit IdleClock(Clock now)
        : m_now(std::move(now))
    {
    }

    /// Called when the session announces that it has been idle for `announcedAfter`.
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
