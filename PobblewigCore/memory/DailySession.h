#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// One stretch of conversation, normally a day.
struct DailySession {
    QUuid id;
    /// The user's day on which the session began, such as "2026-03-01".
    QString dayKey;
    TimePoint startedAt;
    TimePoint lastActivityAt;
    /// Not set while the session is active.
    std::optional<TimePoint> endedAt = std::nullopt;
    int turnCount = 0;
    std::optional<QString> summary = std::nullopt;
    /// A description of the applications used that day.
    std::optional<QString> activitySummary = std::nullopt;
    std::vector<QUuid> observationIDs;
    std::optional<QUuid> dailySummaryID = std::nullopt;
    std::optional<QUuid> previousSessionID = std::nullopt;
    /// The newest message that the librarian has read or is never to read.
    std::optional<QUuid> lastExtractedMessageID = std::nullopt;
    /// Made from a conversation that predates sessions.
    bool isImported = false;

    bool operator==(const DailySession&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &DailySession::id),
            required("dayKey", &DailySession::dayKey),
            required("startedAt", &DailySession::startedAt),
            required("lastActivityAt", &DailySession::lastActivityAt),
            optional("endedAt", &DailySession::endedAt),
            required("turnCount", &DailySession::turnCount),
            optional("summary", &DailySession::summary),
            optional("activitySummary", &DailySession::activitySummary),
            required("observationIDs", &DailySession::observationIDs),
            optional("dailySummaryID", &DailySession::dailySummaryID),
            optional("previousSessionID", &DailySession::previousSessionID),
            optional("lastExtractedMessageID", &DailySession::lastExtractedMessageID),
            required("isImported", &DailySession::isImported) };
    }
};

} // namespace pobblewig
