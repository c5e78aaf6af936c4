#include "foundation/TransportErrorLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

using Kind = TransportError::Kind;
using Ending = TransportErrorLogic::ReplyEnding;

class TransportErrorLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Which of these a server causes depends on how its bytes and its goodbye meet.
    void aClosedConnectionEndsOnlyWhatHasNoOtherEnd_data()
    {
        QTest::addColumn<Ending>("ending");
        QTest::addColumn<std::optional<Kind>>("kind");
        const auto again = QNetworkReply::ContentReSendError;
        const std::optional<Kind> whole;
        const std::optional cut(Kind::truncated);
        row("open ended", Ending { again, true, false, false }, whole);
        row("in chunks", Ending { again, true, false, true }, cut);
        row("of a known length", Ending { again, true, true, false }, cut);
        row("before the head", Ending { again }, std::optional(Kind::unreachable));
        row("chunks, noticed early", Ending { QNetworkReply::RemoteHostClosedError, true }, cut);
        row("a status of 409", Ending { QNetworkReply::ContentConflictError, true, false, true },
            whole);
    }
    void aClosedConnectionEndsOnlyWhatHasNoOtherEnd()
    {
        QFETCH(Ending, ending);
        QFETCH(std::optional<Kind>, kind);
        const auto failure = TransportErrorLogic::failure(ending, {});
        QCOMPARE(failure.has_value(), kind.has_value());
        QVERIFY(!failure || failure->kind == kind);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::TransportErrorLogicTest)
#include "TransportErrorLogicTest.moc"
