#pragma once

#include "conversation/proposals/ActionBuilder.h"
#include "tools/Tool.h"

/// The functions by which a model changes something, each with the action that it leads to. Blocks
/// use the same names.
namespace pobblewig::ActionTools {

/// Events and reminders are offered only if there are calendars.
enum class Calendars { none, available };

std::vector<Tool> tools(Calendars calendars);

/// Whether this is a function that changes something, offered or not.
bool isAction(const QString& name);

/// Empty for an unknown name as well.
ActionBuilder::Actions actions(const QString& name, const ActionBuilder::Request& request);

} // namespace pobblewig::ActionTools
