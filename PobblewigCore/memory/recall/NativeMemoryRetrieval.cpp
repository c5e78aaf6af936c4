#include "memory/recall/NativeMemoryRetrieval.h"

namespace pobblewig {

namespace {

constexpr int mostSearchResults = 20;

bool isGoal(const MemoryNote& note)
{
    return note.category == MemoryCategory::goals || note.category == MemoryCategory::aspirations;
}

} // namespace

NativeMemoryRetrieval::NativeMemoryRetrieval(
    const MemoryTiers& memory, std::function<QString()> situationProvider)
    : m_memory(memory)
    , m_situationProvider(std::move(situationProvider))
{
}

auto NativeMemoryRetrieval::getTableOfContents() -> Task<Expected<MemoryTableOfContents>>
{
    co_return m_memory.reference.tableOfContents();
}

auto NativeMemoryRetrieval::readReferenceSection(QString path) -> Task<Expected<ReferenceSection>>
{
    auto section = m_memory.reference.readSection(path);
    if (!section)
        co_return tl::unexpected(MemoryRetrievalError::sectionNotFound(path));
    co_return std::move(*section);
}

auto NativeMemoryRetrieval::searchReference(QString query, std::vector<QString> paths)
    -> Task<Expected<std::vector<ReferenceSearchResult>>>
{
    co_return m_memory.reference.search(query, paths, mostSearchResults);
}

auto NativeMemoryRetrieval::listPeriodSummaries(std::optional<TimePoint> from,
    std::optional<TimePoint> to) -> Task<Expected<std::vector<PeriodSummary>>>
{
    co_return m_memory.summaries.list(std::nullopt, from, to);
}

auto NativeMemoryRetrieval::expandPeriod(QUuid id) -> Task<Expected<ExpandedPeriod>>
{
    auto summary = m_memory.summaries.withID(id);
    if (!summary)
        co_return tl::unexpected(MemoryRetrievalError::periodNotFound(id));
    co_return expanded(std::move(*summary));
}

auto NativeMemoryRetrieval::searchObservations(ObservationStore::Query query)
    -> Task<Expected<std::vector<DatedObservation>>>
{
    co_return m_memory.observations.search(query);
}

auto NativeMemoryRetrieval::getDailySession() -> Task<Expected<DailySession>>
{
    auto session = m_memory.sessions.activeSession();
    if (!session)
        co_return tl::unexpected(MemoryRetrievalError::noActiveSession());
    co_return std::move(*session);
}

auto NativeMemoryRetrieval::getActiveContext() -> Task<Expected<QString>>
{
    co_return m_situationProvider();
}

auto NativeMemoryRetrieval::listActiveGoals() -> Task<Expected<std::vector<MemoryNote>>>
{
    auto notes = m_memory.notes.allNotes(MemoryStore::IncludeArchived::no);
    std::erase_if(notes, std::not_fn(isGoal));
    co_return notes;
}

ExpandedPeriod NativeMemoryRetrieval::expanded(PeriodSummary summary) const
{
    ExpandedPeriod period { std::move(summary), {}, {} };
    auto observationIDs = period.summary.sourceObservationIDs;
    for (const auto& id : period.summary.sourceDailySummaryIDs) {
        const auto daily = m_memory.summaries.withID(id);
        if (!daily)
            continue;
        std::ranges::copy(daily->sourceObservationIDs, std::back_inserter(observationIDs));
        period.dailySummaries.push_back(*daily);
    }
    period.observations = m_memory.observations.withIDs(observationIDs);
    return period;
}

} // namespace pobblewig
