#include "PobblewigLinux/desktop/DesktopNotifications.h"

#include "PobblewigLinux/desktop/Sounds.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QLibrary>
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
    QList<QStringList> allActions;
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
        allActions.append(offered);
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
        QVERIFY(m_bus.offer(service, object, &*m_server));
        m_notifications.emplace(m_bus.connection("program"));
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
        signal("ActionInvoked", { 99u, QStringLiteral("default") });
        signal("ActionInvoked", { 1u, QStringLiteral("inline-reply") });
        signal("NotificationReplied", { 99u, QStringLiteral("not ours") });
        signal("NotificationReplied", { 1u, QStringLiteral(" Done \n") });
        QTRY_COMPARE(m_replied->count(), 1);
        QCOMPARE(m_replied->front().front().toString(), QStringLiteral("Done"));
        QCOMPARE(m_opened->count(), 0);
        for (const auto* action : { "default", "open-chat" })
            signal("ActionInvoked", { 1u, QLatin1String(action) });
        signal("NotificationReplied", { 1u, QStringLiteral("  ") });
        QTRY_COMPARE(m_opened->count(), 3);
    }

    void onlyAnAnswerThatWasOfferedIsPassedOn()
    {
        const QSignalSpy answered(&*m_notifications, &NotificationPresenting::answered);
        m_server->capabilities = QStringList(QStringLiteral("actions"));
        const Notification asking { QStringLiteral("Mouse"), QStringLiteral("Ready?"),
            { { QStringLiteral("yes 1"), QStringLiteral("Got it") } } };
        QVERIFY(awaited(m_notifications->present(asking)));
        QVERIFY(present(QStringLiteral("Hello")));
        QCOMPARE(m_server->allActions.front().join(u','),
            QStringLiteral("default,Open chat,yes 1,Got it,open-chat,Reply"));
        for (const auto id : { 2u, 1u, 99u })
            signal("ActionInvoked", { id, QStringLiteral("yes 1") });
        signal("ActionInvoked", { 1u, QStringLiteral("no") });
        signal("ActionInvoked", { 1u, QStringLiteral("default") });
        QTRY_COMPARE(m_opened->count(), 1);
        QCOMPARE(answered.count(), 1);
    }

    void whatTheUserClosedIsNotTakenBack()
    {
        QVERIFY(present(QStringLiteral("One")));
        QVERIFY(present(QStringLiteral("Two")));
        signal("NotificationClosed", { 1u, 2u });
        QVERIFY(present(QStringLiteral("Three")));
        m_notifications->withdraw();
        m_notifications->withdraw();
        QTRY_COMPARE(m_server->closed, QList<uint>({ 2, 3 }));
    }

    void withoutAServerThereIsNone()
    {
        QVERIFY(m_bus.withdraw(service));
        QVERIFY(!present(QStringLiteral("Hello")));
        DesktopNotifications withoutBus { QDBusConnection(QStringLiteral("nowhere")) };
        QVERIFY(!awaited(withoutBus.present({})));
    }

    void theNearestSoundThatThereIsIsPlayed_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("asked");
        row("the buddy's", "Glass", "begin;message-new-instant;bell;end;");
        row("another", "Submarine", "begin;bell;end;");
        row("one after the other", "Submarine Glass", "begin;bell;message-new-instant;bell;end;");
        row("none", "", "");
        row("no sound server", "Glass Submarine", "begin;begin;");
    }
    void theNearestSoundThatThereIsIsPlayed()
    {
        QFETCH(QString, names);
        const auto library = QStringLiteral(FAKE_CANBERRA);
        auto* const hasServer = reinterpret_cast<bool*>(QLibrary::resolve(library, "hasServer"));
        QVERIFY(hasServer);
        *hasServer = QTest::currentDataTag() != QByteArray("no sound server");
        {
            Sounds sounds(library);
            for (const auto& name : names.split(u' ', Qt::SkipEmptyParts))
                sounds.play(name);
        }
        const auto takeAsked =
            reinterpret_cast<const char* (*)()>(QLibrary::resolve(library, "takeAsked"));
        QVERIFY(takeAsked);
        QTEST(QString::fromLatin1(takeAsked()), "asked");
    }

    void withoutTheWholeLibraryThereIsSilence()
    {
        const auto half = QStringLiteral(HALF_CANBERRA);
        for (const auto& library : { QStringLiteral("/nonexistent/libcanberra.so.0"), half })
            Sounds(library).play(u"Glass");
        const auto* const asked = reinterpret_cast<int*>(QLibrary::resolve(half, "asked"));
        QVERIFY(asked);
        QCOMPARE(*asked, 0);
    }

private:
    bool present(const QString& text)
    {
        return awaited(m_notifications->present({ QStringLiteral("Mouse"), text }));
    }

    void signal(const char* name, const QVariantList& arguments)
    {
        m_bus.signal(object, service, name, arguments);
    }

    static constexpr auto service = "org.freedesktop.Notifications";
    static constexpr auto object = "/org/freedesktop/Notifications";
    PrivateBus m_bus;
    std::optional<FakeNotificationServer> m_server;
    std::optional<DesktopNotifications> m_notifications;
    std::optional<QSignalSpy> m_opened;
    std::optional<QSignalSpy> m_replied;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DesktopNotificationsTest)
#include "DesktopNotificationsTest.moc"
