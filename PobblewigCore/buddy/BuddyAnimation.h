#pragma once

#include "buddy/BuddyEyes.h"
#include "buddy/BuddyFrame.h"
#include "buddy/BuddyFramePacing.h"
#include "buddy/BuddyMemes.h"
#include "buddy/BuddySleep.h"
#include "buddy/BuddyWalk.h"

namespace pobblewig {

/// How a place that the buddy moves into presses and lifts it.
struct BuddyDock {
    double scale = 1;
    double squashY = 1;
    /// Points upwards.
    double lift = 0;

    bool operator==(const BuddyDock&) const = default;
};

/// The life of the buddy: what happens goes in, `tick` lets the time pass, `frame` says how it
/// looks. Times are seconds on any clock that never goes back.
class BuddyAnimation {
public:
    explicit BuddyAnimation(double now);

    const BuddyState& state() const { return m_state; }
    double sleepAmount() const { return m_sleep.amount(); }

    /// How often it has to tick.
    BuddyFramePacing::Interval interval(double now) const;

    /// How soon the next frame can differ from this one: nothing that sleeps soundly moves between
    /// two beats, so that nobody has to wake up for it.
    BuddyFramePacing::Interval untilNextFrame(double now) const;

    BuddyFrame frame(double now) const;

    /// Wakes it up. A state without a label that lasts already goes on as it is.
    void setState(BuddyState state, double now);

    void pet(double now);

    /// Something happened to it that is no reason to do anything but wake up.
    void stir(double now) { m_sleep.stir(now); }

    /// Lets it sleep at once, unless it has work to do, until something happens.
    void dozeOff(double now);

    void beginDragging(double now);
    void endDragging(double now) { m_walk.end(now); }

    /// Points.
    void windowMoved(QPointF by, double now) { m_walk.moved(by, now); }
    void mouseMoved(QPointF to, QSizeF view) { m_look = BuddyEyes::look(to, view); }
    void mouseExited() { m_look = {}; }

    /// Seconds, but never too short to be seen.
    void showMeme(MemeAnimation animation, double duration, double now);
    void dismissMeme() { m_memes.dismiss(); }

    /// What it wears in the place of its body as long as one is set, and while it sleeps.
    void setDefaultMeme(std::optional<BuddyMeme> meme, double now);
    void setSleepingMeme(std::optional<BuddyMeme> meme, double now);

    void setDock(const BuddyDock& dock) { m_dock = dock; }

    /// Whether nothing of it can be seen.
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
