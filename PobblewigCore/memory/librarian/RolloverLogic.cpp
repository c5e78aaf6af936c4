#include "memory/librarian/RolloverLogic.h"

#include <algorithm>
#include <iterator>

namespace pobblewig {

namespace {

template <typename Record>
std::vector<QUuid> ids(const std::vector<Record>& records)
{
    std::vector<QUuid> ids;
    std::ranges::transform(records, std::back_inserter(ids), &Record::id);
    return ids;
}

} // namespace

bool RolloverLogic::isIdle(
    const std::vector<ChatMessage>& window, const std::vector<DatedObservation>& observations)
{
    return observations.empty()
        && std::ranges::find(window, ChatMessage::Role::user, &ChatMessage::role) == window.end();
}

PeriodSummary RolloverLogic::dailySummary(const DailySession& session, TimePoint endedAt,
    const DailyCloseout& closeout, const std::vector<DatedObservation>& observations, TimePoint now)
{
    PeriodSummary summary {
        .id = dailySummaryID(session.id),
        .periodType = PeriodType::day,
        .startDate = std::min(session.startedAt, endedAt),
        .endDate = endedAt,
        .summary = closeout.summary,
        .chronologicalHighlights = closeout.highlights,
        .sourceObservationIDs = ids(observations),
        .createdAt = now,
    };
    std::ranges::transform(closeout.unfinishedIntent, std::back_inserter(summary.unresolvedIntent),
        &CloseoutIntentItem::text);
    return summary;
}

PeriodSummary RolloverLogic::weeklySummary(
    const std::vector<PeriodSummary>& dailies, const WeeklyRollupResult& rollup, TimePoint now)
{
    return {
        .id = QUuid::createUuid(),
        .periodType = PeriodType::week,
        .startDate = dailies.front().startDate,
        .endDate = dailies.back().endDate,
        .summary = rollup.summary,
        .chronologicalHighlights = rollup.highlights,
        .unresolvedIntent = rollup.unresolvedIntent,
        .sourceDailySummaryIDs = ids(dailies),
        .createdAt = now,
    };
}

} // namespace pobblewig
