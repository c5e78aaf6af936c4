#pragma once

#include <QStringView>

namespace pobblewig::Prompts {

/// What the user asks with a picture of the screen and no words.
inline constexpr QStringView visionUserPrompt =
    u"Look at this screenshot of my screen and answer my question.";

} // namespace pobblewig::Prompts
