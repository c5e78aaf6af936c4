#pragma once

#include "memes/MemeAnimation.h"

#include <optional>

namespace pobblewig {

/// A meme that the user gave the mascot to wear.
struct BuddyMeme {
    QString id;
    MemeAnimation animation;
};

/// The pictures that replace the buddy's body at a moment.
struct BuddyCard {
    QImage picture;
    /// Lies over the first picture as it takes over.
    QImage next;
    double nextOpacity = 0;
};

/// The memes that the buddy shows: one for a short while, or those that it wears.
class BuddyMemes {
public:
    /// How long a reaction is usually shown, in seconds.
    static constexpr double displayDuration = 4.5;
    static constexpr double shortestDuration = 1.5;

    /// Returns nothing while the buddy shows itself.
    std::optional<BuddyCard> card(double now, double sleepAmount) const;

    /// Returns whether a picture moves, or will soon go.
    bool areLively(double sleepAmount) const;

    void show(MemeAnimation animation, double duration, double now);
    void dismiss() { m_shown.reset(); }

    /// A meme with the same id continues as it is.
    void setDefault(std::optional<BuddyMeme> meme, double now);
    void setSleeping(std::optional<BuddyMeme> meme, double now);

    void tick(double now);

private:
    struct Shown {
        MemeAnimation animation;
        double startedAt = 0;
        double duration = 0;
    };

    struct Worn {
        BuddyMeme meme;
        double setAt = 0;

        const QImage& frame(double now) const { return meme.animation.frame(now - setAt); }
    };

    static void set(std::optional<Worn>& worn, std::optional<BuddyMeme> meme, double now);

    std::optional<Shown> m_shown;
    std::optional<Worn> m_default;
    std::optional<Worn> m_sleeping;
};

} // namespace pobblewig
