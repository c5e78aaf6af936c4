#include "memory/PeriodSummaryStore.h"

#include <algorithm>
#include <set>

namespace pobblewig {

namespace {

constexpr size_t daysOfAWeek = 7;

}

PeriodSummaryStore::PeriodSummaryStore(const std::optional<DataDirectory>& directory)
    : m_file(directory, QStringLiteral("summaries.json"), QStringLiteral("summaries"))
    , m_summaries(m_file.load<std::vector<PeriodSummary>>())
{
}

std::optional<PeriodSummary> PeriodSummaryStore::withID(const QUuid& id) const
{
    const auto summary = std::ranges::find(m_summaries, id, &PeriodSummary::id);
    return summary == m_summaries.end() ? std::nullopt : std::optional(*summary);
}

std::vector<PeriodSummary> PeriodSummaryStore::list(std::optional<PeriodType> type,
    std::optional<TimePoint> from, std::optional<TimePoint> to) const
{
    const auto isWanted = [&](const auto& summary) {
        return (!type || summary.periodType == *type) && (!from || summary.endDate >= *from)
            && (!to || summary.startDate <= *to);
    };
    std::vector<PeriodSummary> wanted;
    std::ranges::copy_if(m_summaries, std::back_inserter(wanted), isWanted);
    std::ranges::stable_sort(wanted, {}, &PeriodSummary::startDate);
    return wanted;
}

std::optional<PeriodSummary> PeriodSummaryStore::latestDaily(TimePoint now) const
{
    return latest(PeriodType::day, now);
}

std::optional<PeriodSummary> PeriodSummaryStore::latestWeekly(TimePoint now) const
{
    return latest(PeriodType::week, now);
}

std::vector<PeriodSummary> PeriodSummaryStore::unsummarizedDailies() const
{
    std::set<QUuid> summarized;
    for (const auto& summary : m_summaries) {
        if (summary.periodType == PeriodType::week)
            summarized.insert(
                summary.sourceDailySummaryIDs.begin(), summary.sourceDailySummaryIDs.end());
    }
    auto dailies = list(PeriodType::day, std::nullopt, std::nullopt);
    std::erase_if(dailies, [&](const auto& daily) { return summarized.contains(daily.id); });
    return dailies;
}

bool PeriodSummaryStore::needsWeeklyRollup() const
{
    return unsummarizedDailies().size() >= daysOfAWeek;
}

PeriodSummary PeriodSummaryStore::add(PeriodSummary summary)
{
    m_summaries.push_back(std::move(summary));
    m_file.save(m_summaries);
    return m_summaries.back();
}

void PeriodSummaryStore::deleteAll()
{
    m_summaries.clear();
    m_file.save(m_summaries);
}

void PeriodSummaryStore::readAgain()
{
    auto kept = m_file.loadAgain<std::vector<PeriodSummary>>();
    if (!kept)
        return;
    std::ranges::move(m_summaries, std::back_inserter(*kept));
    m_summaries = *std::move(kept);
    m_file.save(m_summaries);
}

std::optional<PeriodSummary> PeriodSummaryStore::latest(PeriodType type, TimePoint now) const
{
    const PeriodSummary* latest = nullptr;
    for (const auto& summary : m_summaries) {
        if (summary.periodType == type && summary.startDate <= now
            && (!latest || summary.startDate > latest->startDate))
            latest = &summary;
    }
    return latest ? std::optional(*latest) : std::nullopt;
}

} // namespace pobblewig
