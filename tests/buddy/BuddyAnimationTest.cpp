#include "buddy/BuddyAnimation.h"

#include "buddy/BuddyPaws.h"
#include "buddy/BuddyPoses.h"
#include "support/TableRow.h"

#include <numbers>

namespace pobblewig {

namespace {

using Kind = BuddyState::Kind;
using Interval = BuddyFramePacing::Interval;

MemeAnimation picture(int frames)
{
    return { std::vector(size_t(frames), QImage(1, 1, QImage::Format_ARGB32_Premultiplied)),
        std::vector(size_t(frames), 0.1) };
}

/// A buddy whose clock is turned by hand.
struct Scene {
    double now = 1000;
    BuddyAnimation buddy { now };

    void pass(double seconds, double interval = 1.0 / 60)
    {
        const auto ticks = qRound(seconds / interval);
        for (int i = 0; i < ticks; ++i) {
            now += interval;
            buddy.tick(now);
        }
    }
    void enter(Kind kind) { buddy.setState({ kind, u"Lab report"_s }, now); }
    BuddyFrame frame() const { return buddy.frame(now); }
    auto interval() const { return buddy.interval(now); }
};

using Act = std::function<void(Scene&)>;
const Act nothing = [](Scene&) {};
const Act work = [](Scene& scene) { scene.enter(Kind::working); };
const Act pet = [](Scene& scene) { scene.buddy.pet(scene.now); };
const Act carry = [](Scene& scene) { scene.buddy.beginDragging(scene.now); };

/// First one, then for so long nothing, then the other.
Act after(const Act& first, double seconds, const Act& second)
{
    return [=](Scene& scene) {
        first(scene);
        scene.pass(seconds, 0.1);
        second(scene);
    };
}

Act entering(Kind kind)
{
    return [kind](Scene& scene) { scene.enter(kind); };
}

} // namespace

class BuddyAnimationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStateHasItsPose_data()
    {
        columns<Kind, double, BuddyPose>("state", "seconds", "expected");
        constexpr auto quarter = std::numbers::pi / 2;
        row("deepest breath", Kind::idle, quarter / 1.45,
            BuddyPose { 0.008 * std::sin(1.1 * quarter / 1.45), 0.988, 1.016, 0,
                0.8 * std::sin(1.25 * quarter / 1.45) });
        row("typing", Kind::working, 1.0 / 18, BuddyPose { .yOff = 1 });
        row("speaking", Kind::responding, quarter / 2.6,
            BuddyPose { 0.02 * std::sin(0.9 * quarter / 2.6), 0.985, 1.02, 0,
                1.2 * std::sin(2.2 * quarter / 2.6) });
        row("startled", Kind::surprised, 7.0, BuddyPose { .sx = 0.96, .sy = 1.05 });
        row("shaking", Kind::notify, quarter / 8, BuddyPose { 0, 0.95, 1.06, 4, 3 });
        row("shaking back", Kind::notify, 3 * quarter / 8, BuddyPose { 0, 0.95, 1.06, -4, 3 });
        row("about to hop", Kind::done, 0.0, BuddyPose { .sx = 1.09, .sy = 0.88 });
        row("in the air", Kind::done, quarter / 9,
            BuddyPose { 0, 1 - 0.09 * std::exp(-1.2 * quarter / 9),
                1 + 0.12 * std::exp(-1.2 * quarter / 9), 0, 14 * std::exp(-1.2 * quarter / 9) });
    }
    void aStateHasItsPose()
    {
        QFETCH(Kind, state);
        QFETCH(double, seconds);
        QFETCH(BuddyPose, expected);
        const auto pose = BuddyPoses::ofState(state, seconds, seconds);
        for (const auto part : { &BuddyPose::tilt, &BuddyPose::sx, &BuddyPose::sy, &BuddyPose::xOff,
                 &BuddyPose::yOff })
            QVERIFY(std::abs(pose.*part - expected.*part) < 1e-9);
    }

    void aNewStateIsBlendedIn()
    {
        // At once it is as before, then a quarter of the way, half of it, and over.
        for (const auto& [seconds, height] : { std::pair(0.0, 1.0), { 0.07, 1 + 0.05 * 0.15625 },
                 { 0.14, 1.025 }, { 0.28, 1.05 }, { 9.0, 1.05 } }) {
            Scene scene;
            scene.enter(Kind::working);
            scene.now += 1;
            scene.enter(Kind::surprised);
            scene.now += seconds;
            QVERIFY(std::abs(scene.frame().pose.sy - height) < 1e-9);
        }
    }

    void aBlendStartsFromWhatIsShown()
    {
        Scene scene;
        scene.enter(Kind::surprised);
        scene.now += 0.1;
        const auto shown = scene.frame().pose;
        scene.enter(Kind::notify);
        QCOMPARE(scene.frame().pose, shown);
    }

