#pragma once

#include "conversation/proposals/ActionBuilder.h"
#include "tools/Tool.h"

/// The functions by which a model changes something, each with what becomes of its arguments. A
/// block names them by the same names.
namespace pobblewig::ActionTools {

std::vector<Tool> tools();

/// Whether a model is offered it.
bool isOffered(const QString& name);

/// None for an unknown name either.
ActionBuilder::Actions actions(const QString& name, const ActionBuilder::Request& request);

} // namespace pobblewig::ActionTools
