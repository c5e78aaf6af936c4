#include "PobblewigLinux/x11/X11FrontmostAppProvider.h"

#include "activity/ActivityTracker.h"

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

private:
    /// "name identifier", or empty.
    static QString front(X11FrontmostAppProvider& provider)
    {
        const auto application = provider.frontmostApp();
        return application ? application->name + u' ' + application->bundleIdentifier : QString();
    }

    ApplicationNames m_names { DesktopEntries({}, {}) };
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::X11FrontmostAppProviderTest)
#include "X11FrontmostAppProviderTest.moc"
