#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules that make the demo model err as small models do, to show how the app handles it.
namespace pobblewig::DemoMisbehaviour {

const DemoRules& rules();

} // namespace pobblewig::DemoMisbehaviour
