#pragma once

#include "prompts/ToolLines.h"

/// How the model changes something, always with the user's involvement.
namespace pobblewig::Prompts {

/// For a model with function calls. Names only what it is offered.
QString nativeActionInstructions(const ToolLines& tools);

/// For a model that writes a fenced block: the format, a line for each action, and the keys of the
/// settings.
QString actionInstructions(const ToolLines& tools);

} // namespace pobblewig::Prompts
