#include "memes/MemePicker.h"

#include "memes/MemeFolders.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// A random number of 1 must not lead behind the last meme.
constexpr double largestRandom = 0.999999;

} // namespace

MemePicker::MemePicker(const std::vector<Meme>& memes)
{
    for (const auto& meme : memes) {
        for (const auto emotion : meme.emotions)
            m_candidates[size_t(emotion)].push_back(&meme);
    }
}

const Meme* MemePicker::pick(MemeEmotion emotion, const std::optional<QString>& excludingID,
    const std::function<double()>& random) const
{
    const auto& candidates = m_candidates[size_t(emotion)];
    const auto isOpen = [&, hasChoice = candidates.size() > 1](
                            const Meme* meme) { return !hasChoice || meme->id != excludingID; };
    auto sum = 0.0;
    for (const auto* meme : candidates)
        sum += isOpen(meme) ? meme->weight : 0;
    if (!(sum > 0))
        return nullptr;
    auto rest = std::clamp(random(), 0.0, largestRandom) * sum;
    const Meme* last = nullptr;
    for (const auto* meme : candidates) {
        if (!isOpen(meme))
            continue;
        last = meme;
        rest -= meme->weight;
        if (rest <= 0)
            break;
    }
    return last;
}

std::map<MemeMascotSlot, Meme> mascotMemes(const std::vector<Meme>& memes)
{
    std::map<MemeMascotSlot, Meme> worn;
    for (const auto& meme : memes) {
        if (!meme.folderID || meme.folderID->startsWith(MemeFolders::communityIDPrefix))
            continue;
        for (const auto slot : meme.mascotSlots)
            worn.try_emplace(slot, meme);
    }
    return worn;
}

} // namespace pobblewig