    void doneIsOverAfterThreeSeconds()
    {
        Scene scene;
        scene.enter(Kind::done);
        scene.pass(2.9);
        QCOMPARE(scene.frame().badge->label, u"Lab report"_s);
        scene.enter(Kind::done);
        scene.pass(2.9);
        QCOMPARE(scene.buddy.state().kind, Kind::done);
        scene.pass(0.2);
        QCOMPARE(scene.buddy.state(), BuddyState {});
        QVERIFY(!scene.frame().badge);
    }

    void itSleepsWhenNothingHappens_data()
    {
        columns<Act, double, bool>("act", "seconds", "sleeps");
        const Act idle = [](Scene& scene) { scene.buddy.setState({}, scene.now); };
        row("not yet", nothing, 290.0, false);
        row("after five minutes", nothing, 302.0, true);
        row("at work", work, 700.0, false);
        row("carried", carry, 700.0, false);
        row("petted a while ago", after(nothing, 200, pet), 200.0, false);
        row("idle as before", after(nothing, 200, idle), 110.0, true);
        row("told what lasts already", after(entering(Kind::notify), 200, idle), 200.0, false);
    }
    void itSleepsWhenNothingHappens()
    {
        QFETCH(Act, act);
        QFETCH(double, seconds);
        Scene scene;
        act(scene);
        scene.pass(seconds, 0.1);
        QTEST(scene.buddy.sleepAmount() > 0.5, "sleeps");
    }

    void itSleepsAtOnceWhenItIsToldTo_data()
    {
        columns<Act, bool>("act", "sleeps");
        const Act doze = [](Scene& scene) { scene.buddy.dozeOff(scene.now); };
        const Act stir = [](Scene& scene) { scene.buddy.stir(scene.now); };
        row("idle", doze, true);
        row("with a reminder", after(entering(Kind::notify), 0.5, doze), true);
        row("petted", after(pet, 0.5, doze), true);
        row("at work", after(work, 0.5, doze), false);
        row("touched again", after(doze, 3, stir), false);
        row("asked something", after(doze, 0, entering(Kind::responding)), false);
    }
    void itSleepsAtOnceWhenItIsToldTo()
    {
        QFETCH(Act, act);
        Scene scene;
        act(scene);
        scene.pass(4);
        QTEST(scene.buddy.sleepAmount() > 0.9, "sleeps");
    }

    void itDozesOffSlowlyAndWakesQuickly()
    {
        Scene scene;
        scene.pass(300, 0.1);
        auto seconds = 0;
        for (; scene.buddy.sleepAmount() < 1; ++seconds)
            scene.pass(1);
        QVERIFY(seconds >= 2 && seconds < 10);
        QVERIFY(scene.buddy.untilNextFrame(scene.now).count() <= 1.1 * BuddySleep::beat);
        scene.now = std::floor(scene.now) + 0.001;
        QVERIFY(scene.buddy.untilNextFrame(scene.now) > scene.interval());
        scene.enter(Kind::responding);
        scene.pass(0.5);
        QVERIFY(scene.buddy.sleepAmount() < 0.01);
        QCOMPARE(scene.buddy.untilNextFrame(scene.now), scene.interval());
    }

    void aStallCountsAsAQuarterOfASecond()
    {
        Scene stalled;
        stalled.pass(300, 300);
        Scene punctual;
        punctual.now += 299.75;
        punctual.buddy.tick(punctual.now);
        punctual.pass(0.25, 0.25);
        QVERIFY(stalled.buddy.sleepAmount() > 0);
        QCOMPARE(stalled.buddy.sleepAmount(), punctual.buddy.sleepAmount());
    }

    void smoothingIsTheSameAtEveryRate()
    {
        Scene fast;
        Scene slow;
        fast.enter(Kind::working);
        slow.enter(Kind::working);
        fast.pass(0.5);
        slow.pass(0.5, 0.1);
        QVERIFY(std::abs(fast.frame().rain - (1 - std::pow(0.95, 30))) < 1e-9);
        QVERIFY(std::abs(fast.frame().rain - slow.frame().rain) < 1e-9);
    }

