#include "foundation/EnvironmentProxies.h"

#include "support/TableRow.h"
#include "support/Variables.h"

namespace pobblewig {

class EnvironmentProxiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theEnvironmentNamesTheProxy_data()
    {
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("proxy");
        const auto http = QStringLiteral("http_proxy=http://p.test:3128 ");
        const auto exceptions = http + QStringLiteral("no_proxy=a.test,.b.test");
        const auto both = http + QStringLiteral("ALL_PROXY=socks5://s.test");
        row("none", "", "http://h.test", ":0");
        row("of the scheme", both, "http://h.test", "p.test:3128");
        row("of another scheme", http, "https://h.test", ":0");
        row("for all, in capitals", both, "https://h.test", "s.test:1080");
        row("without a scheme", "https_proxy=p.test", "https://h.test", "p.test:8080");
        row("an exception", exceptions, "http://a.test", ":0");
        row("below an exception", exceptions, "http://x.B.test", ":0");
        row("only ends like one", exceptions, "http://aa.test", "p.test:3128");
        row("no proxy at all", http + QStringLiteral("no_proxy=*"), "http://h.test", ":0");
        row("this machine", http, "http://127.0.0.1:11434", ":0");
        row("this machine by name", http, "http://localhost", ":0");
    }
    void theEnvironmentNamesTheProxy()
    {
        QFETCH(QString, environment);
        QFETCH(QString, url);
        QFETCH(QString, proxy);
        QProcessEnvironment process;
        for (const auto& [name, value] : variables(environment))
            process.insert(name, value);
        const auto found = EnvironmentProxies(process).proxyFor(QUrl(url));
        QCOMPARE(QStringLiteral("%1:%2").arg(found.hostName()).arg(found.port()), proxy);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::EnvironmentProxiesTest)
#include "EnvironmentProxiesTest.moc"
