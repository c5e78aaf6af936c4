#include "PobblewigLinux/x11/X11FrontmostAppProvider.h"

#include "PobblewigLinux/x11/X11WindowActivation.h"
#include "activity/ActivityTracker.h"
#include "support/ForeignWindow.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

namespace {

/// A program that ends with this object.
class Program : public QProcess {
public:
    explicit Program(const QString& command)
    {
        setProcessChannelMode(ForwardedErrorChannel);
        auto words = splitCommand(command);
        const auto name = words.takeFirst();
        start(name, words);
    }
    ~Program() override
    {
        kill();
        waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Program)

    QByteArray line()
    {
        while (!canReadLine() && waitForReadyRead())
            ;
        return readLine().trimmed();
    }
};

void makeWindow(X11Connection& connection, xcb_window_t window, std::string_view classes)
{
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1,
        0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
        XCB_ATOM_STRING, 8, std::uint32_t(classes.size()), classes.data());
}

} // namespace

class X11FrontmostAppProviderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void programsAreToldApartAsTheyComeToTheFront()
    {
        const auto x11 = X11Connection::open(qgetenv("DISPLAY").toStdString());
        QVERIFY(x11);
        X11FrontmostAppProvider provider(*x11, m_names);
        QCOMPARE(front(provider), QString());
        const QTemporaryDir scratch;
        const DataDirectory directory { QDir(scratch.path()) };
        ActivityTracker tracker(provider, directory);
        TimePoint now(std::chrono::seconds(1772352900));
        const auto poll = [&] { tracker.poll(now += std::chrono::seconds(20)); };

        const Program first(QStringLiteral("xterm -e cat"));
        QTRY_COMPARE(front(provider), QStringLiteral("XTerm org.invisible-island.xterm"));
        poll();
        std::optional<Program> second(
            QStringLiteral("xterm -class KeePassXC -name firefox -e cat"));
        QTRY_COMPARE(front(provider), QStringLiteral("KeePassXC org.keepassxc.KeePassXC"));
        poll();
        second.emplace(QStringLiteral("xterm -fullscreen -class Nobodys -name n -e cat"));
        QTRY_COMPARE(front(provider), QStringLiteral("Nobodys Nobodys"));
        poll();
        second.reset();
        QTRY_COMPARE(front(provider), QStringLiteral("XTerm org.invisible-island.xterm"));
        poll();
        QStringList kept;
        const ActivityTracker restarted(provider, directory);
        for (const auto& session : restarted.history())
            kept.append(session.bundleIdentifier);
        QCOMPARE(kept,
            QStringList({ QStringLiteral("Nobodys"), QStringLiteral("org.keepassxc.KeePassXC"),
                QStringLiteral("org.invisible-island.xterm") }));
    }

    void inputEndsTheIdleTime()
    {
        const auto x11 = X11Connection::open(qgetenv("DISPLAY").toStdString());
        QVERIFY(x11);
        X11FrontmostAppProvider provider(*x11, m_names);
        QTRY_VERIFY(provider.idleSeconds() > 0.3);
        QElapsedTimer sinceBeforeTheKey;
        sinceBeforeTheKey.start();
        Program key(QStringLiteral("timeout 20 xdotool key shift"));
        QVERIFY(key.waitForFinished());
        const auto idle = provider.idleSeconds();
        QVERIFY(idle * 1000 <= double(sinceBeforeTheKey.elapsed()));
    }

    void aWindowOrAServerThatVanishesIsNothingInFront()
    {
        Program server(QStringLiteral("Xvfb -displayfd 1 -nolisten tcp -screen 0 64x64x24"));
        const auto x11 = X11Connection::open(':' + server.line().toStdString());
        QVERIFY(x11);
        X11FrontmostAppProvider provider(*x11, m_names);
        QCOMPARE(front(provider), QString());

        using namespace std::string_view_literals;
        const auto window = xcb_generate_id(x11->get());
        makeWindow(*x11, window, "code\0Code"sv);
        x11->setValues(x11->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, { window });
        QCOMPARE(front(provider), QStringLiteral("Code com.microsoft.VSCode"));
        xcb_destroy_window(x11->get(), window);
        QCOMPARE(front(provider), QString());

        makeWindow(*x11, window, "emacs\0Emacs"sv);
        QCOMPARE(front(provider), QStringLiteral("Emacs org.gnu.Emacs"));
        QTRY_VERIFY(provider.idleSeconds() > 0);
        server.kill();
        QVERIFY(server.waitForFinished());
        QCOMPARE(front(provider), QString());
        QCOMPARE(provider.idleSeconds(), 0);
        QVERIFY(!X11Connection::open(":nobody"));
    }

    void theWindowIsActivatedInTheNameOfTheUser()
    {
        const auto x11 = X11Connection::open({});
        const auto manager = X11Connection::open({});
        QVERIFY(x11 && manager);
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(manager->get(), manager->root(), XCB_CW_EVENT_MASK, &events);
        QVERIFY(!manager->values(manager->root(), "_NET_SUPPORTED").empty());

        const ForeignWindow first("first", { 10, 10, 100, 100 }, 0xff0000);
        const ForeignWindow second("second", { 300, 10, 100, 100 }, 0x00ff00);
        QTRY_COMPARE(active(*x11), second.id());
        X11WindowActivation(*x11).activate(first.id());
        QTRY_COMPARE(active(*x11), first.id());

        // A window manager that goes by the times of the user's input heeds only such a source.
        constexpr std::uint32_t forTheUser = 2;
        QCOMPARE(source(*manager, first.id()), forTheUser);
    }

private:
    /// "name identifier", or empty.
    static QString front(X11FrontmostAppProvider& provider)
    {
        const auto application = provider.frontmostApp();
        return application ? application->name + u' ' + application->bundleIdentifier : QString();
    }

    static xcb_window_t active(X11Connection& x11)
    {
        const auto windows = x11.values(x11.root(), "_NET_ACTIVE_WINDOW");
        return windows.empty() ? XCB_WINDOW_NONE : windows.front();
    }

    /// Who asked for the window's activation, among what has arrived; 0 if nobody did.
    static std::uint32_t source(X11Connection& manager, xcb_window_t window)
    {
        using Event = X11Reply<xcb_generic_event_t>;
        const auto activation = manager.atom("_NET_ACTIVE_WINDOW");
        while (const auto event = Event(xcb_poll_for_event(manager.get()))) {
            void* const raw = event.get();
            const auto* const message = static_cast<xcb_client_message_event_t*>(raw);
            if ((message->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message->type == activation
                && message->window == window)
                return message->data.data32[0];
        }
        return 0;
    }

    ApplicationNames m_names { DesktopEntries({}, {}) };
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::X11FrontmostAppProviderTest)
#include "X11FrontmostAppProviderTest.moc"
