#include "PobblewigLinux/modules/ModuleLoader.h"

#include "Greeting.h"
#include "PobblewigLinux/modules/LateHTTPClient.h"
#include "support/Awaited.h"
#include "support/LoopbackServer.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

namespace pobblewig {

class ModuleLoaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile text(m_scratch.filePath(QStringLiteral("text.so")));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("com.pobblewig.Greeting") > 0);
        QVERIFY(!isInMemory("/greeting.so"));
    }

    void aModuleIsLoadedOnce()
    {
        const auto greeting = m_modules.load<Greeting>(QStringLiteral("greeting"));
        QVERIFY2(greeting, qPrintable(greeting.error()));
        QCOMPARE((*greeting)->greet(), 1);
        const ModuleLoader another({ m_doubles });
        QCOMPARE((*another.load<Greeting>(QStringLiteral("greeting")))->greet(), 2);
    }

    void whatIsNoModuleIsSaid_data()
    {
        QTest::addColumn<QString>("sentence");
        row("absent", "Pobblewig's module “absent” is not installed");
        row("text", "/text.so is not the module “text”");
        row("strange", "/strange.so is not the module “strange”");
        row("lying", "Pobblewig's module “lying” cannot be loaded");
    }
    void whatIsNoModuleIsSaid()
    {
        const auto outcome = m_modules.load<Greeting>(QLatin1String(QTest::currentDataTag()));
        QVERIFY(!outcome);
        QFETCH(QString, sentence);
        QVERIFY2(outcome.error().contains(sentence), qPrintable(outcome.error()));
        QVERIFY(!isInMemory("/strange.so"));
    }

    void theNetworkIsLoadedWithTheFirstRequest()
    {
        LoopbackServer server;
        server.enqueue({ LoopbackServer::Send { "HTTP/1.1 204 No Content\r\n\r\n" } });
        LateHTTPClient http;
        QVERIFY(!isInMemory("/network.so"));
        const auto response = awaited(http.send({ .url = server.url(QStringLiteral("/")) }));
        QVERIFY(response);
        QCOMPARE(response->status, 204);
        QVERIFY(isInMemory("/network.so"));
    }

    void withoutItsModuleNothingIsReached()
    {
        LateHTTPClient http(m_modules);
        const auto response = awaited(http.send({}));
        QVERIFY(!response);
        QVERIFY(response.error().description().contains(QStringLiteral("not installed")));
        const auto stream = http.stream({});
        QVERIFY(!awaited(next(&stream)));
        QCOMPARE(stream.error()->description(), response.error().description());
    }

private:
    static bool isInMemory(const char* file)
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return !maps.open(QIODevice::ReadOnly) || maps.readAll().contains(file);
    }

    static Task<bool> next(const HTTPStream* stream)
    {
        const auto event = co_await stream->next();
        co_return event.has_value();
    }

    const QString m_doubles = QStringLiteral(MODULE_DOUBLES);
    QTemporaryDir m_scratch;
    ModuleLoader m_modules { { m_scratch.path(), m_doubles } };
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ModuleLoaderTest)
#include "ModuleLoaderTest.moc"
