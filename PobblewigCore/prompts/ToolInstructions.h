#pragma once

#include <QStringList>

/// How the model looks things up.
namespace pobblewig::Prompts {

/// For a model that calls functions, with the names of the tools that it has to load first.
QString nativeToolInstructions(const QStringList& deferred);

/// For a model that asks by a fenced block: the format, and a line for each tool.
QString toolInstructions(const QStringList& lookups);

} // namespace pobblewig::Prompts
