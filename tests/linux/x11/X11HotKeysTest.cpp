#include "PobblewigLinux/x11/X11HotKeys.h"

#include "support/Awaited.h"
#include "support/TableRow.h"

#include <QProcess>
#include <QSignalSpy>

namespace pobblewig {

class X11HotKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_ours = X11HotKeys::create();
        m_theirs = X11HotKeys::create();
        QVERIFY(m_ours && m_theirs);
        m_pressed.emplace(m_ours.get(), &HotKeyProviding::pressed);
        m_pressedThere.emplace(m_theirs.get(), &HotKeyProviding::pressed);
    }

    void cleanup() { run(QStringLiteral("setxkbmap us")); }

    void thePressArrivesWhateverIsLocked()
    {
        QVERIFY(assign(*m_ours, "Ctrl+Alt+Space"));
        for (const auto* lock : { "Caps_Lock", "Num_Lock" }) {
            const auto before = m_pressed->count();
            for (const auto* keys : { lock, "ctrl+alt+space", lock, "ctrl+alt+space" })
                press(QLatin1String(keys));
            QTRY_COMPARE(m_pressed->count(), before + 2);
        }
    }

    void keysThatAreTakenLeaveTheOnesBefore()
    {
        QVERIFY(assign(*m_ours, "Ctrl+Alt+Space"));
        QVERIFY(assign(*m_theirs, "Ctrl+Alt+P"));
        const auto outcome = assign(*m_ours, "Ctrl+Alt+P");
        QVERIFY(!outcome);
        QCOMPARE(outcome.error().kind, HotKeyError::Kind::taken);
        QVERIFY(outcome.error().description().contains(QStringLiteral("Ctrl+Alt+P")));
        press(QStringLiteral("ctrl+alt+p"));
        QTRY_COMPARE(m_pressedThere->count(), 1);
        press(QStringLiteral("ctrl+alt+space"));
        QTRY_COMPARE(m_pressed->count(), 1);
    }

    void otherKeysFreeTheOnesBefore()
    {
        QVERIFY(assign(*m_ours, "Ctrl+Alt+Space"));
        QVERIFY(!assign(*m_theirs, "Ctrl+Alt+Space"));
        QVERIFY(assign(*m_ours, "Ctrl+Alt+P"));
        QVERIFY(assign(*m_theirs, "Ctrl+Alt+Space"));
        QVERIFY(assign(*m_ours, ""));
        QVERIFY(assign(*m_theirs, "Ctrl+Alt+P"));
    }

    void keysThatNobodyCanPressAreRefused()
    {
        for (const auto* keys : { u"P", u"Ctrl+Alt+Ж", u"Ctrl+Launch (0)" }) {
            const auto outcome = awaited(m_ours->assign(QKeySequence(QString::fromUtf16(keys))));
            QVERIFY(!outcome);
            QCOMPARE(outcome.error().kind, HotKeyError::Kind::unusable);
        }
    }

    void theKeysFollowTheKeyboardLayout()
    {
        QVERIFY(assign(*m_ours, "Ctrl+Alt+Z"));
        run(QStringLiteral("setxkbmap de"));
        const auto isFollowed = [&] {
            press(QStringLiteral("ctrl+alt+z"));
            return m_pressed->wait(100);
        };
        QTRY_VERIFY(isFollowed());
        QVERIFY(assign(*m_theirs, "Ctrl+Alt+Y"));
    }

    void aKeyThatIsHeldIsPressedOnce_data()
    {
        QTest::addColumn<QString>("events");
        QTest::addColumn<int>("presses");
        row("twice", "+10 -50 +60 -90", 2);
        row("held", "+10 +670 +700 +730 -760 +900", 2);
        row("held, with releases made up", "+10 -670 +670 -700 +700 -760 +761", 2);
        row("let go unseen", "+10 +2100", 2);
        row("held for long", "+10 +1000 +2500 +4000", 1);
        row("the clock of the server turns over", "+4294967290 +4 -9 +20", 2);
    }
    void aKeyThatIsHeldIsPressedOnce()
    {
        QFETCH(QString, events);
        KeyRepeatFilter filter;
        int presses = 0;
        for (const auto& event : events.split(u' ')) {
            const auto time = event.mid(1).toUInt();
            if (event.startsWith(u'-'))
                filter.release(time);
            else
                presses += filter.press(time);
        }
        QTEST(presses, "presses");
    }

private:
    static HotKeyProviding::Outcome assign(X11HotKeys& hotKeys, const char* keys)
    {
        return awaited(hotKeys.assign(QKeySequence(QLatin1String(keys))));
    }

    static void run(const QString& command)
    {
        QProcess process;
        process.startCommand(QStringLiteral("timeout 20 ") + command);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
    }

    static void press(const QString& keys) { run(QStringLiteral("xdotool key ") + keys); }

    std::unique_ptr<X11HotKeys> m_ours;
    std::unique_ptr<X11HotKeys> m_theirs;
    std::optional<QSignalSpy> m_pressed;
    std::optional<QSignalSpy> m_pressedThere;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::X11HotKeysTest)
#include "X11HotKeysTest.moc"
