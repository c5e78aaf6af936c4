#pragma once

#include "memory/DailySession.h"
#include "memory/PeriodSummary.h"
#include "memory/history/ChatMessage.h"
#include "memory/librarian/LibrarianAnswers.h"

#include <vector>

/// Builds the records of a finished day or week.
namespace pobblewig::RolloverLogic {

/// Whether there is nothing to tell of a day: the user said nothing, and nothing was observed.
bool isIdle(
    const std::vector<ChatMessage>& window, const std::vector<DatedObservation>& observations);

/// The summary begins and ends with the session, which a wrong clock may have begun after its end.
PeriodSummary dailySummary(const DailySession& session, TimePoint endedAt,
    const DailyCloseout& closeout, const std::vector<DatedObservation>& observations,
    TimePoint now);

/// `dailies` has at least one day and is in order.
PeriodSummary weeklySummary(
    const std::vector<PeriodSummary>& dailies, const WeeklyRollupResult& rollup, TimePoint now);

} // namespace pobblewig::RolloverLogic