    void aFrameComesAsOftenAsThereIsMotion_data()
    {
        columns<Act, double, Interval>("act", "seconds", "expected");
        const auto full = BuddyFramePacing::full;
        const auto idle = BuddyFramePacing::idle;
        const auto finish = after(work, 5, entering(Kind::idle));
        const auto moved = [](double x, double y) {
            return Act([=](Scene& scene) { scene.buddy.windowMoved({ x, y }, scene.now); });
        };
        const auto wear = [](int frames) {
            return Act([=](Scene& scene) {
                scene.buddy.setDefaultMeme(BuddyMeme { {}, picture(frames) }, scene.now);
            });
        };
        const Act wearAsleep = [](Scene& scene) {
            scene.buddy.setSleepingMeme(BuddyMeme { {}, picture(2) }, scene.now);
        };
        const Act dock = [](Scene& scene) { scene.buddy.setDock({ .lift = 3 }); };
        const Act hide = [](Scene& scene) { scene.buddy.setOccluded(true); };
        row("at rest", nothing, 0.1, idle);
        row("at work", work, 60.0, full);
        row("the rain dries up", finish, 0.5, full);
        row("dry", finish, 1.5, idle);
        row("held still", carry, 60.0, full);
        row("on the way", moved(0.06, 0), 0.15, full);
        row("arrived", moved(0.06, 0), 1.0, idle);
        row("trembling", moved(0.03, 0.04), 0.1, idle);
        row("hearts", pet, 1.9, full);
        row("after the hearts", pet, 2.5, idle);
        row("a picture", wear(1), 1.0, idle);
        row("a moving picture", wear(2), 60.0, full);
        row("a picture for the night, by day", wearAsleep, 60.0, idle);
        row("by night", wearAsleep, 310.0, full);
        row("pressed", dock, 0.1, full);
        row("out of sight, even at work", after(work, 0, hide), 5.0, BuddyFramePacing::occluded);
    }
    void aFrameComesAsOftenAsThereIsMotion()
    {
        QFETCH(Act, act);
        QFETCH(double, seconds);
        Scene scene;
        act(scene);
        scene.pass(seconds);
        QTEST(scene.interval(), "expected");
    }

    void aMemeIsShownForAWhile()
    {
        // How long it is to be shown, and how long it then is: at least a second and a half.
        for (const auto& [duration, shown] : { std::pair(4.5, 4.5), { 0.5, 1.5 } }) {
            Scene scene;
            scene.buddy.showMeme(picture(1), duration, scene.now);
            scene.pass(shown - 0.1);
            QVERIFY(scene.frame().card && scene.interval() == BuddyFramePacing::full);
            scene.pass(0.2);
            QVERIFY(!scene.frame().card && scene.interval() != BuddyFramePacing::full);
        }
    }

    void theEyesFollowThePointer()
    {
        Scene scene;
        const auto look = [&] { return QPoint(scene.frame().look.dx, scene.frame().look.dy); };
        const std::pair<QPointF, QPoint> expected[] { { { 50, 40 }, { 0, 0 } },
            { { 58, 32 }, { 0, 0 } }, { { 58.5, 31.5 }, { 1, -1 } }, { { 0, 80 }, { -1, 1 } } };
        for (const auto& [pointer, direction] : expected) {
            scene.buddy.mouseMoved(pointer, { 100, 80 });
            QCOMPARE(look(), direction);
        }
        scene.buddy.mouseExited();
        QCOMPARE(look(), QPoint());
    }

    void pettingMakesHappyForAMoment()
    {
        Scene scene;
        for (int i = 0; i < 20; ++i) {
            scene.buddy.pet(scene.now);
            scene.pass(0.1);
        }
        QCOMPARE(scene.frame().look.eyeStyle, EyeStyle::happy);
        QVERIFY(scene.frame().look.pawFrame != BuddyPaws::none);
        QVERIFY(!scene.frame().hearts.isEmpty());
        scene.pass(3);
        QCOMPARE(scene.frame().look.pawFrame, BuddyPaws::none);
        QVERIFY(scene.frame().hearts.isEmpty());
    }

    void itWalksWhileTheGroundMoves()
    {
        Scene scene;
        scene.buddy.beginDragging(scene.now);
        std::set<MascotGait> gaits;
        for (int i = 0; i < 30; ++i) {
            scene.buddy.windowMoved({ 4, 0 }, scene.now);
            scene.pass(1.0 / 60);
            gaits.insert(scene.frame().look.gait);
        }
        QCOMPARE(gaits, (std::set { MascotGait::walkA, MascotGait::walkB, MascotGait::walkC }));
        scene.buddy.endDragging(scene.now);
        scene.pass(0.5);
        QCOMPARE(scene.frame().look.gait, MascotGait::idle);
    }

    void itBlinksNowAndThen()
    {
        Scene scene;
        auto blinks = 0;
        auto closed = 0;
        auto before = EyeStyle::normal;
        for (int i = 0; i < 60 * 15; ++i) {
            scene.pass(1.0 / 15, 1.0 / 15);
            const auto style = scene.frame().look.eyeStyle;
            closed += style == EyeStyle::closed ? 1 : 0;
            blinks += style == EyeStyle::closed && before == EyeStyle::normal ? 1 : 0;
            before = style;
        }
        QVERIFY(blinks >= 12 && blinks <= 30);
        QVERIFY(closed <= 3 * blinks);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyAnimationTest)
#include "BuddyAnimationTest.moc"
