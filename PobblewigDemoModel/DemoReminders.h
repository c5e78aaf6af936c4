#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences for the calendar and the list of reminders.
namespace pobblewig::DemoReminders {

const DemoRules& rules();

} // namespace pobblewig::DemoReminders
