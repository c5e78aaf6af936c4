#pragma once

#include <QString>

/// How the model looks things up.
namespace pobblewig::Prompts {

/// For a model that calls functions. Names the tools that it has to load first.
extern const QStringView nativeToolInstructions;

enum class AccountabilityTools { leftOut, included };

/// For a model that asks by a fenced block: the format and every tool.
QString toolInstructions(AccountabilityTools includeAccountabilityTools);

} // namespace pobblewig::Prompts
