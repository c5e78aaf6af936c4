#include "buddy/BuddyAnimation.h"

#include "buddy/BuddyPaws.h"
#include "buddy/BuddyPoses.h"
#include "buddy/BuddySmoothing.h"

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

using Kind = BuddyState::Kind;

constexpr double transitionDuration = 0.28;
constexpr double doneDuration = 3;
constexpr double pettingDuration = 1.5;

/// Which of some frames is seen, each for a part of a second.
int turn(double time, double framesASecond, int count)
{
    return int(std::fmod(time * framesASecond, count));
}

} // namespace

BuddyAnimation::BuddyAnimation(double now)
    : m_startTime(now)
    , m_lastTickAt(now)
    , m_stateStart(now)
    , m_stateTransitionStart(now - transitionDuration)
    , m_stateTransitionFrom(BuddyPoses::ofState(Kind::idle, 0, 0))
    , m_sleep(now)
    , m_petUntil(now)
    , m_dockMotionUntil(now)
{
}

BuddyFramePacing::Interval BuddyAnimation::interval(double now) const
{
    constexpr double visibleRain = 0.02;
    const auto isTransitioning = now - m_stateTransitionStart < transitionDuration
        || m_dockMotionUntil > now || m_matrixEnergy > visibleRain;
    return BuddyFramePacing::interval({
        .isOccluded = m_isOccluded,
        .isDragging = m_walk.isDragging(),
        .isMoving = m_walk.isMoving(now),
        .isPetting = isPetting(now),
        .hasMeme = m_memes.areLively(sleepAmount()),
        .hasHearts = !m_hearts.hearts().isEmpty(),
        .isTransitioning = isTransitioning,
        .isActiveState = m_state.kind != Kind::idle,
        .sleepAmount = sleepAmount(),
    });
}

BuddyFramePacing::Interval BuddyAnimation::untilNextFrame(double now) const
{
    const auto usual = interval(now);
    if (sleepAmount() < 1 || usual != BuddyFramePacing::asleep)
        return usual;
    // Timers may be early by a twentieth, and too early would be in vain.
    constexpr auto late = BuddySleep::beat / 10;
    const auto intoBeat = std::fmod(now - m_startTime, BuddySleep::beat);
    return BuddyFramePacing::Interval(BuddySleep::beat - intoBeat + late);
}

BuddyFrame BuddyAnimation::frame(double now) const
{
    const auto time = now - m_startTime;
    BuddyFrame frame {
        .time = time,
        .pose = pose(now),
        .look = look(now),
        .claws = claws(now),
        .sleepAmount = sleepAmount(),
        .letters = BuddySnore::letters(time, sleepAmount()),
        .rain = m_matrixEnergy,
        .badge = badge(now),
        .card = m_memes.card(now, sleepAmount()),
    };
    for (const auto& heart : m_hearts.hearts()) {
        const auto age = (now - heart.born) / BuddyHearts::lifetime;
        if (age >= 0 && age < 1)
            frame.hearts.append({ .x = heart.x, .age = age, .isLarge = heart.isLarge });
    }
    return frame;
}

void BuddyAnimation::setState(BuddyState state, double now)
{
    const auto lasts = state == m_state && state.kind != Kind::notify && state.kind != Kind::done;
    if (lasts)
        return;
    m_stateTransitionFrom = statePose(now);
    m_state = std::move(state);
    m_stateStart = now;
    m_stateTransitionStart = now;
    m_sleep.stir(now);
}

void BuddyAnimation::pet(double now)
{
    m_petUntil = now + pettingDuration;
    m_hearts.rise(now);
    m_sleep.stir(now);
}

void BuddyAnimation::dozeOff(double now)
{
    if (m_state.kind == Kind::working || m_state.kind == Kind::responding)
        return;
    setState({}, now);
    m_petUntil = now;
    m_sleep.dozeOff(now);
}

void BuddyAnimation::beginDragging(double now)
{
    m_walk.begin(now);
    m_sleep.stir(now);
}

void BuddyAnimation::showMeme(MemeAnimation animation, double duration, double now)
{
    m_memes.show(std::move(animation), duration, now);
    m_sleep.stir(now);
}

void BuddyAnimation::setDefaultMeme(std::optional<BuddyMeme> meme, double now)
{
    m_memes.setDefault(std::move(meme), now);
}

void BuddyAnimation::setSleepingMeme(std::optional<BuddyMeme> meme, double now)
{
    m_memes.setSleeping(std::move(meme), now);
}

