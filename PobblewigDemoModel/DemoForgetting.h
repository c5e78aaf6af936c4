#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences that make the app forget.
namespace pobblewig::DemoForgetting {

const DemoRules& rules();

} // namespace pobblewig::DemoForgetting
