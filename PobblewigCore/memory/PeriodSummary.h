#pragma once

#include "foundation/JSONCodec.h"
#include "memory/DatedObservation.h"

namespace pobblewig {

enum class PeriodType { day, week };

/// The kind of thing left unfinished at the end of a day.
enum class IntentKind { goal, task, decision, waitingState, project, proposal, other };

/// Derives the id of a session's only summary from the session's id, so that a rollover repeated
/// after a crash finds the summary that it wrote.
inline QUuid dailySummaryID(const QUuid& sessionID)
{
    return QUuid::createUuidV5(sessionID, QStringLiteral("daily summary"));
}

/// The summary of a day or a week.
struct PeriodSummary {
    QUuid id;
    PeriodType periodType = PeriodType::day;
    TimePoint startDate;
    TimePoint endDate;
    QString summary;
    /// In chronological order.
    std::vector<QString> chronologicalHighlights;
    /// What was left unfinished at the end of the period.
    std::vector<QString> unresolvedIntent;
    std::vector<QUuid> sourceObservationIDs;
    std::vector<QUuid> sourceDailySummaryIDs;
    TimePoint createdAt;

    bool operator==(const PeriodSummary&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &PeriodSummary::id),
            required("periodType", &PeriodSummary::periodType),
            required("startDate", &PeriodSummary::startDate),
            required("endDate", &PeriodSummary::endDate),
            required("summary", &PeriodSummary::summary),
            required("chronologicalHighlights", &PeriodSummary::chronologicalHighlights),
            required("unresolvedIntent", &PeriodSummary::unresolvedIntent),
            required("sourceObservationIDs", &PeriodSummary::sourceObservationIDs),
            required("sourceDailySummaryIDs", &PeriodSummary::sourceDailySummaryIDs),
            required("createdAt", &PeriodSummary::createdAt) };
    }
};

/// A summary with those of its sources that still exist.
struct ExpandedPeriod {
    PeriodSummary summary;
    std::vector<PeriodSummary> dailySummaries;
    /// Oldest first.
    std::vector<DatedObservation> observations;
};

} // namespace pobblewig
