#include "PobblewigLinux/portal/PortalHotKeys.h"

#include "PobblewigLinux/portal/PortalShortcut.h"
#include "linux/portal/PortalAnswer.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QDBusContext>
#include <QSignalSpy>

namespace pobblewig {

class FakeShortcutsPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")

public:
    std::optional<uint> response = 0;
    /// Whether the user leaves what was asked for.
    bool isKept = true;
    QString session;
    QString trigger;

public Q_SLOTS:
    QDBusObjectPath CreateSession(const QVariantMap& options)
    {
        session = QStringLiteral("/org/freedesktop/portal/desktop/session/1_2/")
            + options.value(QStringLiteral("session_handle_token")).toString();
        return answerToRequest(
            connection(), message(), 0, { { QStringLiteral("session_handle"), session } });
    }

    QDBusObjectPath BindShortcuts(const QDBusObjectPath&,
        const QList<pobblewig::PortalShortcut>& asked, const QString&, const QVariantMap&)
    {
        trigger = asked.value(0).options.value(QStringLiteral("preferred_trigger")).toString();
        const auto bound = isKept ? asked : QList<PortalShortcut>();
        return answerToRequest(connection(), message(), response,
            { { QStringLiteral("shortcuts"), QVariant::fromValue(bound) } });
    }
};

class PortalHotKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_portal.emplace();
        QVERIFY(m_bus.offer(service, path, &*m_portal));
        m_hotKeys.emplace(m_bus.connection("program"), QStringLiteral("Talk with the buddy"),
            std::chrono::milliseconds(500));
        m_pressed.emplace(&*m_hotKeys, &HotKeyProviding::pressed);
    }

    void thePressOfThePresentKeysCounts()
    {
        QVERIFY(assign("Ctrl+Alt+Space"));
        QCOMPARE(m_portal->trigger, QStringLiteral("CTRL+ALT+space"));
        const auto before = m_portal->session;
        QVERIFY(assign("Meta+Shift+,"));
        QCOMPARE(m_portal->trigger, QStringLiteral("SHIFT+LOGO+comma"));
        press(before, "chat");
        press(m_portal->session, "something else");
        press(m_portal->session, "chat");
        QTRY_COMPARE(m_pressed->count(), 1);
        QVERIFY(assign(""));
        press(m_portal->session, "chat");
        QVERIFY(assign("Ctrl+Alt+P"));
        QVERIFY(!assign("P"));
        press(m_portal->session, "chat");
        QTRY_COMPARE(m_pressed->count(), 2);
    }

    void whatCannotBeHadLeavesTheKeysBefore_data()
    {
        using Kind = HotKeyError::Kind;
        QTest::addColumn<int>("response");
        QTest::addColumn<bool>("isKept");
        QTest::addColumn<Kind>("kind");
        row("the user says no", 1, true, Kind::refused);
        row("the user takes the keys away", 0, false, Kind::refused);
        row("something goes wrong", 2, true, Kind::unavailable);
        row("the user never answers", -1, true, Kind::unavailable);
    }
    void whatCannotBeHadLeavesTheKeysBefore()
    {
        QVERIFY(assign("Ctrl+Alt+Space"));
        const auto before = m_portal->session;
        QFETCH(int, response);
        m_portal->response = response < 0 ? std::nullopt : std::optional<uint>(response);
        QFETCH(bool, isKept);
        m_portal->isKept = isKept;
        QTEST(assign("Ctrl+Alt+P").error().kind, "kind");
        press(before, "chat");
        QTRY_COMPARE(m_pressed->count(), 1);
    }

    void withoutThePortalThereAreNone()
    {
        QVERIFY(m_bus.withdraw(service));
        QCOMPARE(assign("Ctrl+Alt+Space").error().kind, HotKeyError::Kind::unavailable);
    }

private:
    HotKeyProviding::Outcome assign(const char* keys)
    {
        return awaited(m_hotKeys->assign(QKeySequence(QLatin1String(keys))));
    }

    void press(const QString& session, const char* shortcut)
    {
        m_bus.signal(path, "org.freedesktop.portal.GlobalShortcuts", "Activated",
            { QVariant::fromValue(QDBusObjectPath(session)), QLatin1String(shortcut),
                QVariant::fromValue(qulonglong(0)), QVariantMap() });
    }

    static constexpr auto service = "org.freedesktop.portal.Desktop";
    static constexpr auto path = "/org/freedesktop/portal/desktop";
    PrivateBus m_bus;
    std::optional<FakeShortcutsPortal> m_portal;
    std::optional<PortalHotKeys> m_hotKeys;
    std::optional<QSignalSpy> m_pressed;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PortalHotKeysTest)
#include "PortalHotKeysTest.moc"
