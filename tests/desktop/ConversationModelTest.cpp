#include "PobblewigDesktop/ConversationModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

namespace {

using Kind = ConversationRow::Kind;

ConversationRow row(int number)
{
    return { .id = QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
        .text = QString::number(number) };
}

/// 0 is a day's title.
std::vector<ConversationRow> rows(const std::vector<int>& numbers)
{
    std::vector<ConversationRow> result;
    for (const auto number : numbers)
        result.push_back(number > 0
                ? row(number)
                : ConversationRow { .kind = Kind::day, .text = QStringLiteral("Today") });
    return result;
}

} // namespace

class ConversationModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatChangedIsAnnounced_data()
    {
        QTest::addColumn<std::vector<int>>("before");
        QTest::addColumn<std::vector<int>>("after");
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("inserted");
        using Numbers = std::vector<int>;
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
        QFETCH(std::vector<int>, before);
        QFETCH(std::vector<int>, after);
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
        const QSignalSpy changed(&model, &ConversationModel::dataChanged);
        auto edited = rows({ 2 });
        edited.front().text = QStringLiteral("other");
        model.setRows(edited);
        QCOMPARE(second.row(), 0);
        QCOMPARE(second.data().toString(), QStringLiteral("other"));
        QCOMPARE(changed.size(), 1);
    }

    void theReplyFollowsTheMessages()
    {
        ConversationModel model;
        const QAbstractItemModelTester tester(&model);
        model.setReplyText(QStringLiteral("nobody is writing"));
        QCOMPARE(model.rowCount(), 0);
        model.setRows(rows({ 1 }));
        model.setReply(ConversationRow { .kind = Kind::preview });
        model.setReplyText(QStringLiteral("one"));
        model.setReplyText(QStringLiteral("one two"));
        model.setRows(rows({ 1, 2 }));
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.row(2).text, QStringLiteral("one two"));
        QCOMPARE(model.rowOf(QUuid()), 2);
        model.setReplyText(QStringLiteral("other"));
        QCOMPARE(model.row(2).text, QStringLiteral("other"));
        model.setReply(std::nullopt);
        QCOMPARE(model.rows(), rows({ 1, 2 }));
        QVERIFY(!model.rowOf(QUuid()));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ConversationModelTest)
#include "ConversationModelTest.moc"
