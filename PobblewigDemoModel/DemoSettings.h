#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules for sentences that change how the app behaves, sounds and looks.
namespace pobblewig::DemoSettings {

const DemoRules& rules();

} // namespace pobblewig::DemoSettings
