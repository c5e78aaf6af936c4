#pragma once

#include "PobblewigStarterMemes/Film.h"
#include "memes/MemeEmotion.h"
#include "memes/MemeManifest.h"

#include <span>

namespace pobblewig {

/// One of the reactions that come with the program.
struct Reaction {
    /// The file's name without its ending.
    const char* id = nullptr;
    const char* name = nullptr;
    Film (*draw)() = nullptr;
    MemeEmotion emotion = {};
    std::optional<MemeEmotion> secondEmotion = {};

    QString file() const;
    std::vector<QString> tags() const;

    /// In the order of their emotions.
    static std::span<const Reaction> all();

    static MemeManifest manifest();
};

} // namespace pobblewig
