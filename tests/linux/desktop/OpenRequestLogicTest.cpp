#include "PobblewigLinux/desktop/OpenRequestLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

class OpenRequestLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::OpenRequestLogicTest)
#include "OpenRequestLogicTest.moc"
