#include "settings/ModeSwitch.h"

#include "settings/ModeLogic.h"
#include "support/FakeKeychain.h"

#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

class ModeSwitchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clockReads = 0;
        m_changes = 0;
        m_store.update([](AppSettings& settings) { settings = {}; });
        m_switch = std::make_unique<ModeSwitch>(
            m_store, [this] { return ++m_clockReads, m_now; }, [this] { ++m_changes; });
    }

    void aTemporaryModeLastsFromAMinuteToAWeek()
    {
        for (const auto& [minutes, lasts] : { std::pair(0, 1min), std::pair(-5, 1min),
                 std::pair(90, 90min), std::pair(10080, 10080min), std::pair(20000, 10080min) }) {
            m_switch->setTemporaryMode(CoachMode::focus, minutes);
            QVERIFY(settings().mode == CoachMode::focus);
            QVERIFY(settings().modeRevertAt == m_now + lasts);
        }
        QCOMPARE(m_changes, 5);
        // A timer counts no sleep of the computer, and no more milliseconds than an int holds.
        QVERIFY(ModeLogic::untilNextLook(24h * 365) == 1min);
        QVERIFY(ModeLogic::untilNextLook(3ms) == 3ms);
    }

    void itsEndIsWaitedForByTheClock()
    {
        arm(2ms);
        QTRY_VERIFY(m_clockReads > 3);
        QVERIFY(settings().mode == CoachMode::studying);
        QCOMPARE(m_changes, 0);
        m_now += 8h;
        QTRY_COMPARE(m_changes, 1);
        QVERIFY(settings().mode == CoachMode::openEnded && !settings().modeRevertAt);
    }

    void aModeThatIsSetMeanwhileStays()
    {
        arm(1ms);
        m_switch->setMode(CoachMode::relaxing);
        QVERIFY(settings().mode == CoachMode::relaxing && !settings().modeRevertAt);
        arm(1ms);
        enter(CoachMode::exercising, std::nullopt);
        const auto reads = m_clockReads;
        QTRY_VERIFY(m_clockReads > reads);
        QVERIFY(settings().mode == CoachMode::exercising);
        QCOMPARE(m_changes, 1);
    }

    void aStartTakesUpWhatIsLeft()
    {
        m_switch->restoreTemporaryModeRevert(m_now);
        QCOMPARE(m_changes, 0);
        enter(CoachMode::focus, m_now);
        m_switch->restoreTemporaryModeRevert(m_now);
        QVERIFY(settings().mode == CoachMode::openEnded && !settings().modeRevertAt);
        QCOMPARE(m_changes, 1);
        enter(CoachMode::focus, m_now + 1ms);
        m_now += 1ms;
        m_switch->restoreTemporaryModeRevert(m_now - 1ms);
        QVERIFY(settings().mode == CoachMode::focus);
        QTRY_VERIFY(settings().mode == CoachMode::openEnded);
    }

    void aPauseHasATimeOrLasts()
    {
        m_switch->pauseObservation(m_now + 1h);
        QVERIFY(m_store.isPaused(m_now + 1h - 1ms) && !m_store.isPaused(m_now + 1h));
        m_switch->pauseObservation(std::nullopt);
        QVERIFY(m_store.isPaused(m_now + 1h) && !settings().pausedUntil);
        m_switch->pauseObservation(m_now + 1h);
        QVERIFY(!m_store.isPaused(m_now + 1h));
        m_switch->resumeObservation();
        QVERIFY(!m_store.isPaused(m_now) && !settings().pausedUntil);
        QCOMPARE(m_changes, 4);
    }

private:
    const AppSettings& settings() const { return m_store.settings(); }

    void enter(CoachMode mode, std::optional<TimePoint> until)
    {
        m_store.update([&](AppSettings& settings) {
            settings.mode = mode;
            settings.modeRevertAt = until;
        });
    }

    void arm(std::chrono::milliseconds lasts)
    {
        enter(CoachMode::studying, m_now + lasts);
        m_switch->armModeRevert(m_now + lasts);
    }

    FakeKeychain m_keychain;
    SettingsStore m_store { std::nullopt, m_keychain };
    TimePoint m_now { 1772352900s };
    int m_clockReads = 0;
    int m_changes = 0;
    std::unique_ptr<ModeSwitch> m_switch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ModeSwitchTest)
#include "ModeSwitchTest.moc"
