#pragma once

#include "buddy/BuddyEyes.h"
#include "buddy/BuddyFrame.h"
#include "buddy/BuddyFramePacing.h"
#include "buddy/BuddyMemes.h"
#include "buddy/BuddySleep.h"
#include "buddy/BuddyWalk.h"

namespace pobblewig {

/// How a place that the buddy moves into squeezes and lifts it.
struct BuddyDock {
    double scale = 1;
    double squashY = 1;
    /// Points upwards.
    double lift = 0;

    bool operator==(const BuddyDock&) const = default;
};

/// The life of the buddy: events go in, `tick` lets time pass, and `frame` returns how the buddy
/// looks. Times are seconds on any clock that never goes back.
class BuddyAnimation {
public:
    explicit BuddyAnimation(double now);

    const BuddyState& state() const { return m_state; }
    double sleepAmount() const { return m_sleep.amount(); }

    /// How often it needs a tick.
    BuddyFramePacing::Interval interval(double now) const;

    /// How soon the next frame can differ from this one. A sound sleeper does not move between two
    /// beats, so nobody needs to wake up for it.
    BuddyFramePacing::Interval untilNextFrame(double now) const;

    BuddyFrame frame(double now) const;

    /// Wakes the buddy up. If it is in this state already and there is no label, the state simply
    /// continues.
    void setState(BuddyState state, double now);

    void pet(double now);

    /// Wakes the buddy up, for events that call for no other reaction.
    void stir(double now) { m_sleep.stir(now); }

    /// How long nothing must happen before the buddy falls asleep.
    void setSleepDelay(double seconds) { m_sleep.setDelay(seconds); }

    /// Lets the buddy sleep at once, unless it has work to do, until something happens.
    void dozeOff(double now);

    void beginDragging(double now);
    void endDragging(double now) { m_walk.end(now); }

    /// `by` is in points.
    void windowMoved(QPointF by, double now) { m_walk.moved(by, now); }
    void mouseMoved(QPointF to, QSizeF view) { m_look = BuddyEyes::look(to, view); }
    void mouseExited() { m_look = {}; }

    /// `duration` is in seconds, but a meme is never too short to be seen.
    void showMeme(MemeAnimation animation, double duration, double now);
    void dismissMeme() { m_memes.dismiss(); }

    /// The meme that the buddy wears in place of its body whenever one is set, and the one for its
    /// sleep.
    void setDefaultMeme(std::optional<BuddyMeme> meme, double now);
    void setSleepingMeme(std::optional<BuddyMeme> meme, double now);

    void setDock(const BuddyDock& dock) { m_dock = dock; }

    /// Sets whether nothing of the buddy can be seen.
    void setOccluded(bool isOccluded) { m_isOccluded = isOccluded; }

    void tick(double now);

private:
    double elapsed(double now) const { return now - m_stateStart; }
    bool isPetting(double now) const { return m_petUntil > now; }
    BuddyPose statePose(double now) const;
    BuddyPose pose(double now) const;
    EyeStyle eyeStyle(double now) const;
    int pawFrame(double now) const;
    BitmapKey look(double now) const;
    BuddyClaws claws(double now) const;
    std::optional<BuddyBadge> badge(double now) const;

    double m_startTime;
    double m_lastTickAt;
    BuddyState m_state;
    double m_stateStart;
    double m_stateTransitionStart;
    BuddyPose m_stateTransitionFrom;
    BuddySleep m_sleep;
    BuddyWalk m_walk;
    BuddyHearts m_hearts;
    BuddyMemes m_memes;
    QPoint m_look;
    double m_petUntil;
    double m_matrixEnergy = 0;
    BuddyDock m_dock;
    BuddyDock m_lastDock;
    double m_dockMotionUntil;
    bool m_isOccluded = false;
};

} // namespace pobblewig
