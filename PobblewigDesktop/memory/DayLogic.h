#pragma once

#include "memory/DailySession.h"
#include "memory/PeriodSummary.h"

namespace pobblewig {

/// A session or a summarized period, or both where they are about the same day.
struct DayEntry {
    TimePoint start;
    std::optional<DailySession> session = std::nullopt;
    std::optional<PeriodSummary> summary = std::nullopt;

    const QUuid& id() const { return summary ? summary->id : session->id; }
    bool isWeek() const { return summary && summary->periodType == PeriodType::week; }
};

namespace DayLogic {

/// All of them, newest first; a week stands before its days. With words, only those whose texts
/// have them.
std::vector<DayEntry> entries(const std::vector<DailySession>& sessions,
    const std::vector<PeriodSummary>& summaries, const QString& words);

/// The observations that belong to an entry, each once.
std::vector<QUuid> observationIDs(
    const DayEntry& entry, const std::vector<PeriodSummary>& summaries);

} // namespace DayLogic

} // namespace pobblewig
