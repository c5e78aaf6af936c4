#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences that make the demo model look something up, or write down what it was told.
namespace pobblewig::DemoLookups {

const DemoRules& rules();

} // namespace pobblewig::DemoLookups
