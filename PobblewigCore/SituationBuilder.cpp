#include "SituationBuilder.h"

#include <QStringList>

namespace pobblewig {

SituationSnapshot SituationBuilder::situation(const AppSettings& settings, bool isPaused)
{
    QStringList lines { QStringLiteral("No active app session right now.") };
    if (isPaused)
        lines.append(QStringLiteral("Observation is currently paused by the user."));
    return {
        .mode = settings.mode,
        .roles = settings.roles,
        .persona = settings.companionPersona,
        .summary = lines.join(u'\n'),
    };
}

} // namespace pobblewig
