#pragma once

#include "memes/Meme.h"

#include <array>
#include <functional>
#include <map>

namespace pobblewig {

/// Picks among the memes of an emotion, in memory and without looking at the others.
class MemePicker {
public:
    /// The memes must be in the order of their ids, and outlive the picker unchanged.
    explicit MemePicker(const std::vector<Meme>& memes);
    MemePicker() = default;

    /// A meme of the emotion, the heavier the more often. Not the excluded one, unless there is no
    /// other. `random` gives a number from 0 to below 1. Null if there is none.
    const Meme* pick(MemeEmotion emotion, const std::optional<QString>& excludingID,
        const std::function<double()>& random) const;

private:
    static constexpr size_t emotionCount = size_t(MemeEmotion::devoted) + 1;

    std::array<std::vector<const Meme*>, emotionCount> m_candidates;
};

/// The memes that the mascot wears: the first that claims a slot. Neither packs nor the memes that
/// come with the program do.
std::map<MemeMascotSlot, Meme> mascotMemes(const std::vector<Meme>& memes);

} // namespace pobblewig
