#pragma once

#include "foundation/Calendar.h"
#include "memory/ReferenceItem.h"
#include "prompts/InterventionPrompts.h"
#include "settings/AppSettings.h"

#include <vector>

/// Decides what a daily briefing is about.
namespace pobblewig::BriefingLogic {

/// Whether anything tells of the user's days. Without that a free day would be a guess.
bool hasSource(const AppSettings& settings, const std::vector<ReferenceItem>& items);

/// What is due in the next two days and still open, at most 5; today's remaining events; the
/// reminders of the next 24 hours; and how much more is due within the week.
InterventionPrompts::Briefing briefing(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::BriefingLogic
