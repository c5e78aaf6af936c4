#include "buddy/BuddySleep.h"

#include "buddy/BuddySmoothing.h"

namespace pobblewig {

void BuddySleep::tick(double now, double frames, bool mayDoze)
{
    const auto dozes = mayDoze && now - m_lastActivityAt >= m_delay;
    m_amount = dozes ? BuddySmoothing::approached(m_amount, 1, 0.955, frames)
                     : BuddySmoothing::approached(m_amount, 0, 0.8, frames);
}

} // namespace pobblewig
