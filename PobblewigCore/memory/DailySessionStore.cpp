#include "memory/DailySessionStore.h"

#include "foundation/Log.h"
#include "memory/SessionBoundary.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr size_t mostSessions = 90;

bool isActive(const DailySession& session)
{
    return !session.endedAt;
}

DailySession newSession(
    TimePoint now, std::optional<QUuid> previousSessionID, const Calendar& calendar)
{
    return {
        .id = QUuid::createUuid(),
        .dayKey = SessionBoundary::dayKey(now, calendar),
        .startedAt = now,
        .lastActivityAt = now,
        .previousSessionID = previousSessionID,
    };
}

void continueWith(DailySession& session, const DailySession& later)
{
    session.turnCount += later.turnCount;
    session.lastActivityAt = std::max(session.lastActivityAt, later.lastActivityAt);
    std::ranges::copy(later.observationIDs, std::back_inserter(session.observationIDs));
    if (later.lastExtractedMessageID)
        session.lastExtractedMessageID = later.lastExtractedMessageID;
}

} // namespace

DailySessionStore::DailySessionStore(
    const std::optional<DataDirectory>& directory, double inactivityHours)
    : m_file(directory, QStringLiteral("sessions.json"), QStringLiteral("sessions"))
    , m_inactivityHours(inactivityHours)
    , m_sessions(m_file.load<std::vector<DailySession>>())
{
}

std::optional<DailySession> DailySessionStore::activeSession() const
{
    const auto session = std::ranges::find_if(m_sessions, isActive);
    return session == m_sessions.end() ? std::nullopt : std::optional(*session);
}

std::optional<DailySession> DailySessionStore::previousSession() const
{
    const auto session = std::ranges::find_if_not(m_sessions, isActive);
    return session == m_sessions.end() ? std::nullopt : std::optional(*session);
}

bool DailySessionStore::shouldRollOver(TimePoint now, const Calendar& calendar) const
{
    const auto session = activeSession();
    return session && SessionBoundary::shouldRollOver(*session, now, m_inactivityHours, calendar);
}

DailySession DailySessionStore::ensureActiveSession(TimePoint now, const Calendar& calendar)
{
    if (const auto* session = active())
        return *session;
    m_sessions.insert(m_sessions.begin(), newSession(now, std::nullopt, calendar));
    m_file.save(m_sessions);
    return m_sessions.front();
}

void DailySessionStore::recordTurn(TimePoint now)
{
    auto* session = active();
    if (!session)
        return;
    session->lastActivityAt = now;
    ++session->turnCount;
    m_file.save(m_sessions);
}

void DailySessionStore::touch(TimePoint now)
{
    auto* session = active();
    if (!session)
        return;
    session->lastActivityAt = now;
    m_file.save(m_sessions);
}

void DailySessionStore::linkObservation(const QUuid& id)
{
    auto* session = active();
    if (!session)
        return;
    session->observationIDs.push_back(id);
    m_file.save(m_sessions);
}

void DailySessionStore::markExtracted(const QUuid& messageID)
{
    auto* session = active();
    if (!session || session->lastExtractedMessageID == messageID)
        return;
    session->lastExtractedMessageID = messageID;
    m_file.save(m_sessions);
}

Task<> DailySessionStore::linkObservations(std::vector<QUuid> ids)
{
    auto* session = active();
    if (!session)
        co_return;
    std::ranges::copy(ids, std::back_inserter(session->observationIDs));
    co_await m_file.saveBeside(m_sessions);
}

std::optional<DailySession> DailySessionStore::finalizeActiveSession(Closing closing, TimePoint now)
{
    auto* session = active();
    if (!session)
        return std::nullopt;
    session->endedAt = now;
    session->startedAt = std::min(session->startedAt, now);
    session->lastActivityAt = std::min(session->lastActivityAt, now);
    session->summary = std::move(closing.summary);
    session->activitySummary = std::move(closing.activitySummary);
    session->dailySummaryID = closing.dailySummaryID;
    m_file.save(m_sessions);
    return *session;
}

DailySession DailySessionStore::startNewSession(
    TimePoint now, std::optional<QUuid> previousSessionID, const Calendar& calendar)
{
    auto session = newSession(now, previousSessionID, calendar);
    if (!m_sessions.empty())
        session.lastExtractedMessageID = m_sessions.front().lastExtractedMessageID;
    m_sessions.insert(m_sessions.begin(), std::move(session));
    if (m_sessions.size() > mostSessions)
        m_sessions.resize(mostSessions);
    m_file.save(m_sessions);
    return m_sessions.front();
}

void DailySessionStore::adoptImportedSession(DailySession session)
{
    if (!m_sessions.empty())
        return;
    m_sessions.push_back(std::move(session));
    m_file.save(m_sessions);
}

void DailySessionStore::deleteAll()
{
    m_sessions.clear();
    m_file.save(m_sessions);
}

void DailySessionStore::readAgain()
{
    auto kept = m_file.loadAgain<std::vector<DailySession>>();
    if (!kept)
        return;
    const auto meanwhile = std::exchange(m_sessions, *std::move(kept));
    auto* session = active();
    for (const auto& recorded : meanwhile) {
        if (session && isActive(recorded))
            continueWith(*session, recorded);
        else
            m_sessions.insert(m_sessions.begin(), recorded);
    }
    m_file.save(m_sessions);
}

DailySession* DailySessionStore::active()
{
    const auto session = std::ranges::find_if(m_sessions, isActive);
    return session == m_sessions.end() ? nullptr : &*session;
}

} // namespace pobblewig
