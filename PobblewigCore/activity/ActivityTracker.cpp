#include "activity/ActivityTracker.h"

#include "activity/ActivityDayLogic.h"

#include <QHash>

#include <algorithm>

namespace pobblewig {

namespace {

/// Continues the last span without input, unless there was some since.
void noteIdle(TimePoint now, double idleSeconds, ActivitySession& session)
{
    constexpr size_t most = 200;
    const auto lasted = std::chrono::milliseconds(qint64(std::min(idleSeconds, 1e9) * 1000));
    const auto from = std::max(session.startedAt, now - lasted);
    auto spans = session.idle.value_or(std::vector<ActivityIdle>());
    if (!spans.empty() && from <= spans.back().to)
        spans.back().to = std::max(spans.back().to, now);
    else if (from < now && spans.size() < most)
        spans.push_back({ from, now });
    if (!spans.empty())
        session.idle = std::move(spans);
}

/// Never negative, even if the clock was set back.
double secondsSince(TimePoint start, TimePoint now)
{
    return std::max(0.0, std::chrono::duration<double>(now - start).count());
}

} // namespace

ActivityTracker::ActivityTracker(FrontmostAppProviding& provider,
    const std::optional<DataDirectory>& directory, ActivityLimits limits)
    : m_provider(provider)
    , m_limits(limits)
    , m_file(directory, QStringLiteral("activity.json"), QStringLiteral("activity"))
    , m_history(m_file.load<std::vector<ActivitySession>>())
{
}

std::map<AppCategory, double> ActivityTracker::categoryDurations(
    TimePoint now, const Calendar& calendar) const
{
    // A day has many sessions but few applications.
    QHash<std::pair<QString, QString>, double> seconds;
    const auto add = [&](const ActivitySession& session) {
        const auto title = session.windowTitle.value_or(QString());
        seconds[{ session.bundleIdentifier, title }] += session.durationSeconds;
    };
    if (m_currentSession)
        add(*m_currentSession);
    const auto today = ActivityDayLogic::day({}, calendar.day(now), calendar);
    for (const auto& session : m_history) {
        if (today.start <= session.startedAt && session.startedAt < today.end)
            add(session);
    }
    std::map<AppCategory, double> durations;
    for (const auto& [application, duration] : seconds.asKeyValueRange())
        durations[classify(application.first, application.second)] += duration;
    return durations;
}

void ActivityTracker::poll(TimePoint now)
{
    readAgain();
    const auto front = m_provider.frontmostApp();
    const auto idleSeconds = m_provider.idleSeconds();
    const auto isActive = idleSeconds < m_limits.idleThreshold;
    if (m_currentSession && front
        && front->bundleIdentifier == m_currentSession->bundleIdentifier) {
        m_currentSession->durationSeconds = secondsSince(m_currentSession->startedAt, now);
        m_currentSession->isActive = isActive;
        if (!isActive)
            noteIdle(now, idleSeconds, *m_currentSession);
        return;
    }
    if (m_currentSession)
        closeSession(now);
    if (front)
        m_currentSession = ActivitySession {
            .id = QUuid::createUuid(),
            .applicationName = front->name,
            .bundleIdentifier = front->bundleIdentifier,
            .startedAt = now,
            .isActive = isActive,
        };
}

void ActivityTracker::prune(TimePoint now)
{
    if (std::ssize(m_history) > m_limits.maxSessions)
        m_history.erase(m_history.begin() + m_limits.maxSessions, m_history.end());
    const auto oldest = now - std::chrono::days(m_limits.retentionDays);
    std::erase_if(m_history, [&](const ActivitySession& session) {
        return session.endedAt.value_or(session.startedAt) < oldest;
    });
}

void ActivityTracker::deleteHistory()
{
    m_history.clear();
    m_currentSession.reset();
    m_file.save(m_history);
}

void ActivityTracker::deleteBetween(TimePoint from, TimePoint to, TimePoint now)
{
    if (m_currentSession)
        closeSession(now);
    m_history = ActivityDayLogic::without(std::move(m_history), from, to);
    m_file.save(m_history);
}

void ActivityTracker::readAgain()
{
    const auto kept = m_file.loadAgain<std::vector<ActivitySession>>();
    if (!kept)
        return;
    std::ranges::copy(*kept, std::back_inserter(m_history));
    m_file.save(m_history);
}

void ActivityTracker::closeSession(TimePoint now)
{
    auto session = *std::exchange(m_currentSession, std::nullopt);
    session.endedAt = now;
    session.durationSeconds = secondsSince(session.startedAt, now);
    session.startedAt = std::min(session.startedAt, now);
    session.isActive = false;
    m_history.insert(m_history.begin(), std::move(session));
    prune(now);
    m_file.save(m_history);
}

} // namespace pobblewig
