#include "buddy/BuddyMemes.h"

#include <algorithm>

namespace pobblewig {

std::optional<BuddyCard> BuddyMemes::card(double now, double sleepAmount) const
{
    constexpr double halfAsleep = 0.5;
    if (m_shown)
        return BuddyCard { .picture = m_shown->animation.frame(now - m_shown->startedAt) };
    if (m_default && m_sleeping && sleepAmount > 0) {
        return BuddyCard { .picture = m_default->frame(now),
            .next = m_sleeping->frame(now),
            .nextOpacity = sleepAmount };
    }
    if (m_default)
        return BuddyCard { .picture = m_default->frame(now) };
    if (m_sleeping && sleepAmount > halfAsleep)
        return BuddyCard { .picture = m_sleeping->frame(now) };
    return std::nullopt;
}

bool BuddyMemes::areLively(double sleepAmount) const
{
    constexpr double noticeable = 0.01;
    const auto moves = [](const auto& worn) { return worn && worn->meme.animation.isMoving(); };
    return m_shown || moves(m_default) || (sleepAmount > noticeable && moves(m_sleeping));
}

void BuddyMemes::show(MemeAnimation animation, double duration, double now)
{
    m_shown = Shown { .animation = std::move(animation),
        .startedAt = now,
        .duration = std::max(duration, shortestDuration) };
}

void BuddyMemes::setDefault(std::optional<BuddyMeme> meme, double now)
{
    set(m_default, std::move(meme), now);
}

void BuddyMemes::setSleeping(std::optional<BuddyMeme> meme, double now)
{
    set(m_sleeping, std::move(meme), now);
}

void BuddyMemes::tick(double now)
{
    if (m_shown && now - m_shown->startedAt > m_shown->duration)
        m_shown.reset();
}

void BuddyMemes::set(std::optional<Worn>& worn, std::optional<BuddyMeme> meme, double now)
{
    if (worn && meme && worn->meme.id == meme->id)
        return;
    worn.reset();
    if (meme)
        worn = Worn { .meme = *std::move(meme), .setAt = now };
}

} // namespace pobblewig
