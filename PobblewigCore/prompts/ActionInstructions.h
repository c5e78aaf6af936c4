#pragma once

#include <QString>

/// How the model changes something, each time by way of the user.
namespace pobblewig::Prompts {

/// For a model that calls functions.
extern const QStringView nativeActionInstructions;

/// For a model that writes a fenced block: the format, each action and the settings' keys.
QString actionInstructions();

} // namespace pobblewig::Prompts
