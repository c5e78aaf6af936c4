#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences that make the demo model err as small models do, to show how the app takes it.
namespace pobblewig::DemoMisbehaviour {

const DemoRules& rules();

} // namespace pobblewig::DemoMisbehaviour
