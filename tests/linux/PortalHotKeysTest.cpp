#include "PobblewigLinux/PortalHotKeys.h"

#include "PobblewigLinux/PortalShortcut.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QSignalSpy>

namespace pobblewig {

using Shortcuts = QList<PortalShortcut>;

/// A portal whose user answers at once, or never.
class FakeShortcutsPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")

public:
    std::optional<uint> response = 0;
    /// Whether what the user leaves is what was asked for.
    bool isKept = true;
    QString session;
    QVariantMap asked;

public Q_SLOTS:
    QDBusObjectPath CreateSession(const QVariantMap& options)
    {
        session = QStringLiteral("/org/freedesktop/portal/desktop/session/1_2/%1")
                      .arg(options.value(QStringLiteral("session_handle_token")).toString());
        return answer(options, 0, { { QStringLiteral("session_handle"), session } });
    }

    QDBusObjectPath BindShortcuts(const QDBusObjectPath& to,
        const QList<pobblewig::PortalShortcut>& shortcuts, const QString&,
        const QVariantMap& options)
    {
        asked = to.path() == session ? shortcuts.value(0).options : QVariantMap();
        const auto bound = QVariant::fromValue(isKept ? shortcuts : Shortcuts());
        return answer(options, response, { { QStringLiteral("shortcuts"), bound } });
    }

private:
    QDBusObjectPath answer(
        const QVariantMap& options, std::optional<uint> code, const QVariantMap& results)
    {
        const auto caller = message().service().mid(1).replace(u'.', u'_');
        const auto path =
            QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
                .arg(caller, options.value(QStringLiteral("handle_token")).toString());
        auto signal = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        signal.setArguments({ code.value_or(0), results });
        if (code)
            connection().send(signal);
        return QDBusObjectPath(path);
    }
};

class PortalHotKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus.emplace();
        m_portal.emplace();
        m_hotKeys.emplace(connection("program"), QStringLiteral("Talk with the buddy"),
            std::chrono::milliseconds(500));
        m_pressed.emplace(&*m_hotKeys, &HotKeyProviding::pressed);
        auto bus = connection("portal");
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &*m_portal,
            QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }

    void cleanup()
    {
        m_pressed.reset();
        m_hotKeys.reset();
        for (const auto* name : { "portal", "program" })
            QDBusConnection::disconnectFromBus(QLatin1String(name));
    }

    void thePressOfThePresentKeysCounts()
    {
        QVERIFY(assign("Ctrl+Alt+Space"));
        QCOMPARE(m_portal->asked.value(QStringLiteral("preferred_trigger")).toString(),
            QStringLiteral("CTRL+ALT+space"));
        const auto before = m_portal->session;
        QVERIFY(assign("Ctrl+Alt+P"));
        press(before, QStringLiteral("chat"));
        press(m_portal->session, QStringLiteral("something else"));
        press(m_portal->session, QStringLiteral("chat"));
        QTRY_COMPARE(m_pressed->count(), 1);

        QVERIFY(assign(""));
        press(m_portal->session, QStringLiteral("chat"));
        QVERIFY(assign("Ctrl+Alt+P"));
        QVERIFY(!assign("P"));
        press(m_portal->session, QStringLiteral("chat"));
        QTRY_COMPARE(m_pressed->count(), 2);
    }

    void aRefusalLeavesTheKeysBefore_data()
    {
        using Kind = HotKeyError::Kind;
        QTest::addColumn<int>("response");
        QTest::addColumn<bool>("isKept");
        QTest::addColumn<Kind>("kind");
        row("the user says no", 1, true, Kind::refused);
        row("the user takes the keys away", 0, false, Kind::refused);
        row("the user never answers", -1, true, Kind::unavailable);
    }
    void aRefusalLeavesTheKeysBefore()
    {
        QVERIFY(assign("Ctrl+Alt+Space"));
        const auto before = m_portal->session;
        QFETCH(int, response);
        m_portal->response = response < 0 ? std::nullopt : std::optional<uint>(response);
        QFETCH(bool, isKept);
        m_portal->isKept = isKept;
        const auto outcome = assign("Ctrl+Alt+P");
        QVERIFY(!outcome);
        QTEST(outcome.error().kind, "kind");
        press(before, QStringLiteral("chat"));
        QTRY_COMPARE(m_pressed->count(), 1);
    }

    void withoutThePortalThereAreNone()
    {
        QVERIFY(connection("portal").unregisterService(
            QStringLiteral("org.freedesktop.portal.Desktop")));
        const auto outcome = assign("Ctrl+Alt+Space");
        QVERIFY(!outcome);
        QCOMPARE(outcome.error().kind, HotKeyError::Kind::unavailable);
    }

private:
    HotKeyProviding::Outcome assign(const char* keys)
    {
        return awaited(m_hotKeys->assign(QKeySequence(QLatin1String(keys))));
    }

    void press(const QString& in, const QString& shortcut)
    {
        auto signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("Activated"));
        signal.setArguments({ QVariant::fromValue(QDBusObjectPath(in)), shortcut,
            QVariant::fromValue(qulonglong(0)), QVariantMap() });
        connection("portal").send(signal);
    }

    QDBusConnection connection(const char* name)
    {
        return QDBusConnection::connectToBus(m_bus->address(), QLatin1String(name));
    }

    std::optional<PrivateBus> m_bus;
    std::optional<FakeShortcutsPortal> m_portal;
    std::optional<PortalHotKeys> m_hotKeys;
    std::optional<QSignalSpy> m_pressed;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PortalHotKeysTest)
#include "PortalHotKeysTest.moc"
