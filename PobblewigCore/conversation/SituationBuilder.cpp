#include "conversation/SituationBuilder.h"

#include "memory/MemorySituation.h"
#include "settings/SettingsSituation.h"

namespace pobblewig {

namespace {

/// "Sunday, 1 March 2026, 09:15 (Europe/Berlin, UTC+01:00)", whatever the user's language.
QString localTime(const Situation& situation)
{
    const auto local = situation.calendar.dateTime(situation.now);
    const auto clock = QLocale::c().toString(local, QStringLiteral("dddd, d MMMM yyyy, HH:mm"));
    const auto offset = QTime(0, 0).addSecs(std::abs(local.offsetFromUtc()));
    return QStringLiteral("The user's local time: %1 (%2, UTC%3%4)")
        .arg(clock, QString::fromLatin1(situation.calendar.timeZone.id()),
            local.offsetFromUtc() < 0 ? QStringLiteral("-") : QStringLiteral("+"),
            offset.toString(QStringLiteral("HH:mm")));
}

void addMemory(SituationSnapshot& snapshot, const Situation& situation)
{
    const auto& memory = situation.memory;
    // A wrong clock may have dated a summary into the future.
    const auto dailies = memory.summaries.list(PeriodType::day, std::nullopt, situation.now);
    const auto weeklies = memory.summaries.list(PeriodType::week, std::nullopt, situation.now);
    snapshot.referenceTOC = MemorySituation::referenceTOC(memory.reference.tableOfContents());
    snapshot.chronologicalIndex =
        MemorySituation::chronologicalIndex(weeklies, dailies, situation.calendar);
    snapshot.unfinishedIntent = MemorySituation::unfinishedIntent(dailies);
}

} // namespace

SituationSnapshot SituationBuilder::snapshot(const Situation& situation)
{
    const auto lines = QStringList(localTime(situation)) + situation.lines;
    SituationSnapshot snapshot {
        .mode = situation.settings.mode,
        .roles = situation.settings.roles,
        .persona = situation.settings.companionPersona,
        .summary = lines.join(u'\n'),
        .currentForm = SettingsSituation::currentForm(situation.settings),
        .sessionInfo = MemorySituation::sessionInfo(
            situation.memory.sessions.activeSession(), situation.calendar),
        .canvasIsMissing = situation.canvasIsMissing,
    };
    if (situation.settings.memoryEnabled)
        addMemory(snapshot, situation);
    return snapshot;
}

} // namespace pobblewig
