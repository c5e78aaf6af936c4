#pragma once

#include "conversation/proposals/ActionBuilder.h"
#include "tools/Tool.h"

/// The functions by which a model changes something, each with the action that it leads to. Blocks
/// use the same names.
namespace pobblewig::ActionTools {

std::vector<Tool> tools();

/// Whether models are offered it.
bool isOffered(const QString& name);

/// Empty for an unknown name as well.
ActionBuilder::Actions actions(const QString& name, const ActionBuilder::Request& request);

} // namespace pobblewig::ActionTools
