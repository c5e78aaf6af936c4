#pragma once

#include "wire/LLMMessage.h"

namespace pobblewig {

inline const QString contextEnd = QStringLiteral("\n\nThe user's message:\n");

/// A message without the app's context in front of it.
inline QString withoutContext(const LLMMessage& message)
{
    return message.content.section(contextEnd, -1);
}

/// The system prompt and the app's context.
inline QString prompts(const std::vector<LLMMessage>& messages)
{
    QString text = messages.front().content;
    for (const auto& message : messages) {
        if (message.content.contains(contextEnd))
            text += message.content.section(contextEnd, 0, 0);
    }
    return text;
}

} // namespace pobblewig
