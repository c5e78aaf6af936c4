#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules for sentences that make the demo model look something up or record it.
namespace pobblewig::DemoLookups {

const DemoRules& rules();

} // namespace pobblewig::DemoLookups
