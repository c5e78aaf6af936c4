#include "PobblewigLinux/desktop/DesktopNotifications.h"

#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QSignalSpy>

namespace pobblewig {

/// A notification server that keeps what it is asked to show.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList capabilities;
    int asked = 0;
    QStringList bodies;
    QStringList actions;
    QList<uint> closed;

public Q_SLOTS:
    QStringList GetCapabilities()
    {
        ++asked;
        return capabilities;
    }

    uint Notify(const QString&, uint, const QString&, const QString&, const QString& body,
        const QStringList& offered, const QVariantMap&, int)
    {
        bodies.append(body);
        actions = offered;
        return uint(bodies.size());
    }

    void CloseNotification(uint id) { closed.push_back(id); }
};

class DesktopNotificationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.emplace();
        auto bus = connection("server");
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &*m_server,
            QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(m_name));
        m_notifications.emplace(connection("program"));
        m_opened.emplace(&*m_notifications, &NotificationPresenting::opened);
        m_replied.emplace(&*m_notifications, &NotificationPresenting::replied);
    }

    void theServerGetsWhatItCanShow_data()
    {
        QTest::addColumn<QString>("capabilities");
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("actions");
        row("little", "body", "Is <b> & \"c\" due?", "");
        row("actions", "body,actions", "Is <b> & \"c\" due?", "default,Open chat,open-chat,Reply");
        row("all", "actions,body,body-markup,inline-reply", "Is &lt;b&gt; &amp; &quot;c&quot; due?",
            "default,Open chat,inline-reply,Reply");
    }
    void theServerGetsWhatItCanShow()
    {
        QFETCH(QString, capabilities);
        m_server->capabilities = capabilities.split(u',');
        QVERIFY(present(QStringLiteral("Is <b> & \"c\" due?")));
        QVERIFY(present(QString(400, u'x')));
        QCOMPARE(m_server->asked, 1);
        QTEST(m_server->bodies[0], "body");
        QCOMPARE(m_server->bodies[1], QString(300, u'x') + u'…');
        QTEST(m_server->actions.join(u','), "actions");
    }

    void theUserOpensOrRepliesToOurs()
    {
        QVERIFY(present(QStringLiteral("Hello")));
        signal(QStringLiteral("ActionInvoked"), { 99u, QStringLiteral("default") });
        signal(QStringLiteral("ActionInvoked"), { 1u, QStringLiteral("inline-reply") });
        signal(QStringLiteral("NotificationReplied"), { 99u, QStringLiteral("not ours") });
        signal(QStringLiteral("NotificationReplied"), { 1u, QStringLiteral(" Done \n") });
        QTRY_COMPARE(m_replied->count(), 1);
        QCOMPARE(m_replied->front().front().toString(), QStringLiteral("Done"));
        QCOMPARE(m_opened->count(), 0);
        for (const auto* action : { "default", "open-chat" })
            signal(QStringLiteral("ActionInvoked"), { 1u, QLatin1String(action) });
        signal(QStringLiteral("NotificationReplied"), { 1u, QStringLiteral("  ") });
        QTRY_COMPARE(m_opened->count(), 3);
    }

    void whatTheUserClosedIsNotTakenBack()
    {
        QVERIFY(present(QStringLiteral("One")));
        QVERIFY(present(QStringLiteral("Two")));
        signal(QStringLiteral("NotificationClosed"), { 1u, 2u });
        QVERIFY(present(QStringLiteral("Three")));
        m_notifications->withdraw();
        m_notifications->withdraw();
        QTRY_COMPARE(m_server->closed, QList<uint>({ 2, 3 }));
    }

    void withoutAServerThereIsNone()
    {
        QVERIFY(connection("server").unregisterService(m_name));
        QVERIFY(!present(QStringLiteral("Hello")));
        DesktopNotifications withoutBus { QDBusConnection(QStringLiteral("nowhere")) };
        QVERIFY(!awaited(withoutBus.present({})));
    }

private:
    bool present(const QString& text)
    {
        return awaited(m_notifications->present({ QStringLiteral("Mouse"), text }));
    }

    void signal(const QString& name, const QVariantList& arguments)
    {
        auto message = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/Notifications"), m_name, name);
        message.setArguments(arguments);
        connection("server").send(message);
    }

    QDBusConnection connection(const char* name)
    {
        return QDBusConnection::connectToBus(m_bus.address(), QLatin1String(name));
    }

    const QString m_name = QStringLiteral("org.freedesktop.Notifications");
    PrivateBus m_bus;
    std::optional<FakeNotificationServer> m_server;
    std::optional<DesktopNotifications> m_notifications;
    std::optional<QSignalSpy> m_opened;
    std::optional<QSignalSpy> m_replied;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DesktopNotificationsTest)
#include "DesktopNotificationsTest.moc"
