#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

namespace {

const auto link = QStringLiteral("pobblewig://auth?code=abc");

/// A running Instance.
class Launch {
public:
    Launch(const QString& busAddress, const QString& directory, const QStringList& uris = {})
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/Instance"),
            QStringList(directory) + uris);
    }

    ~Launch() { killed(); }
    Q_DISABLE_COPY_MOVE(Launch)

    QString line()
    {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(20'000))
            ;
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    bool ended() { return m_process.waitForFinished(20'000) && m_process.exitCode() == 0; }

    void killed()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
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
        QTest::addColumn<QStringList>("uris");
        QTest::addColumn<QString>("heard");
        QTest::newRow("nothing to open") << QStringList() << QStringLiteral("activated");
        QTest::newRow("a link") << QStringList(link) << QStringLiteral("open ") + link;
        QTest::newRow("no link of ours")
            << QStringList(QStringLiteral("file:///etc/passwd")) << QStringLiteral("activated");
    }
    void aSecondLaunchHandsOverAndEnds()
    {
        QFETCH(QStringList, uris);
        QFETCH(QString, heard);
        Launch first(m_bus.address(), directory());
        QCOMPARE(first.line(), QStringLiteral("first"));
        Launch second(m_bus.address(), directory(), uris);
        QCOMPARE(second.line(), QStringLiteral("handed over"));
        QVERIFY(second.ended());
        QCOMPARE(first.line(), heard);
    }

    void twoLaunchesAtOnceBecomeOne()
    {
        Launch one(m_bus.address(), directory());
        Launch other(m_bus.address(), directory());
        QStringList outcomes { one.line(), other.line() };
        outcomes.sort();
        QCOMPARE(outcomes, QStringList({ QStringLiteral("first"), QStringLiteral("handed over") }));
    }

    void anotherDirectoryOnTheSameBusHasItsOwnProcess()
    {
        Launch home(m_bus.address(), directory());
        QCOMPARE(home.line(), QStringLiteral("first"));
        Launch other(m_bus.address(), directory() + QStringLiteral("-2"));
        QCOMPARE(other.line(), QStringLiteral("first"));
        Launch again(m_bus.address(), directory() + QStringLiteral("-2"), { link });
        QCOMPARE(again.line(), QStringLiteral("handed over"));
        QCOMPARE(other.line(), QStringLiteral("open ") + link);
    }

    void theLockOfAKilledProcessIsTakenOver()
    {
        Launch first(m_bus.address(), directory());
        QCOMPARE(first.line(), QStringLiteral("first"));
        first.killed();
        Launch second(m_bus.address(), directory());
        QCOMPARE(second.line(), QStringLiteral("first"));
    }

    void withoutABusTheLockAloneDecides()
    {
        const auto noBus = QStringLiteral("unix:path=/nonexistent");
        Launch first(noBus, directory());
        QCOMPARE(first.line(), QStringLiteral("first"));
        Launch second(noBus, directory());
        QVERIFY(second.line().contains(QStringLiteral("does not answer")));
        QVERIFY(second.ended());
    }

    void aDirectoryThatCannotBeWrittenToGoesUnlocked()
    {
        QFile file(m_scratch->filePath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        Launch first(m_bus.address(), file.fileName() + QStringLiteral("/below"));
        QCOMPARE(first.line(), QStringLiteral("first"));
    }

    void aHostileCallerIsRefused()
    {
        Launch first(m_bus.address(), directory());
        QCOMPARE(first.line(), QStringLiteral("first"));
        call(QStringLiteral("Open"),
            { QStringList(QStringLiteral("file:///etc/passwd")), QVariantMap() });
        call(QStringLiteral("Open"), { QStringList(QString(1 << 20, u'x')), QVariantMap() });
        call(QStringLiteral("ActivateAction"),
            { QStringLiteral("format"), QVariantList(), QVariantMap() });
        call(QStringLiteral("quitRequested"), {});
        call(QStringLiteral("deleteLater"), {});
        call(QStringLiteral("Activate"), { QVariantMap() });
        QCOMPARE(first.line(), QStringLiteral("activated"));
    }

    void theQuitActionEndsTheProcess()
    {
        Launch first(m_bus.address(), directory());
        QCOMPARE(first.line(), QStringLiteral("first"));
        call(QStringLiteral("ActivateAction"),
            { QStringLiteral("quit"), QVariantList(), QVariantMap() });
        QVERIFY(first.ended());
    }

private:
    QString directory() const { return m_scratch->filePath(QStringLiteral("data")); }

    void call(const QString& method, const QVariantList& arguments)
    {
        auto bus = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("caller"));
        auto message = QDBusMessage::createMethodCall(QStringLiteral("com.pobblewig.app"),
            QStringLiteral("/com/pobblewig/app"), QStringLiteral("org.freedesktop.Application"),
            method);
        message.setArguments(arguments);
        bus.call(message);
    }

    PrivateBus m_bus;
    std::optional<QTemporaryDir> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SingleInstanceTest)
#include "SingleInstanceTest.moc"
