#include "memory/librarian/SessionRolloverService.h"

#include "foundation/Log.h"
#include "memory/history/ChatArchive.h"
#include "memory/librarian/RolloverLogic.h"

namespace pobblewig {

SessionRolloverService::SessionRolloverService(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

auto SessionRolloverService::ending() const -> std::optional<Ending>
{
    const auto session = m.memory.sessions.activeSession();
    return session ? std::optional(Ending { session->id, m.history.messages() }) : std::nullopt;
}

Task<RolloverOutcome> SessionRolloverService::rolloverIfNeeded(TimePoint now, Calendar calendar)
{
    return rolloverIfNeeded(now, std::move(calendar), ending());
}

Task<RolloverOutcome> SessionRolloverService::rolloverIfNeeded(
    TimePoint now, Calendar calendar, std::optional<Ending> ending)
{
    if (!m.memory.sessions.shouldRollOver(now, calendar))
        co_return RolloverOutcome();
    co_return co_await performRollover(now, calendar, ending);
}

Task<RolloverOutcome> SessionRolloverService::forceRollover(TimePoint now, Calendar calendar)
{
    return performRollover(now, std::move(calendar), ending());
}

Task<RolloverOutcome> SessionRolloverService::forceRollover(
    TimePoint now, Calendar calendar, std::optional<Ending> ending)
{
    return performRollover(now, std::move(calendar), std::move(ending));
}

void SessionRolloverService::finishInterrupted(TimePoint now, const Calendar& calendar)
{
    const auto& sessions = m.memory.sessions;
    const auto session =
        sessions.activeSession() ? sessions.activeSession() : sessions.previousSession();
    if (!session)
        return;
    const auto summary = m.memory.summaries.withID(RolloverLogic::dailySummaryID(session->id));
    if (!summary)
        return;
    const auto window = m.history.messages();
    if (session->endedAt)
        beginNext(*session, window, now, calendar);
    else
        finish(*session, *summary, window, now, calendar);
}

Task<> SessionRolloverService::rollUpWeek(TimePoint now)
{
    if (!m.memory.summaries.needsWeeklyRollup())
        co_return;
    const auto dailies = m.memory.summaries.unsummarizedDailies();
    const auto rollup = co_await m.librarian.weeklyRollup(dailies);
    // The memory may have been deleted in the meantime.
    if (m.memory.summaries.unsummarizedDailies() == dailies)
        m.memory.summaries.add(RolloverLogic::weeklySummary(dailies, rollup, now));
}

Task<RolloverOutcome> SessionRolloverService::performRollover(
    TimePoint now, Calendar calendar, std::optional<Ending> ending)
{
    if (m_isUnderWay || !ending || !isActive(ending->sessionID))
        co_return RolloverOutcome();
    m_isUnderWay = true;
    const auto session = *m.memory.sessions.activeSession();
    const auto isClosed = co_await closeDay(session, ending->window, now);
    const auto summary = m.memory.summaries.withID(RolloverLogic::dailySummaryID(session.id));
    if (isClosed && summary) {
        finish(session, *summary, ending->window, now, calendar);
        co_await rollUpWeek(now);
    }
    m_isUnderWay = false;
    co_return RolloverOutcome { .rolledOver = isClosed, .dailySummaryCreated = isClosed };
}

Task<bool> SessionRolloverService::closeDay(
    DailySession session, std::vector<ChatMessage> window, TimePoint now)
{
    const auto observations = m.memory.observations.observations(session.startedAt, now);
    const auto latest = m.memory.summaries.latestDaily();
    const auto closeout = co_await m.librarian.closeDailySession({
        .dayKey = session.dayKey,
        .window = std::move(window),
        .observations = observations,
        .activitySummary = m.activitySummaryProvider(session.startedAt, now),
        .previousIntent = latest ? latest->unresolvedIntent : std::vector<QString>(),
    });
    // The memory, including the session, may have been deleted in the meantime.
    if (!isActive(session.id) || closeout.summary.isEmpty())
        co_return false;
    m.memory.summaries.add(RolloverLogic::dailySummary(session, closeout, observations, now));
    co_return true;
}

void SessionRolloverService::finish(const DailySession& session, const PeriodSummary& summary,
    const std::vector<ChatMessage>& window, TimePoint now, const Calendar& calendar)
{
    m.memory.observations.markArchived(summary.sourceObservationIDs, summary.id);
    m.memory.observations.pruneArchived(ObservationStore::archivedRetentionDays, now);
    m.memory.sessions.finalizeActiveSession(
        { .summary = summary.summary,
            .activitySummary = m.activitySummaryProvider(session.startedAt, now),
            .dailySummaryID = summary.id },
        now);
    beginNext(session, window, now, calendar);
}

void SessionRolloverService::beginNext(const DailySession& ended,
    const std::vector<ChatMessage>& window, TimePoint now, const Calendar& calendar)
{
    // Messages that cannot be archived stay, and are archived with the next session.
    if (archive(ended, window))
        m.history.remove(window);
    m.memory.sessions.startNewSession(now, ended.id, calendar);
    m_lastRolloverAt = now;
    if (m.chatArchiveDirectory)
        ChatArchive::sweepChatArchives(*m.chatArchiveDirectory, now, calendar);
}

bool SessionRolloverService::archive(
    const DailySession& session, const std::vector<ChatMessage>& window)
{
    // An empty archive would replace the one written before a crash.
    if (!m.chatArchiveDirectory || window.empty())
        return true;
    const auto written =
        ChatArchive::write(*m.chatArchiveDirectory, window, session.dayKey, session.id);
    if (!written)
        Log::line(
            QStringLiteral("buddy: failed to archive chat: %1").arg(written.error().description()));
    return written.has_value();
}

bool SessionRolloverService::isActive(const QUuid& sessionID) const
{
    const auto active = m.memory.sessions.activeSession();
    return active && active->id == sessionID;
}

} // namespace pobblewig
