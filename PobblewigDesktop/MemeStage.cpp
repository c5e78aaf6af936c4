#include "PobblewigDesktop/MemeStage.h"

namespace pobblewig {

namespace {

std::optional<BuddyMeme> worn(const std::map<MemeMascotSlot, Meme>& memes, MemeMascotSlot slot)
{
    const auto found = memes.find(slot);
    if (found == memes.end())
        return std::nullopt;
    return BuddyMeme { found->second.id, found->second.animation };
}

} // namespace

MemeStage::MemeStage(BuddyView& view)
    : m_view(view)
{
}

void MemeStage::follow(AppCoordinator& coordinator)
{
    m_coordinator = &coordinator;
    coordinator.onMemeReaction = [this](const MemeReaction& reaction) {
        m_view.showMeme(reaction.meme.animation);
    };
    connect(&coordinator, &AppCoordinator::stateChanged, this, &MemeStage::showState);
    showState();
}

void MemeStage::showState()
{
    const auto& state = m_coordinator->state();
    const Wardrobe wardrobe { state.of<SettingsState>().settings.mascot,
        state.of<MemesState>().scans };
    if (std::exchange(m_wardrobe, wardrobe) == wardrobe)
        return;
    QCoro::connect(m_coordinator->memes().wornMemes(), this,
        [this](const std::map<MemeMascotSlot, Meme>& memes) { wear(memes); });
}

void MemeStage::wear(const std::map<MemeMascotSlot, Meme>& memes)
{
    m_view.setDefaultMeme(worn(memes, MemeMascotSlot::byDefault));
    m_view.setSleepingMeme(worn(memes, MemeMascotSlot::sleeping));
}

} // namespace pobblewig
