#include "activity/ActivityFeature.h"

#include "activity/RuleTexts.h"
#include "activity/RuleTools.h"

namespace pobblewig {

namespace {

constexpr size_t recentSessionCount = 10;

std::vector<ActivitySession> firstOf(const std::vector<ActivitySession>& sessions, size_t count)
{
    return { sessions.begin(),
        sessions.begin() + std::ptrdiff_t(std::min(count, sessions.size())) };
}

QString currentApp(const std::optional<ActivitySession>& session)
{
    if (!session)
        return QStringLiteral("No active app session right now.");
    const auto minutes = qint64(session->durationSeconds / 60);
    return QStringLiteral("Current app: %1 (%2), active for %3 min%4")
        .arg(session->applicationName, session->bundleIdentifier, QString::number(minutes),
            session->isActive ? QString() : QStringLiteral(", user appears idle"));
}

} // namespace

ActivityFeature::ActivityFeature(const Stores& stores, const Moment& moment,
    const std::optional<DataDirectory>& directory, Observation observation)
    : m_settings(stores.settings)
    , m_rules(stores.rules)
    , m_moment(moment)
    , m_report(std::move(observation.report))
    , m_frontmost(observation.frontmostProvider,
          { m_settings, moment, std::move(observation.alwaysExcluded),
              std::move(observation.identifierOf) })
    , m_tracker(m_frontmost, directory)
    , m_desk({ m_tracker, m_rules, moment, [this] { changed(); } })
{
}

QStringList ActivityFeature::ruleVerdicts() const
{
    const auto now = m_moment.now();
    const auto calendar = m_moment.calendar();
    return RuleTexts::verdicts(m_rules.rules(),
        {
            .now = now,
            .calendar = calendar,
            .currentMode = m_settings.settings().mode,
            .observationPaused = m_settings.isPaused(now),
            .currentSession = m_tracker.currentSession(),
            .categoryDurations = m_tracker.categoryDurations(now, calendar),
        });
}

Task<> ActivityFeature::tick()
{
    m_tracker.poll(m_moment.now());
    changed();
    co_return;
}

std::vector<QString> ActivityFeature::situation(TimePoint now) const
{
    std::vector lines { currentApp(m_tracker.currentSession()) };
    if (m_settings.isPaused(now))
        lines.push_back(QStringLiteral("Observation is currently paused by the user."));
    return lines;
}

std::vector<Tool> ActivityFeature::tools()
{
    return RuleTools::tools(m_rules);
}

void ActivityFeature::publish(PublishedState& state) const
{
    state.set(ActivityState {
        .currentSession = m_tracker.currentSession(),
        .recentSessions = firstOf(m_tracker.history(), recentSessionCount),
        .ruleList = m_rules.rules(),
    });
}

} // namespace pobblewig
