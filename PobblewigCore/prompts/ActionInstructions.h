#pragma once

#include <QStringList>

/// How the model changes something, each time by way of the user.
namespace pobblewig::Prompts {

/// For a model that calls functions.
extern const QStringView nativeActionInstructions;

/// For a model that writes a fenced block: the format, a line for each action, and the settings'
/// keys.
QString actionInstructions(const QStringList& actions);

} // namespace pobblewig::Prompts
