#pragma once

#include "foundation/Time.h"
#include "prompts/PlatformWording.h"
#include "prompts/SituationSnapshot.h"
#include "prompts/ToolLines.h"

#include <vector>

namespace pobblewig {

/// The material for what a model is told in a chat turn besides the conversation.
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

    /// Takes out what comes from the user's memory.
    void forgetMemory();
};

/// What a part of the prompt is about.
enum class PromptPart {
    identity,
    principles,
    voice,
    tools,
    actions,
    reference,
    notes,
    openEnds,
    session,
    situation,
    clock,
};

struct PromptSection {
    PromptPart part = PromptPart::identity;
    QString text;

    bool operator==(const PromptSection&) const = default;
};

namespace Prompts {

/// The sections of `mainAssistant` in their order, those without a text included.
std::vector<PromptSection> mainAssistantSections(const MainAssistantPrompt& prompt);

/// The same for `appContext`.
std::vector<PromptSection> appContextSections(const MainAssistantPrompt& prompt);

/// The system prompt. It changes only with the settings and the memory, so that a server can reuse
/// what it computed for the previous turn.
QString mainAssistant(const MainAssistantPrompt& prompt);

/// What changes with every turn: the session, the situation and the clock. It stands in front of
/// the text of the user's newest message and is not stored.
QString appContext(const MainAssistantPrompt& prompt);

} // namespace Prompts

} // namespace pobblewig
