#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Rules for sentences that need no tool. One of them matches any sentence.
namespace pobblewig::DemoSmallTalk {

const DemoRules& rules();

} // namespace pobblewig::DemoSmallTalk
