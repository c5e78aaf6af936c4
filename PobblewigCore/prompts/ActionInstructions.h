#pragma once

#include <QStringList>

/// How the model changes something, always with the user's involvement.
namespace pobblewig::Prompts {

/// For a model with function calls.
extern const QStringView nativeActionInstructions;

/// For a model that writes a fenced block: the format, a line for each action, and the keys of the
/// settings.
QString actionInstructions(const QStringList& actions);

} // namespace pobblewig::Prompts
