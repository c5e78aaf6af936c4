#pragma once

#include "activity/RuleStore.h"
#include "tools/Tool.h"

/// The tools by which a model reads the user's rules.
namespace pobblewig::RuleTools {

/// The store must outlive the tools.
std::vector<Tool> tools(const RuleStore& rules);

} // namespace pobblewig::RuleTools
