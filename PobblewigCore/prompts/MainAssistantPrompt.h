#pragma once

#include "foundation/Time.h"
#include "prompts/PlatformWording.h"
#include "prompts/SituationSnapshot.h"
#include "prompts/ToolLines.h"

namespace pobblewig {

/// What the system prompt of a chat turn is made from.
struct MainAssistantPrompt {
    /// The durable notes about the user; empty while the memory is off.
    QString memory;
    SituationSnapshot situation;
    bool hasImage = false;
    bool toolsAvailable = false;
    /// Whether the model calls functions; else it writes fenced blocks.
    bool nativeTools = true;
    ToolLines tools = {};
    TimePoint now;
    PlatformWording wording;
};

namespace Prompts {

/// The system prompt, built from scratch for every turn: what never changes comes first, the clock
/// last.
QString mainAssistant(const MainAssistantPrompt& prompt);

} // namespace Prompts

} // namespace pobblewig
