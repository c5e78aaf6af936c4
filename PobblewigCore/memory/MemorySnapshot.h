#pragma once

#include "memory/MemoryTiers.h"

namespace pobblewig {

/// What the memory screens show.
struct MemorySnapshot {
    /// Without the archived ones.
    std::vector<MemoryNote> notes;
    std::vector<PatternNote> patterns;
    /// What the notes cost in a prompt.
    int tokenEstimate = 0;
    std::optional<DailySession> activeDailySession;
    std::optional<DailySession> previousDailySession;
    std::vector<TOCEntry> tocEntries;
    std::vector<ReferenceSectionMeta> proposedSections;
    /// The latest 50, newest first.
    std::vector<DatedObservation> recentObservations;
    /// The latest 14, oldest first.
    std::vector<PeriodSummary> dailySummaries;
    /// The latest 8, oldest first.
    std::vector<PeriodSummary> weeklySummaries;

    static MemorySnapshot of(const MemoryTiers& memory, TimePoint now);

    bool operator==(const MemorySnapshot&) const = default;
};

} // namespace pobblewig
