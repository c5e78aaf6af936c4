#pragma once

#include "foundation/Time.h"
#include "prompts/PlatformWording.h"
#include "prompts/SituationSnapshot.h"
#include "prompts/ToolLines.h"

namespace pobblewig {

/// The material for the system prompt of a chat turn.
struct MainAssistantPrompt {
    /// The durable notes about the user; empty while the memory is off.
    QString memory;
    SituationSnapshot situation;
    bool hasImage = false;
    bool toolsAvailable = false;
    /// Whether the model has function calls; otherwise it writes fenced blocks.
    bool nativeTools = true;
    ToolLines tools = {};
    TimePoint now;
    PlatformWording wording;
};

namespace Prompts {

/// The system prompt, rebuilt for every turn. Constant parts come first, the clock last.
QString mainAssistant(const MainAssistantPrompt& prompt);

} // namespace Prompts

} // namespace pobblewig
