#include "PobblewigLinux/x11/TrayWatch.h"

#include "support/PrivateBus.h"
#include "support/SelectionOwner.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

/// The desktop's side of a tray that speaks D-Bus.
class FakeTray : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_hasHost)

public:
    void registerHost()
    {
        m_hasHost = true;
        Q_EMIT StatusNotifierHostRegistered();
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();

private:
    bool m_hasHost = false;
};

class TrayWatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_x11);
        m_bus.emplace();
        m_tray.emplace();
        m_watch.emplace(m_x11.get(), m_bus->connection("program"));
        m_appeared.emplace(&*m_watch, &TrayWatch::trayAppeared);
    }

    void aTrayThatIsThereIsReportedOnce()
    {
        m_tray->registerHost();
        QVERIFY(trayComesUp());
        m_watch->start();
        QTRY_COMPARE(m_appeared->count(), 1);
        const SelectionOwner second("_NET_SYSTEM_TRAY_S0");
        m_tray->registerHost();
        settle();
        QCOMPARE(m_appeared->count(), 1);
    }

    void aTrayOnTheBusCountsOnceItHasAHost()
    {
        m_watch->start();
        settle();
        QVERIFY(trayComesUp());
        settle();
        QCOMPARE(m_appeared->count(), 0);
        m_tray->registerHost();
        QTRY_COMPARE(m_appeared->count(), 1);
    }

    void aTrayThatComesUpWithItsHostIsReported()
    {
        m_watch->start();
        settle();
        m_tray->registerHost();
        QVERIFY(trayComesUp());
        QTRY_COMPARE(m_appeared->count(), 1);
    }

    void anEmbeddingTrayMayComeUpLater()
    {
        m_watch->start();
        settle();
        QCOMPARE(m_appeared->count(), 0);
        const SelectionOwner tray("_NET_SYSTEM_TRAY_S0");
        QTRY_COMPARE(m_appeared->count(), 1);
    }

private:
    bool trayComesUp()
    {
        return m_bus->offer("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", &*m_tray);
    }

    /// Returns once all that was sent so far has been heard: the bus and the X server keep order.
    void settle()
    {
        const auto program = m_bus->connection("program");
        auto ping = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
            QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"),
            QStringLiteral("Ping"));
        for (int trip = 0; trip < 5; ++trip) {
            QDBusPendingCallWatcher answer(program.asyncCall(ping));
            QTRY_VERIFY(answer.isFinished());
            m_x11->isOwned(XCB_ATOM_PRIMARY);
            QCoreApplication::processEvents();
        }
    }

    std::unique_ptr<X11Connection> m_x11 = X11Connection::create();
    std::optional<PrivateBus> m_bus;
    std::optional<FakeTray> m_tray;
    std::optional<TrayWatch> m_watch;
    std::optional<QSignalSpy> m_appeared;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::TrayWatchTest)
#include "TrayWatchTest.moc"
