#include "conversation/SituationBuilder.h"

#include "memory/MemorySituation.h"
#include "settings/SettingsSituation.h"

namespace pobblewig {

SituationSnapshot SituationBuilder::snapshot(const Situation& situation)
{
    const auto& memory = situation.memory;
    // A wrong clock may have dated a summary into the future.
    const auto dailies = memory.summaries.list(PeriodType::day, std::nullopt, situation.now);
    const auto weeklies = memory.summaries.list(PeriodType::week, std::nullopt, situation.now);
    return {
        .mode = situation.settings.mode,
        .roles = situation.settings.roles,
        .persona = situation.settings.companionPersona,
        .summary = situation.lines.join(u'\n'),
        .currentForm = SettingsSituation::currentForm(situation.settings),
        .referenceTOC = MemorySituation::referenceTOC(memory.reference.tableOfContents()),
        .chronologicalIndex =
            MemorySituation::chronologicalIndex(weeklies, dailies, situation.calendar),
        .sessionInfo =
            MemorySituation::sessionInfo(memory.sessions.activeSession(), situation.calendar),
        .unfinishedIntent = MemorySituation::unfinishedIntent(dailies),
    };
}

} // namespace pobblewig
