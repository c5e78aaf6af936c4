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

} // namespace

DailySessionStore::DailySessionStore(
    const std::optional<DataDirectory>& directory, double inactivityHours)
    : m_inactivityHours(inactivityHours)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("sessions.json"));
    m_sessions = m_file->load<std::vector<DailySession>>().value_or(std::vector<DailySession>());
}

std::optional<DailySession> DailySessionStore::activeSession() const
{
    const auto session = std::ranges::find_if(m_sessions, isActive);
    return session == m_sessions.end() ? std::nullopt : std::optional(*session);
}

std::optional<DailySession> DailySessionStore::previousSession() const
{
    const DailySession* previous = nullptr;
    for (const auto& session : m_sessions) {
        if (session.endedAt && (!previous || session.startedAt > previous->startedAt))
            previous = &session;
    }
    return previous ? std::optional(*previous) : std::nullopt;
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
    save();
    return m_sessions.front();
}

void DailySessionStore::recordTurn(TimePoint now)
{
    auto* session = active();
    if (!session)
        return;
    session->lastActivityAt = now;
    ++session->turnCount;
    save();
}

void DailySessionStore::touch(TimePoint now)
{
    auto* session = active();
    if (!session)
        return;
    session->lastActivityAt = now;
    save();
}

void DailySessionStore::linkObservation(const QUuid& id)
{
    auto* session = active();
    if (!session)
        return;
    session->observationIDs.push_back(id);
    save();
}

std::optional<DailySession> DailySessionStore::finalizeActiveSession(Closing closing, TimePoint now)
{
    auto* session = active();
    if (!session)
        return std::nullopt;
    session->endedAt = now;
    session->summary = std::move(closing.summary);
    session->activitySummary = std::move(closing.activitySummary);
    session->dailySummaryID = closing.dailySummaryID;
    save();
    return *session;
}

DailySession DailySessionStore::startNewSession(
    TimePoint now, std::optional<QUuid> previousSessionID, const Calendar& calendar)
{
    m_sessions.insert(m_sessions.begin(), newSession(now, previousSessionID, calendar));
    if (m_sessions.size() > mostSessions)
        m_sessions.resize(mostSessions);
    save();
    return m_sessions.front();
}

void DailySessionStore::adoptImportedSession(DailySession session)
{
    if (!m_sessions.empty())
        return;
    m_sessions.push_back(std::move(session));
    save();
}

void DailySessionStore::deleteAll()
{
    m_sessions.clear();
    save();
}

DailySession* DailySessionStore::active()
{
    const auto session = std::ranges::find_if(m_sessions, isActive);
    return session == m_sessions.end() ? nullptr : &*session;
}

void DailySessionStore::save() const
{
    if (!m_file)
        return;
    if (const auto saved = m_file->save(m_sessions); !saved)
        Log::line(QStringLiteral("buddy: failed to persist sessions: %1")
                      .arg(saved.error().description()));
}

} // namespace pobblewig
