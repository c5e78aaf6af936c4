#include "PobblewigLinux/desktop/SingleInstance.h"
#include "PobblewigLinux/desktop/OpenRequestLogic.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <csignal>
#include <sys/resource.h>

namespace pobblewig {

namespace {

const auto link = QStringLiteral("pobblewig://auth?code=abc");

enum class Disk { usable, full };

/// Lets every file be created, but nothing be written.
void fillTheDisk()
{
    ::signal(SIGXFSZ, SIG_IGN);
    constexpr rlimit nothing { 0, 0 };
    ::setrlimit(RLIMIT_FSIZE, &nothing);
}

/// A running Instance.
class Launch : public QProcess {
public:
    Launch(const QString& busAddress, const QStringList& arguments, Disk disk = Disk::usable)
    {
        if (disk == Disk::full)
            setChildProcessModifier(fillTheDisk);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress);
        setProcessEnvironment(environment);
        setProcessChannelMode(ForwardedErrorChannel);
        start(QCoreApplication::applicationDirPath() + QStringLiteral("/Instance"), arguments);
    }
    ~Launch() override { killed(); }
    Q_DISABLE_COPY_MOVE(Launch)

    QString line()
    {
        while (!canReadLine() && waitForReadyRead(20'000))
            ;
        return QString::fromUtf8(readLine()).trimmed();
    }

    bool ended() { return waitForFinished(20'000) && exitCode() == 0; }

    void killed()
    {
        kill();
        waitForFinished();
    }
};

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(!m_bus.address().isEmpty());
        m_scratch.emplace();
    }

    void aSecondLaunchHandsOverAndEnds_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("heard");
        row("nothing to open", "", "activated");
        row("a link", link, QStringLiteral("open ") + link);
        row("no link of ours", "file:///etc/passwd", "activated");
    }
    void aSecondLaunchHandsOverAndEnds()
    {
        QFETCH(QString, uri);
        Launch first(m_bus.address(), { directory() });
        QCOMPARE(first.line(), m_first);
        Launch second(m_bus.address(), { directory(), uri });
        QCOMPARE(second.line(), QStringLiteral("handed over"));
        QVERIFY(second.ended());
        QTEST(first.line(), "heard");
    }

    void twoLaunchesAtOnceBecomeOne()
    {
        Launch one(m_bus.address(), { directory() });
        Launch other(m_bus.address(), { directory() });
        QStringList outcomes { one.line(), other.line() };
        outcomes.sort();
        QCOMPARE(outcomes, QStringList({ m_first, QStringLiteral("handed over") }));
    }

    void anotherDirectoryOnTheSameBusHasItsOwnProcess()
    {
        Launch home(m_bus.address(), { directory() });
        QCOMPARE(home.line(), m_first);
        const auto elsewhere = m_scratch->filePath(QStringLiteral("elsewhere"));
        Launch other(m_bus.address(), { elsewhere });
        QCOMPARE(other.line(), m_first);
        const Launch again(m_bus.address(), { elsewhere, link });
        QCOMPARE(other.line(), QStringLiteral("open ") + link);
    }

    void theLockOfAKilledProcessIsTakenOver()
    {
        ApplicationBus bus;
        const SingleInstance looking(QDir(directory()), bus);
        QVERIFY(!looking.isContested());
        Launch first(m_bus.address(), { directory() });
        QCOMPARE(first.line(), m_first);
        QVERIFY(looking.isContested());
        first.killed();
        QVERIFY(!looking.isContested());
        QCOMPARE(Launch(m_bus.address(), { directory() }).line(), m_first);
    }

    void aFullDiskKeepsNobodyApart()
    {
        Launch first(m_noBus, { directory() }, Disk::full);
        QCOMPARE(first.line(), m_first);
        Launch second(m_noBus, { directory() }, Disk::full);
        const auto refusal = second.line();
        QVERIFY(refusal.contains(QStringLiteral("does not answer")));
        QVERIFY(refusal.contains(QStringLiteral("process %1)").arg(first.processId())));
        QVERIFY(second.ended());
    }

    void aDirectoryReachedByAnotherRouteIsTheSame()
    {
        const Launch first(m_noBus, { directory() });
        QTRY_VERIFY(QFile::exists(directory()));
        const auto route = m_scratch->filePath(QStringLiteral("route"));
        QVERIFY(QFile::link(directory(), route));
        QTRY_VERIFY(DirectoryLock(QDir(route)).isHeldByAnother());
    }

    void aDirectoryThatCannotBeWrittenToGoesUnlocked()
    {
        const auto nowhere = QStringLiteral("/dev/null/below");
        QCOMPARE(Launch(m_bus.address(), { nowhere }).line(), m_first);
    }

    void aCallerCanAskForNoMoreThanIsOffered()
    {
        Launch first(m_bus.address(), { directory() });
        QCOMPARE(first.line(), m_first);
        for (const auto& uri : { QStringLiteral("file:///etc/passwd"), QString(1 << 20, u'x') })
            call("Open", { QStringList(uri), QVariantMap() });
        call("ActivateAction", { QStringLiteral("format"), QVariantList(), QVariantMap() });
        call("quitRequested", {});
        call("deleteLater", {});
        call("Activate", { QVariantMap() });
        QCOMPARE(first.line(), QStringLiteral("activated"));
        call("ActivateAction", { QStringLiteral("quit"), QVariantList(), QVariantMap() });
        QVERIFY(first.ended());
    }

    void onlyALinkOfOursIsLetIn_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("expected");
        const auto ours = QStringLiteral("pobblewig://auth?code=abc");
        row("ours", ours, ours);
        row("in capitals", "POBBLEWIG://auth?code=abc", ours);
        row("without a host", "pobblewig:/auth", "pobblewig:/auth");
        row("an empty text", "", "");
        row("a file", "file:///etc/passwd", "");
        row("a path", "/etc/passwd", "");
        row("an option", "--help", "");
        row("the web", "https://example.org/?u=pobblewig://auth", "");
        row("a longer scheme", "pobblewigs://auth", "");
        row("a line break", "pobblewig://auth\nrm -rf", "");
        row("a broken host", "pobblewig://a b/", "");
        row("a lone surrogate", QStringLiteral("pobblewig://") + QChar(0xD800), "");
        row("the longest", ours.leftJustified(2048, u'x'), ours.leftJustified(2048, u'x'));
        row("too long", ours.leftJustified(2049, u'x'), "");
    }
    void onlyALinkOfOursIsLetIn()
    {
        QFETCH(QString, uri);
        QTEST(OpenRequestLogic::link({ uri }).value_or(QUrl()).toString(), "expected");
    }

    void onlyTheFirstPlaceCounts()
    {
        const auto ours = QStringLiteral("pobblewig://auth");
        QVERIFY(!OpenRequestLogic::link({}));
        QVERIFY(!OpenRequestLogic::link({ QStringLiteral("file:///"), ours }));
        QVERIFY(OpenRequestLogic::link(QStringList(100'000, ours)));
    }

private:
    QString directory() const { return m_scratch->filePath(QStringLiteral("data")); }

    void call(const char* method, const QVariantList& arguments)
    {
        auto message = QDBusMessage::createMethodCall(QStringLiteral("com.pobblewig.app"),
            QStringLiteral("/com/pobblewig/app"), QStringLiteral("org.freedesktop.Application"),
            QLatin1String(method));
        message.setArguments(arguments);
        m_bus.connection("caller").call(message);
    }

    const QString m_noBus = QStringLiteral("unix:path=/nonexistent");
    const QString m_first = QStringLiteral("first");
    PrivateBus m_bus;
    std::optional<QTemporaryDir> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SingleInstanceTest)
#include "SingleInstanceTest.moc"
