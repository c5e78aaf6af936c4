#pragma once

#include "foundation/Time.h"

#include <optional>

namespace pobblewig::SyncSchedule {

/// Whether the interval has passed since the last attempt. An interval below a minute counts as
/// one. A clock that was set back does not delay the sync.
bool syncDue(std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes);

} // namespace pobblewig::SyncSchedule
