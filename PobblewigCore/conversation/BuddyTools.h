#pragma once

#include "prompts/PlatformWording.h"
#include "wire/LLMMessage.h"

#include <vector>

/// The functions that a model is offered.
namespace pobblewig::BuddyTools {

enum class ScreenCapture { notOffered, offered };
enum class AccountabilityTools { notOffered, offered };

/// Those that read, as far as they are offered from the start.
std::vector<LLMToolDefinition> retrievalTools(ScreenCapture includeScreenCapture,
    AccountabilityTools includeAccountabilityTools,
    const PlatformWording& wording = PlatformWording::linuxDesktop);

/// Those that the model has to load by `describe_tool`, which keeps the requests small.
const std::vector<LLMToolDefinition>& deferredRetrievalTools();

/// Null for an unknown name.
const LLMToolDefinition* deferredTool(const QString& name);

/// Those that change something, each by way of the user.
const std::vector<LLMToolDefinition>& actionTools();
bool isActionTool(const QString& name);

} // namespace pobblewig::BuddyTools
