#pragma once

#include "memory/DailySession.h"
#include "memory/MemoryNote.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceSection.h"

#include <vector>

/// Memory as the tools show it to the model: compact lines, each record with the short id by which
/// the model can speak of it, and a sentence where there is none.
namespace pobblewig::MemoryToolText {

/// Up to four lines. An inference is marked as such, so that no guess is repeated as a fact.
QString renderObservation(const DatedObservation& observation);
QString renderObservations(const std::vector<DatedObservation>& observations);

QString renderPeriods(const std::vector<PeriodSummary>& summaries);

/// The summary, then the days and the observations behind it.
QString renderExpanded(const ExpandedPeriod& period);

QString renderHits(const std::vector<ReferenceSearchResult>& hits);
QString renderSession(const DailySession& session);
QString renderGoals(const std::vector<MemoryNote>& notes);

/// With their categories.
QString renderNotes(const std::vector<MemoryNote>& notes);

} // namespace pobblewig::MemoryToolText
