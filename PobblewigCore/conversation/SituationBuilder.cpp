#include "conversation/SituationBuilder.h"

#include "connections/CalendarSyncLogic.h"
#include "connections/CanvasSyncLogic.h"
#include "foundation/Text.h"
#include "mascots/MascotColorScheme.h"
#include "memory/MemorySituation.h"

#include <QStringList>

namespace pobblewig {

namespace {

constexpr int daysAhead = 14;
constexpr int reminderHours = 48;
constexpr int mostItems = 3;
constexpr qsizetype itemCharacters = 160;

/// Such as "axolotl (pink color scheme)"; nothing for the mascot of old that nobody can choose.
QString currentForm(const AppSettings& settings)
{
    if (settings.mascot == EnumNames::text(Mascot::skrit))
        return {};
    const auto mascot = userFacingMascot(settings.mascot);
    const auto& scheme = MascotColorScheme::forID(settings.mascotColorScheme, mascot);
    return QStringLiteral("%1 (%2 color scheme)")
        .arg(EnumNames::text(mascot), scheme.displayName.toLower());
}

QString formLine(const AppSettings& settings)
{
    const auto form = currentForm(settings);
    if (form.isEmpty())
        return {};
    return QStringLiteral(
        "Your current desktop form: %1 — this is the creature the user sees on their screen right "
        "now. If earlier messages in this conversation call you a different animal, the form was "
        "changed since; this line is current and supersedes them. When you refer to your own form "
        "or species, say %2 and no other animal. If the user asks you to become a different "
        "animal, change the mascot setting with update_settings (key mascot) — once the user "
        "confirms, this line updates.")
        .arg(form, EnumNames::text(userFacingMascot(settings.mascot)));
}

QString settingsLine(const AppSettings& settings)
{
    QStringList roles;
    for (const auto role : settings.roles)
        roles.append(EnumNames::text(role));
    return QStringLiteral(
        "Your settings (yours to change with update_settings when the user asks; the user confirms "
        "each change): mode %1; roles [%2] — this line is rebuilt every turn and supersedes "
        "anything earlier in this conversation.")
        .arg(EnumNames::text(settings.mode), roles.join(QStringLiteral(", ")));
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

QString memoryIsOff()
{
    return QStringLiteral("The user has turned your memory off (Settings → Memory & Privacy): you "
                          "have no remembered personal context and won't retain new memories from "
                          "chats until they turn it back on. If asked what you remember, say "
                          "memory is off and where to turn it back on.");
}

/// Nothing without an entry.
QString listLine(const QString& heading, const QStringList& entries)
{
    return entries.isEmpty() ? QString() : heading + entries.join(QStringLiteral(" | "));
}

QString itemsLine(const QString& heading, const std::vector<ReferenceItem>& items)
{
    QStringList entries;
    for (const auto& item : items) {
        const auto entry = item.summary.isEmpty()
            ? item.title
            : QStringLiteral("%1 — %2").arg(item.title, item.summary);
        entries.append(Text::firstCharacters(Text::onOneLine(entry), itemCharacters));
    }
    return listLine(heading, entries);
}

QStringList datedLines(const Situation& situation)
{
    const auto& items = situation.memory.reference.allItems();
    const auto now = situation.now;
    return {
        itemsLine(QStringLiteral("Upcoming deadlines (Canvas): "),
            CanvasSyncLogic::upcomingDeadlines(items, now, daysAhead, mostItems)),
        itemsLine(QStringLiteral("Today's events: "),
            CalendarSyncLogic::todaysEvents(items, now, situation.calendar)),
        itemsLine(QStringLiteral("Upcoming events (Calendar): "),
            CalendarSyncLogic::upcomingEvents(items, now, daysAhead, mostItems)),
        itemsLine(QStringLiteral("Due reminders: "),
            CalendarSyncLogic::dueReminders(items, now, reminderHours, mostItems)),
    };
}

QString appDataSources(const std::vector<AppDataSource>& sources)
{
    QStringList names;
    for (const auto& source : sources)
        names.append(source.name);
    return listLine(
        QStringLiteral("App data sources (read-only, via apps_list_files/apps_read_file): "),
        names);
}

QString summary(const Situation& situation)
{
    QStringList lines {
        formLine(situation.settings),
        settingsLine(situation.settings),
        currentApp(situation.currentSession),
    };
    if (situation.isPaused)
        lines.append(QStringLiteral("Observation is currently paused by the user."));
    if (!situation.settings.memoryEnabled)
        lines.append(memoryIsOff());
    lines.append(datedLines(situation));
    lines.append(appDataSources(situation.settings.appDataSources));
    lines.removeAll(QString());
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
        .currentForm = currentForm(situation.settings),
        .referenceTOC = MemorySituation::referenceTOC(memory.reference.tableOfContents()),
        .chronologicalIndex =
            MemorySituation::chronologicalIndex(weeklies, dailies, situation.calendar),
        .sessionInfo =
            MemorySituation::sessionInfo(memory.sessions.activeSession(), situation.calendar),
        .unfinishedIntent = MemorySituation::unfinishedIntent(dailies),
    };
}

} // namespace pobblewig
