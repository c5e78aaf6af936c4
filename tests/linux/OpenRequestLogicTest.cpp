#include "PobblewigLinux/OpenRequestLogic.h"

#include <QTest>

namespace pobblewig {

class OpenRequestLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyALinkOfOursIsLetIn_data()
    {
        QTest::addColumn<QStringList>("uris");
        QTest::addColumn<QString>("expected");
        const auto ours = QStringLiteral("pobblewig://auth?code=abc");
        const auto refused = QString();
        const auto row = [](const char* name, const QStringList& uris, const QString& expected) {
            QTest::newRow(name) << uris << expected;
        };
        row("ours", { ours }, ours);
        row("in capitals", { QStringLiteral("POBBLEWIG://auth?code=abc") }, ours);
        row("without a host", { QStringLiteral("pobblewig:/auth") },
            QStringLiteral("pobblewig:/auth"));
        row("nothing", {}, refused);
        row("an empty text", { QString() }, refused);
        row("a file", { QStringLiteral("file:///etc/passwd") }, refused);
        row("a path", { QStringLiteral("/etc/passwd") }, refused);
        row("an option", { QStringLiteral("--help") }, refused);
        row("the web", { QStringLiteral("https://example.org/?u=pobblewig://auth") }, refused);
        row("a longer scheme", { QStringLiteral("pobblewigs://auth") }, refused);
        row("a line break", { QStringLiteral("pobblewig://auth\nrm -rf") }, refused);
        row("a broken host", { QStringLiteral("pobblewig://a b/") }, refused);
        row("a lone surrogate", { QStringLiteral("pobblewig://") + QChar(0xD800) }, refused);
        row("the longest", { ours.leftJustified(2048, u'x') }, ours.leftJustified(2048, u'x'));
        row("too long", { ours.leftJustified(2049, u'x') }, refused);
        row("ours in the second place", { QStringLiteral("file:///"), ours }, refused);
        row("ours before a hundred thousand", QStringList(100'000, ours), ours);
    }
    void onlyALinkOfOursIsLetIn()
    {
        QFETCH(QStringList, uris);
        QFETCH(QString, expected);
        const auto link = OpenRequestLogic::link(uris);
        QCOMPARE(link ? link->toString() : QString(), expected);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::OpenRequestLogicTest)
#include "OpenRequestLogicTest.moc"
