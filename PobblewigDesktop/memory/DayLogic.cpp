#include "PobblewigDesktop/memory/DayLogic.h"

#include "PobblewigDesktop/memory/SearchWords.h"

#include <algorithm>
#include <set>

namespace pobblewig {

namespace {

QString searched(const DayEntry& entry)
{
    QStringList parts;
    if (entry.session)
        parts << entry.session->summary.value_or(QString());
    if (entry.summary) {
        parts << entry.summary->summary;
        for (const auto* list :
            { &entry.summary->chronologicalHighlights, &entry.summary->unresolvedIntent })
            parts << QStringList(list->begin(), list->end());
    }
    return parts.join(u' ');
}

/// A week stands where its last day does, in front of it.
auto order(const DayEntry& entry)
{
    return std::pair(entry.isWeek() ? entry.summary->endDate : entry.start, entry.isWeek());
}

} // namespace

std::vector<DayEntry> DayLogic::entries(const std::vector<DailySession>& sessions,
    const std::vector<PeriodSummary>& summaries, const QString& words)
{
    std::vector<DayEntry> entries;
    entries.reserve(sessions.size() + summaries.size());
    for (const auto& session : sessions)
        entries.push_back({ .start = session.startedAt, .session = session });
    for (const auto& summary : summaries) {
        const auto day = std::ranges::find_if(entries, [&](const auto& entry) {
            return entry.session && entry.session->dailySummaryID == summary.id;
        });
        if (day != entries.end())
            day->summary = summary;
        else
            entries.push_back({ .start = summary.startDate, .summary = summary });
    }
    const SearchWords wanted(words);
    std::erase_if(entries, [&](const auto& entry) { return !wanted.match(searched(entry)); });
    std::ranges::stable_sort(entries, std::greater(), order);
    return entries;
}

std::vector<QUuid> DayLogic::observationIDs(
    const DayEntry& entry, const std::vector<PeriodSummary>& summaries)
{
    std::set<QUuid> ids;
    if (entry.session)
        ids.insert(entry.session->observationIDs.begin(), entry.session->observationIDs.end());
    const auto add = [&](const PeriodSummary& summary) {
        ids.insert(summary.sourceObservationIDs.begin(), summary.sourceObservationIDs.end());
    };
    if (entry.summary) {
        add(*entry.summary);
        const auto& days = entry.summary->sourceDailySummaryIDs;
        for (const auto& summary : summaries) {
            if (std::ranges::find(days, summary.id) != days.end())
                add(summary);
        }
    }
    return { ids.begin(), ids.end() };
}

} // namespace pobblewig
