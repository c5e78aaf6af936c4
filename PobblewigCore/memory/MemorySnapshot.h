#pragma once

#include "memory/MemoryTiers.h"

namespace pobblewig {

/// The data that the memory screens show.
struct MemorySnapshot {
    /// Grows with every change, also of what is not listed here.
    int revision = 0;
    /// Without archived notes.
    std::vector<MemoryNote> notes;
    std::vector<PatternNote> patterns;
    /// The size of the notes in a prompt, in tokens.
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
