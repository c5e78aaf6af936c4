#include "PobblewigDesktop/chat/ConversationModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

using Numbers = std::vector<uint>;

class ConversationModelTest : public QObject {
    Q_OBJECT

    /// 0 is a day's title.
    static std::vector<ConversationRow> rows(const Numbers& numbers)
    {
        std::vector<ConversationRow> result;
        for (const auto number : numbers)
            result.push_back(
                { .kind = number ? ConversationRow::Kind::user : ConversationRow::Kind::day,
                    .id = number ? QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0) : QUuid(),
                    .text = QString::number(number) });
        return result;
    }

private Q_SLOTS:
    void onlyWhatChangedIsAnnounced_data()
    {
        QTest::addColumn<Numbers>("before");
        QTest::addColumn<Numbers>("after");
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("inserted");
        QTest::newRow("the first") << Numbers {} << Numbers { 0, 1 } << 0 << 2;
        QTest::newRow("another") << Numbers { 0, 1 } << Numbers { 0, 1, 2 } << 0 << 1;
        QTest::newRow("the oldest goes") << Numbers { 0, 1, 2 } << Numbers { 0, 2, 3 } << 1 << 1;
        QTest::newRow("a new session") << Numbers { 0, 1, 2 } << Numbers {} << 3 << 0;
        QTest::newRow("another order") << Numbers { 1, 2 } << Numbers { 2, 1 } << 1 << 1;
        QTest::newRow("a doubled id") << Numbers { 1 } << Numbers { 1, 1 } << 0 << 1;
        QTest::newRow("no more doubled") << Numbers { 1, 1 } << Numbers { 1 } << 1 << 0;
    }
    void onlyWhatChangedIsAnnounced()
    {
        QFETCH(Numbers, before);
        QFETCH(Numbers, after);
        ConversationModel model;
        const QAbstractItemModelTester tester(&model);
        model.setRows(rows(before));
        const QSignalSpy removed(&model, &ConversationModel::rowsRemoved);
        const QSignalSpy inserted(&model, &ConversationModel::rowsInserted);
        model.setRows(rows(after));
        QCOMPARE(model.rows(), rows(after));
        QTEST(int(removed.size()), "removed");
        QTEST(int(inserted.size()), "inserted");
    }

    void anEditedMessageStaysInItsPlace()
    {
        ConversationModel model;
        model.setRows(rows({ 1, 2 }));
        const QPersistentModelIndex second(model.index(1));
        auto edited = rows({ 2 });
        edited.front().text = QStringLiteral("other");
        model.setRows(edited);
        QCOMPARE(second.row(), 0);
        QCOMPARE(second.data().toString(), QStringLiteral("other"));
    }

    void theReplyFollowsTheMessages()
    {
        ConversationModel model;
        const QAbstractItemModelTester tester(&model);
        model.setReplyText(QStringLiteral("nobody is writing"));
        QCOMPARE(model.rowCount(), 0);
        model.setRows(rows({ 1 }));
        model.setReply(ConversationRow { .kind = ConversationRow::Kind::preview });
        model.setReplyText(QStringLiteral("one"));
        model.setRows(rows({ 1, 2 }));
        QCOMPARE(model.row(2).text, QStringLiteral("one"));
        QCOMPARE(model.rowOf(QUuid()), 2);
        model.setReplyText(QStringLiteral("other"));
        QCOMPARE(model.row(2).text, QStringLiteral("other"));
        model.setReply(std::nullopt);
        QCOMPARE(model.rows(), rows({ 1, 2 }));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ConversationModelTest)
#include "ConversationModelTest.moc"
