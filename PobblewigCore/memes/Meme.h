#pragma once

#include "memes/MemeAnimation.h"
#include "memes/MemeEmotion.h"

#include <set>

namespace pobblewig {

/// A picture with what it expresses, checked and decoded.
struct Meme {
    /// The name of its file.
    QString id;
    QString name;
    std::set<MemeEmotion> emotions;
    /// Positive.
    double weight = 1;
    /// Absent for a meme that comes with the program.
    std::optional<QString> folderID;
    std::set<MemeMascotSlot> mascotSlots;
    MemeAnimation animation;
    /// The file of the picture, if `animation` is only a small still of it.
    std::optional<QString> resting = {};
};

} // namespace pobblewig
