#include "PobblewigLinux/SessionObservation.h"

#include "FakeCompositor.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QRegularExpression>

namespace pobblewig {

using namespace std::chrono_literals;

/// The desktop's side of GNOME's idle monitor.
class FakeMutter : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Mutter.IdleMonitor")

public:
    static constexpr quint32 idleWatch = 7;
    static constexpr quint32 activeWatch = 8;

    quint64 wanted = 0;
    bool isActiveWatched = false;

public Q_SLOTS:
    quint32 AddIdleWatch(quint64 milliseconds)
    {
        wanted = milliseconds;
        return idleWatch;
    }
    quint32 AddUserActiveWatch()
    {
        isActiveWatched = true;
        return activeWatch;
    }

Q_SIGNALS:
    void WatchFired(quint32 watch);
};

/// KWin, as far as it runs scripts: it reads where ours would call, and calls there.
class FakeKWin : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Scripting")

public:
    QString script;
    bool isStarted = false;

    QDBusMessage activation(const QStringList& window) const
    {
        static const QRegularExpression call(
            QStringLiteral("callDBus\\('(.*)', '(.*)', '(.*)', '(.*)',"));
        const auto found = call.match(script);
        auto message = QDBusMessage::createMethodCall(
            found.captured(1), found.captured(2), found.captured(3), found.captured(4));
        message.setArguments({ window.value(0), window.value(1), window.value(2) });
        return message;
    }

public Q_SLOTS:
    int loadScript(const QString& path, const QString&)
    {
        QFile file(path);
        script = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        return 0;
    }
    void start() { isStarted = true; }
    bool unloadScript(const QString&)
    {
        script.clear();
        return true;
    }
};

class SessionObservationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_bus.address().isEmpty()); }

    void theBestSourceOfASessionAnswers_data()
    {
        QTest::addColumn<SessionOffers>("offers");
        QTest::addColumn<ObservationPlan>("plan");
        QTest::addColumn<int>("notes");
        using Window = ActiveWindowSource;
        using Idle = IdleTimeSource;
        const auto session = [](const char* name, SessionOffers offers, ObservationPlan plan,
                                 int notes) { QTest::newRow(name) << offers << plan << notes; };
        session("X11", { .hasX11 = true, .hasX11IdleTime = true }, { Window::x11, Idle::x11 }, 0);
        session("X11 without idle time", { .hasX11 = true }, { Window::x11, Idle::none }, 1);
        session("no session", {}, {}, 2);
        session("wlroots", { .isWayland = true, .hasToplevelList = true, .hasIdleNotify = true },
            { Window::wlroots, Idle::waylandIdleNotify }, 1);
        session("Plasma with XWayland",
            { .isWayland = true,
                .hasX11 = true,
                .hasX11IdleTime = true,
                .hasIdleNotify = true,
                .hasKWin = true },
            { Window::kwin, Idle::waylandIdleNotify }, 2);
        session("GNOME with XWayland",
            { .isWayland = true,
                .hasX11 = true,
                .hasX11IdleTime = true,
                .hasGNOMEShell = true,
                .hasMutterIdle = true },
            { Window::none, Idle::mutter }, 3);
        session("another compositor", { .isWayland = true }, {}, 2);
    }
    void theBestSourceOfASessionAnswers()
    {
        QFETCH(SessionOffers, offers);
        QFETCH(ObservationPlan, plan);
        QVERIFY(SessionObservationLogic::plan(offers) == plan);
        const auto report = SessionObservationLogic::report(offers);
        QTEST(int(report.notes.size()), "notes");
        QCOMPARE(report.frontmostBackend == QStringLiteral("not available"),
            plan.activeWindow == ActiveWindowSource::none);
    }

    void aCompositorsListIsFollowed()
    {
        std::optional<FakeCompositor> compositor(std::in_place);
        const auto session = observe(
            { { QStringLiteral("WAYLAND_DISPLAY"), QString::fromUtf8(compositor->socket()) } });
        QCOMPARE(session->report().notes.size(), 1);
        QCOMPARE(front(*session), QString());

        QTRY_VERIFY(compositor->isAsked());
        const auto code = compositor->openWindow("code");
        const auto emacs = compositor->openWindow("emacs");
        compositor->setActive(code, true);
        QTRY_COMPARE(front(*session), QStringLiteral("com.microsoft.VSCode"));
        compositor->setActive(code, false);
        compositor->setActive(emacs, true);
        QTRY_COMPARE(front(*session), QStringLiteral("org.gnu.Emacs"));
        compositor->closeWindow(emacs);
        QTRY_COMPARE(front(*session), QString());

        QCOMPARE(session->provider().idleSeconds(), 0);
        compositor->becomeIdle();
        QTRY_COMPARE(session->provider().idleSeconds(), 5);
        m_now += 60s;
        QCOMPARE(session->provider().idleSeconds(), 65);
        compositor->resume();
        QTRY_COMPARE(session->provider().idleSeconds(), 0);

        compositor->setActive(code, true);
        compositor->becomeIdle();
        QTRY_COMPARE(session->provider().idleSeconds(), 5);
        compositor.reset();
        QTRY_COMPARE(front(*session), QString());
        QCOMPARE(session->provider().idleSeconds(), 0);
    }

    void gnomeTellsTheIdleTimeAlone()
    {
        FakeMutter mutter;
        QObject shell;
        m_bus.offer("org.gnome.Mutter.IdleMonitor", "/org/gnome/Mutter/IdleMonitor/Core", &mutter);
        m_bus.offer("org.gnome.Shell", "/org/gnome/Shell", &shell);
        const auto session = observe(m_wayland);
        QVERIFY(session->report().notes.value(0).startsWith(QStringLiteral("GNOME")));
        QCOMPARE(front(*session), QString());

        QTRY_COMPARE(mutter.wanted, 5000u);
        Q_EMIT mutter.WatchFired(FakeMutter::idleWatch);
        QTRY_VERIFY(mutter.isActiveWatched);
        m_now += 60s;
        QCOMPARE(session->provider().idleSeconds(), 65);
        Q_EMIT mutter.WatchFired(FakeMutter::activeWatch);
        QTRY_COMPARE(session->provider().idleSeconds(), 0);
        m_bus.withdraw("org.gnome.Shell");
        m_bus.withdraw("org.gnome.Mutter.IdleMonitor");
    }

    void kwinCallsAtEveryChange()
    {
        const auto desktop = m_bus.connection("desktop");
        FakeKWin kwin;
        m_bus.offer("org.kde.KWin", "/Scripting", &kwin);
        auto session = observe(m_wayland);
        QTRY_VERIFY(kwin.isStarted);

        const QStringList konsole { QStringLiteral("org.kde.konsole"), QStringLiteral("konsole") };
        desktop.send(kwin.activation(konsole));
        QTRY_COMPARE(front(*session), QStringLiteral("org.kde.konsole"));
        QDBusPendingCallWatcher forged(
            m_bus.connection("another").asyncCall(kwin.activation({ QStringLiteral("forged") })));
        QTRY_VERIFY(forged.isFinished());
        QCOMPARE(front(*session), QStringLiteral("org.kde.konsole"));
        desktop.send(kwin.activation({}));
        QTRY_COMPARE(front(*session), QString());

        desktop.send(kwin.activation(konsole));
        QTRY_COMPARE(front(*session), QStringLiteral("org.kde.konsole"));
        m_bus.withdraw("org.kde.KWin");
        QTRY_COMPARE(front(*session), QString());
        kwin.script.clear();
        m_bus.offer("org.kde.KWin", "/Scripting", &kwin);
        QTRY_VERIFY(!kwin.script.isEmpty());
        session.reset();
        QTRY_VERIFY(kwin.script.isEmpty());
    }

private:
    std::unique_ptr<SessionObservation> observe(const Environment& environment)
    {
        return std::make_unique<SessionObservation>(
            nullptr, environment, m_bus.connection("program"), [this] { return m_now; });
    }

    static QString front(SessionObservation& session)
    {
        const auto application = session.provider().frontmostApp();
        return application ? application->bundleIdentifier : QString();
    }

    PrivateBus m_bus;
    TimePoint m_now;
    /// Of a compositor that cannot be reached.
    const Environment m_wayland { { QStringLiteral("WAYLAND_DISPLAY"),
        QStringLiteral("/nowhere") } };
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SessionObservationTest)
#include "SessionObservationTest.moc"
