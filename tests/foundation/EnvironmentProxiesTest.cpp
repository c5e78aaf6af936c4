#include "foundation/EnvironmentProxies.h"

#include <QTest>

namespace pobblewig {

class EnvironmentProxiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theEnvironmentNamesTheProxy_data()
    {
        QTest::addColumn<QStringList>("variables");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("proxy");
        const auto row = [](const char* name, const QStringList& variables, const char* url,
                             const char* proxy) {
            QTest::newRow(name) << variables << QString::fromUtf8(url) << QString::fromUtf8(proxy);
        };
        const auto http = QStringLiteral("http_proxy=http://p.test:3128");
        const auto exceptions = QStringLiteral("no_proxy=a.test, .b.test");
        const auto everywhere = QStringLiteral("ALL_PROXY=socks5://s.test");
        row("none", {}, "http://h.test", ":0");
        row("of the scheme", { http, everywhere }, "http://h.test", "p.test:3128");
        row("of another scheme", { http }, "https://h.test", ":0");
        row("for all, in capitals", { http, everywhere }, "https://h.test", "s.test:1080");
        row("without a scheme", { QStringLiteral("https_proxy=p.test") }, "https://h.test",
            "p.test:8080");
        row("an exception", { http, exceptions }, "http://a.test", ":0");
        row("below an exception", { http, exceptions }, "http://x.B.test", ":0");
        row("only ends like one", { http, exceptions }, "http://aa.test", "p.test:3128");
        row("no proxy at all", { http, QStringLiteral("no_proxy=*") }, "http://h.test", ":0");
        row("this machine", { http }, "http://127.0.0.1:11434", ":0");
        row("this machine by name", { http }, "http://localhost", ":0");
    }
    void theEnvironmentNamesTheProxy()
    {
        QFETCH(QStringList, variables);
        QFETCH(QString, url);
        QFETCH(QString, proxy);
        QProcessEnvironment environment;
        for (const auto& variable : variables)
            environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
        const auto found = EnvironmentProxies(environment).proxyFor(QUrl(url));
        QCOMPARE(QStringLiteral("%1:%2").arg(found.hostName()).arg(found.port()), proxy);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::EnvironmentProxiesTest)
#include "EnvironmentProxiesTest.moc"
