#include "memory/MemorySnapshot.h"

namespace pobblewig {

namespace {

constexpr int recentObservationCount = 50;
constexpr std::ptrdiff_t dailySummaryCount = 14;
constexpr std::ptrdiff_t weeklySummaryCount = 8;

std::vector<PeriodSummary> latest(
    const PeriodSummaryStore& summaries, PeriodType type, std::ptrdiff_t count)
{
    auto found = summaries.list(type, std::nullopt, std::nullopt);
    if (std::ssize(found) > count)
        found.erase(found.begin(), found.end() - count);
    return found;
}

} // namespace

MemorySnapshot MemorySnapshot::of(const MemoryTiers& memory, TimePoint now)
{
    return {
        .revision = memory.revision(),
        .notes = memory.notes.allNotes(MemoryStore::IncludeArchived::no),
        .patterns = memory.notes.allPatterns(),
        .tokenEstimate = memory.notes.residentTokenEstimate(now),
        .activeDailySession = memory.sessions.activeSession(),
        .previousDailySession = memory.sessions.previousSession(),
        .tocEntries = memory.reference.tableOfContents().entries,
        .proposedSections = memory.reference.proposedSections(),
        .recentObservations = memory.observations.search({ .limit = recentObservationCount }),
        .dailySummaries = latest(memory.summaries, PeriodType::day, dailySummaryCount),
        .weeklySummaries = latest(memory.summaries, PeriodType::week, weeklySummaryCount),
    };
}

} // namespace pobblewig
