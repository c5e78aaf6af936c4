#pragma once

#include "memory/DailySession.h"
#include "memory/MemoryNote.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceSection.h"

#include <vector>

/// Memory in the form that tools show to a model: compact lines, each record with a short id for
/// reference, or a sentence if there are no records.
namespace pobblewig::MemoryToolText {

/// At most four lines. An inference is marked as such, so that a guess is not repeated as a fact.
QString renderObservation(const DatedObservation& observation);
QString renderObservations(const std::vector<DatedObservation>& observations);

QString renderPeriods(const std::vector<PeriodSummary>& summaries);

/// The last of them, as many as fit into `characters`; a first line counts those left out.
QString renderNewestPeriods(const std::vector<PeriodSummary>& summaries, qsizetype characters);

/// The summary, then its days and observations.
QString renderExpanded(const ExpandedPeriod& period);

QString renderHits(const std::vector<ReferenceSearchResult>& hits);
QString renderSession(const DailySession& session);
QString renderGoals(const std::vector<MemoryNote>& notes);

/// Includes their categories.
QString renderNotes(const std::vector<MemoryNote>& notes);

} // namespace pobblewig::MemoryToolText
