#include "connections/SyncSchedule.h"

#include <algorithm>

namespace pobblewig {

bool SyncSchedule::syncDue(std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes)
{
    if (!lastSyncAt || *lastSyncAt > now)
        return true;
    return now - *lastSyncAt >= std::chrono::minutes(std::max(intervalMinutes, 1));
}

} // namespace pobblewig
