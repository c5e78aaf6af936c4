#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules for sentences about the calendar and the reminders.
namespace pobblewig::DemoReminders {

const DemoRules& rules();

} // namespace pobblewig::DemoReminders