void BuddyAnimation::tick(double now)
{
    const auto frames = BuddySmoothing::frames(now - m_lastTickAt);
    m_lastTickAt = now;
    if (m_state.kind == Kind::done && elapsed(now) > doneDuration)
        setState({}, now);
    m_hearts.tick(now);
    m_memes.tick(now);
    m_walk.tick(now, frames);
    m_sleep.tick(now, frames, m_state.kind == Kind::idle && !m_walk.isDragging());
    m_matrixEnergy = m_state.kind == Kind::working
        ? BuddySmoothing::approached(m_matrixEnergy, 1, 0.95, frames)
        : BuddySmoothing::approached(m_matrixEnergy, 0, 0.9, frames);
    if (m_dock != m_lastDock)
        m_dockMotionUntil = now + 0.15;
    m_lastDock = m_dock;
}

BuddyPose BuddyAnimation::statePose(double now) const
{
    const auto target = BuddyPoses::ofState(m_state.kind, now - m_startTime, elapsed(now));
    const auto since = now - m_stateTransitionStart;
    return BuddyPoses::blended(
        m_stateTransitionFrom, target, BuddySmoothing::eased(since / transitionDuration));
}

BuddyPose BuddyAnimation::pose(double now) const
{
    const auto time = now - m_startTime;
    const auto beat = std::floor(time / BuddySleep::beat) * BuddySleep::beat;
    const auto asleep = BuddyPoses::asleep(beat);
    auto pose = m_walk.added(BuddyPoses::blended(statePose(now), asleep, sleepAmount()));
    pose.sx *= m_dock.scale;
    pose.sy *= m_dock.scale * m_dock.squashY;
    pose.yOff += m_dock.lift;
    return pose;
}

EyeStyle BuddyAnimation::eyeStyle(double now) const
{
    if (isPetting(now))
        return EyeStyle::happy;
    if (m_sleep.areEyesClosed())
        return EyeStyle::closed;
    const auto style = BuddyEyes::style(m_state.kind, elapsed(now));
    if (style != EyeStyle::normal)
        return style;
    if (m_walk.isDragging())
        return EyeStyle::wide;
    return BuddyEyes::isBlinking(now - m_startTime) ? EyeStyle::closed : EyeStyle::normal;
}

int BuddyAnimation::pawFrame(double now) const
{
    if (isPetting(now))
        return BuddyPaws::petting + turn(now - m_startTime, 7, BuddyPaws::pettingFrames);
    if (m_state.kind == Kind::working)
        return BuddyPaws::typing + turn(elapsed(now), 6, BuddyPaws::typingFrames);
    return BuddyPaws::none;
}

BitmapKey BuddyAnimation::look(double now) const
{
    const auto isWorking = m_state.kind == Kind::working;
    const auto isReading = isWorking && m_look.isNull();
    return {
        .sprite = {},
        .gait = m_walk.gait(),
        .eyeStyle = eyeStyle(now),
        .dx = isReading ? BuddyEyes::reading(elapsed(now)) : m_look.x(),
        .dy = m_look.y(),
        .showGlasses = isWorking,
        .showLaptop = isWorking,
        .pawFrame = pawFrame(now),
    };
}

BuddyClaws BuddyAnimation::claws(double now) const
{
    constexpr int raised = 2;
    const auto isFirst = turn(elapsed(now), 6, 2) == 0;
    switch (m_state.kind) {
    case Kind::working:
        return { .left = isFirst ? 1 : 0, .right = isFirst ? 0 : 1 };
    case Kind::notify:
        return { .left = isFirst ? raised : 0, .right = isFirst ? 0 : raised };
    case Kind::surprised:
    case Kind::done:
        return { .left = raised, .right = raised };
    default:
        return isPetting(now) || m_walk.isDragging() ? BuddyClaws { 1, 1 } : BuddyClaws {};
    }
}

std::optional<BuddyBadge> BuddyAnimation::badge(double now) const
{
    constexpr double coming = 0.2;
    constexpr double going = 0.3;
    const auto since = elapsed(now);
    const auto comes = BuddySmoothing::eased(since / coming);
    if (m_state.kind == Kind::notify)
        return BuddyBadge { BuddyBadge::Mark::reminder, m_state.label, comes };
    if (m_state.kind != Kind::done)
        return std::nullopt;
    const auto goes = BuddySmoothing::eased((doneDuration - since) / going);
    return BuddyBadge { BuddyBadge::Mark::done, m_state.label, std::min(comes, goes) };
}

} // namespace pobblewig
