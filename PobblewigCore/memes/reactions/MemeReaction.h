#pragma once

#include "memes/Meme.h"

namespace pobblewig {

/// A meme that was chosen for a moment of the conversation.
struct MemeReaction {
    MemeEmotion emotion = MemeEmotion::amused;
    /// From 0 to 1.
    double confidence = 0;
    Meme meme;
};

} // namespace pobblewig
