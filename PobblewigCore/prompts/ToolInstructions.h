#pragma once

#include <QStringList>

/// How the model looks things up.
namespace pobblewig::Prompts {

/// For a model with function calls, with the names of the tools that it has to load first.
QString nativeToolInstructions(const QStringList& deferred);

/// For a model that writes a fenced block: the format, and a line for each tool.
QString toolInstructions(const QStringList& lookups);

} // namespace pobblewig::Prompts
