#pragma once

#include "memory/DailySession.h"
#include "memory/PeriodSummary.h"
#include "memory/librarian/LibrarianAnswers.h"

#include <vector>

/// The records that the end of a day leaves.
namespace pobblewig::RolloverLogic {

/// Every session has one summary, and its id follows from the session's: so a rollover that is
/// repeated after a crash finds the summary that it wrote.
QUuid dailySummaryID(const QUuid& sessionID);

PeriodSummary dailySummary(const DailySession& session, const DailyCloseout& closeout,
    const std::vector<DatedObservation>& observations, TimePoint now);

/// Of at least one day, in order.
PeriodSummary weeklySummary(
    const std::vector<PeriodSummary>& dailies, const WeeklyRollupResult& rollup, TimePoint now);

} // namespace pobblewig::RolloverLogic
