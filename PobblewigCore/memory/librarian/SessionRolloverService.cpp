#include "memory/librarian/SessionRolloverService.h"

#include "foundation/Log.h"
#include "memory/history/ChatArchive.h"
#include "memory/librarian/RolloverLogic.h"

#include <algorithm>
#include <set>

namespace pobblewig {

SessionRolloverService::SessionRolloverService(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

auto SessionRolloverService::ending() const -> std::optional<Ending>
{
    const auto session = m.memory.sessions.activeSession();
    if (!session)
        return std::nullopt;
    return Ending { session->id, m.moment.now(), m.history.messages(), m.history.transcript() };
}

Task<RolloverOutcome> SessionRolloverService::rolloverIfNeeded(std::optional<Ending> ending)
{
    if (!m.memory.sessions.shouldRollOver(m.moment.now(), m.moment.calendar()))
        co_return RolloverOutcome();
    co_return co_await performRollover(std::move(ending));
}

void SessionRolloverService::finishInterrupted()
{
    const auto& sessions = m.memory.sessions;
    const auto session =
        sessions.activeSession() ? sessions.activeSession() : sessions.previousSession();
    if (!session)
        return;
    const auto summary = m.memory.summaries.withID(dailySummaryID(session->id));
    if (!summary)
        return;
    if (!session->endedAt)
        finish(*session, *summary);
    beginNext(*session, m.history.transcript(), m.moment.now());
}

Task<> SessionRolloverService::rollUpWeek()
{
    if (!m.memory.summaries.needsWeeklyRollup())
        co_return;
    const auto dailies = m.memory.summaries.unsummarizedDailies();
    const auto rollup = co_await m.librarian.weeklyRollup(dailies);
    // Abandoned, or the memory was deleted in the meantime.
    if (rollup.summary.isEmpty() || m.memory.summaries.unsummarizedDailies() != dailies)
        co_return;
    m.memory.summaries.add(RolloverLogic::weeklySummary(dailies, rollup, m.moment.now()));
}

Task<RolloverOutcome> SessionRolloverService::performRollover(std::optional<Ending> ending)
{
    if (m_isUnderWay || !ending || !isActive(ending->sessionID))
        co_return RolloverOutcome();
    m_isUnderWay = true;
    const auto session = *m.memory.sessions.activeSession();
    const auto outcome = co_await close(session, *std::move(ending));
    m_isUnderWay = false;
    co_return outcome;
}

Task<RolloverOutcome> SessionRolloverService::close(DailySession session, Ending ending)
{
    if (RolloverLogic::isIdle(ending.transcript, observationsOf(session, ending.at))) {
        m.memory.sessions.finalizeActiveSession(
            { .activitySummary = m.activitySummaryProvider(session.startedAt, ending.at) },
            ending.at);
        beginNext(session, ending.transcript, beginningAfter(ending));
        co_return RolloverOutcome { .rolledOver = true };
    }
    const auto summary = co_await closeDay(session, ending);
    if (!summary)
        co_return RolloverOutcome();
    finish(session, *summary);
    beginNext(session, ending.transcript, beginningAfter(ending));
    co_await rollUpWeek();
    co_return RolloverOutcome { .rolledOver = true, .dailySummaryCreated = true };
}

auto SessionRolloverService::closeDay(DailySession session, Ending ending)
    -> Task<std::optional<PeriodSummary>>
{
    // A deletion abandons the answer; the day is then summarized without what was deleted.
    while (isActive(session.id)) {
        const auto observations = observationsOf(session, ending.at);
        const auto latest = m.memory.summaries.latestDaily(ending.at);
        const auto closeout = co_await m.librarian.closeDailySession({
            .dayKey = session.dayKey,
            .window = ending.window,
            .observations = observations,
            .activitySummary = m.activitySummaryProvider(session.startedAt, ending.at),
            .previousIntent = latest ? latest->unresolvedIntent : std::vector<QString>(),
        });
        if (!closeout.summary.isEmpty() && isActive(session.id))
            co_return m.memory.summaries.add(RolloverLogic::dailySummary(
                session, ending.at, closeout, observations, m.moment.now()));
    }
    co_return std::nullopt;
}

void SessionRolloverService::finish(const DailySession& session, const PeriodSummary& summary)
{
    m.memory.observations.markArchived(summary.sourceObservationIDs, summary.id);
    m.memory.observations.pruneArchived(ObservationStore::archivedRetentionDays, m.moment.now());
    m.memory.sessions.finalizeActiveSession(
        { .summary = summary.summary,
            .activitySummary = m.activitySummaryProvider(session.startedAt, summary.endDate),
            .dailySummaryID = summary.id },
        summary.endDate);
}

void SessionRolloverService::beginNext(
    const DailySession& ended, const std::vector<ChatMessage>& messages, TimePoint begin)
{
    // Messages that cannot be archived stay, and are archived with the next session.
    if (archive(ended, messages))
        m.history.remove(messages);
    m.memory.sessions.startNewSession(begin, ended.id, m.moment.calendar());
    m_lastRolloverAt = m.moment.now();
    sweepArchives();
}

void SessionRolloverService::sweepArchives()
{
    if (m.chatArchiveDirectory)
        ChatArchive::sweepChatArchives(
            *m.chatArchiveDirectory, m.moment.now(), m.moment.calendar(), m.keeping());
}

bool SessionRolloverService::archive(
    const DailySession& session, const std::vector<ChatMessage>& messages)
{
    if (!m.chatArchiveDirectory || messages.empty())
        return true;
    const auto written =
        ChatArchive::write(*m.chatArchiveDirectory, messages, session.dayKey, session.id);
    if (!written)
        Log::line(
            QStringLiteral("buddy: failed to archive chat: %1").arg(written.error().description()));
    return written.has_value();
}

std::vector<DatedObservation> SessionRolloverService::observationsOf(
    const DailySession& session, TimePoint to) const
{
    const std::set<QUuid> linked(session.observationIDs.begin(), session.observationIDs.end());
    auto observations = m.memory.observations.observations(std::nullopt, to);
    std::erase_if(observations, [&](const auto& observation) {
        return observation.archivedIntoPeriodID
            || (observation.occurredAt < session.startedAt && !linked.contains(observation.id));
    });
    return observations;
}

TimePoint SessionRolloverService::beginningAfter(const Ending& ending) const
{
    auto begin = m.moment.now();
    const auto& window = ending.window;
    const auto last = window.empty() ? std::nullopt : std::optional(window.back().id);
    for (const auto& message : LibrarianLogic::messagesAfter(m.history.messages(), last))
        begin = std::min(begin, message.timestamp);
    for (const auto& observation : m.memory.observations.observations(ending.at, begin)) {
        if (!observation.archivedIntoPeriodID)
            begin = std::min(begin, observation.occurredAt);
    }
    return begin;
}

bool SessionRolloverService::isActive(const QUuid& sessionID) const
{
    const auto active = m.memory.sessions.activeSession();
    return active && active->id == sessionID;
}

} // namespace pobblewig
