#pragma once

#include "PobblewigDemoModel/DemoRule.h"

/// Sentences that are answered without any tool. One of them fits whatever is said.
namespace pobblewig::DemoSmallTalk {

const DemoRules& rules();

} // namespace pobblewig::DemoSmallTalk
