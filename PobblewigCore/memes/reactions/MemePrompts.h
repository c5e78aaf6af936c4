#pragma once

#include "settings/CompanionPersona.h"

namespace pobblewig::Prompts {

/// Asks which emotion a meme should express after an exchange.
QString memeReaction(
    const QString& userText, const QString& assistantText, CompanionPersona persona);

} // namespace pobblewig::Prompts
