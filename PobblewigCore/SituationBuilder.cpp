#include "SituationBuilder.h"

#include "memory/MemorySituation.h"

#include <QStringList>

namespace pobblewig {

namespace {

QString currentApp(const std::optional<ActivitySession>& session)
{
    if (!session)
        return QStringLiteral("No active app session right now.");
    const auto minutes = qint64(session->durationSeconds / 60);
    return QStringLiteral("Current app: %1 (%2), active for %3 min%4")
        .arg(session->applicationName, session->bundleIdentifier, QString::number(minutes),
            session->isActive ? QString() : QStringLiteral(", user appears idle"));
}

QString memoryIsOff()
{
    return QStringLiteral("The user has turned your memory off (Settings → Memory & Privacy): you "
                          "have no remembered personal context and won't retain new memories from "
                          "chats until they turn it back on. If asked what you remember, say "
                          "memory is off and where to turn it back on.");
}

QString appDataSources(const std::vector<AppDataSource>& sources)
{
    QStringList names;
    names.reserve(std::ssize(sources));
    for (const auto& source : sources)
        names.append(source.name);
    return QStringLiteral("App data sources (read-only, via apps_list_files/apps_read_file): ")
        + names.join(QStringLiteral(" | "));
}

QString summary(const Situation& situation)
{
    QStringList lines { currentApp(situation.currentSession) };
    if (situation.isPaused)
        lines.append(QStringLiteral("Observation is currently paused by the user."));
    if (!situation.settings.memoryEnabled)
        lines.append(memoryIsOff());
    if (!situation.settings.appDataSources.empty())
        lines.append(appDataSources(situation.settings.appDataSources));
    return lines.join(u'\n');
}

} // namespace

SituationSnapshot SituationBuilder::snapshot(const Situation& situation)
{
    const auto& memory = situation.memory;
    const auto dailies = memory.summaries.list(PeriodType::day, std::nullopt, std::nullopt);
    const auto weeklies = memory.summaries.list(PeriodType::week, std::nullopt, std::nullopt);
    return {
        .mode = situation.settings.mode,
        .roles = situation.settings.roles,
        .persona = situation.settings.companionPersona,
        .summary = summary(situation),
        .referenceTOC = MemorySituation::referenceTOC(memory.reference.tableOfContents()),
        .chronologicalIndex =
            MemorySituation::chronologicalIndex(weeklies, dailies, situation.calendar),
        .sessionInfo =
            MemorySituation::sessionInfo(memory.sessions.activeSession(), situation.calendar),
        .unfinishedIntent = MemorySituation::unfinishedIntent(dailies),
    };
}

} // namespace pobblewig
