#include "activity/AccountabilityRule.h"

namespace pobblewig {

bool TimeWindow::contains(int hour) const
{
    if (endHour >= startHour)
        return startHour <= hour && hour < endHour;
    return hour >= startHour || hour < endHour;
}

AccountabilityRule AccountabilityRule::youtubeTemplate(TimePoint now)
{
    return {
        .id = QUuid::createUuid(),
        .name = QStringLiteral("Extended YouTube check-in (template)"),
        .enabled = false,
        .trigger = {
            .kind = RuleTrigger::Kind::application,
            .applicationNames = { QStringLiteral("YouTube") },
            .bundleIdentifiers
            = { QStringLiteral("com.apple.Safari"), QStringLiteral("com.google.Chrome") },
            .domains = { QStringLiteral("youtube.com") },
            .thresholdMinutes = 90,
        },
        .excludedModes = { CoachMode::relaxing, CoachMode::exercising },
        .cooldownMinutes = 120,
        .responseStyle = InterventionStyle::gentle,
        .createdAt = now,
        .updatedAt = now,
    };
}

} // namespace pobblewig
