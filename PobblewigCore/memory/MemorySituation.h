#pragma once

#include "foundation/Calendar.h"
#include "memory/DailySession.h"
#include "memory/MemoryTableOfContents.h"
#include "memory/PeriodSummary.h"

#include <optional>
#include <vector>

/// What every prompt says about memory that it does not contain: the day so far, unfinished
/// business, and where to look for more. All summaries are passed oldest first, as their store
/// lists them.
namespace pobblewig::MemorySituation {

/// Empty without an active session.
QString sessionInfo(const std::optional<DailySession>& active, const Calendar& calendar);

/// What the last three days left unfinished, in at most ten lines.
QString unfinishedIntent(const std::vector<PeriodSummary>& dailies);

/// The last three weeks, then the last five days, one line each.
QString chronologicalIndex(const std::vector<PeriodSummary>& weeklies,
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar);

/// The sections that contain items.
QString referenceTOC(const MemoryTableOfContents& contents);

} // namespace pobblewig::MemorySituation
