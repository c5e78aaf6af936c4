#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules for sentences that make the app forget.
namespace pobblewig::DemoForgetting {

const DemoRules& rules();

} // namespace pobblewig::DemoForgetting
