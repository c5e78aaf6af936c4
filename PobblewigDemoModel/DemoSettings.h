#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences that change how the app behaves, sounds and looks.
namespace pobblewig::DemoSettings {

const DemoRules& rules();

} // namespace pobblewig::DemoSettings
