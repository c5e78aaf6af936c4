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
    explicit FakeTray(QDBusConnection bus)
        : m_bus(std::move(bus))
    {
        m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
            QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSignals);
    }

    bool comeUp() { return m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")); }

    void registerHost()
    {
        m_hasHost = true;
        Q_EMIT StatusNotifierHostRegistered();
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();

private:
    QDBusConnection m_bus;
    bool m_hasHost = false;
};

class TrayWatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_x11);
        m_bus.emplace();
        m_tray = std::make_unique<FakeTray>(connection("tray"));
        m_watch = std::make_unique<TrayWatch>(m_x11.get(), connection("program"));
        m_appeared = std::make_unique<QSignalSpy>(m_watch.get(), &TrayWatch::trayAppeared);
    }

    void cleanup()
    {
        m_appeared.reset();
        m_watch.reset();
        m_tray.reset();
        for (const auto* name : { "tray", "program" })
            QDBusConnection::disconnectFromBus(QLatin1String(name));
    }

    void aTrayThatIsThereIsReportedOnce()
    {
        m_tray->registerHost();
        QVERIFY(m_tray->comeUp());
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
        QVERIFY(m_tray->comeUp());
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
        QVERIFY(m_tray->comeUp());
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
    QDBusConnection connection(const char* name)
    {
        return QDBusConnection::connectToBus(m_bus->address(), QLatin1String(name));
    }

    /// Returns once all that was sent so far has been heard: the bus and the X server keep order.
    void settle()
    {
        auto program = connection("program");
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
    std::unique_ptr<FakeTray> m_tray;
    std::unique_ptr<TrayWatch> m_watch;
    std::unique_ptr<QSignalSpy> m_appeared;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::TrayWatchTest)
#include "TrayWatchTest.moc"
