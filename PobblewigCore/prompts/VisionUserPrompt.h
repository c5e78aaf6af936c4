#pragma once

#include <QStringView>

namespace pobblewig::Prompts {

/// The user's question when there is a picture of the screen but no text.
inline constexpr QStringView visionUserPrompt =
    u"Look at this screenshot of my screen and answer my question.";

} // namespace pobblewig::Prompts
