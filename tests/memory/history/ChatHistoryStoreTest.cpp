#include "memory/history/ChatHistoryStore.h"

#include "memory/SessionBoundary.h"
#include "memory/history/ChatArchive.h"
#include "memory/history/UsageCounter.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

ChatMessage message(int number)
{
    return {
        .id = QUuid::createUuid(),
        .role = number % 2 == 0 ? ChatMessage::Role::user : ChatMessage::Role::assistant,
        .text = QString::number(number),
        .timestamp = TimePoint(std::chrono::seconds(1772352900 + number)),
    };
}

} // namespace

class ChatHistoryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch.emplace(); }

    void theLatestThirtyMessagesComeBackAfterARestart()
    {
        std::vector<ChatMessage> earlier;
        for (int number = 0; number < 34; ++number)
            earlier.push_back(message(number));
        QVERIFY(JSONFileStore(*m_scratch, u"chat.json"_s).save(earlier));
        ChatHistoryStore store(*m_scratch);
        const std::vector<ChatMessage> latest(earlier.end() - 30, earlier.end());
        QVERIFY(store.messages() == latest);
        store.append(message(34));
        QCOMPARE(store.messages().size(), 30u);
        QVERIFY(ChatHistoryStore(*m_scratch).messages() == store.messages());
    }

    void anEarlierMessageNeedsOnlyItsFirstFields()
    {
        m_scratch->write(u"chat.json"_s,
            "[{\"id\": \"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10\", \"role\": \"system\","
            "\"text\": \"t\", \"timestamp\": \"2026-03-01T08:15:00Z\"}]");
        QCOMPARE(ChatHistoryStore(*m_scratch).messages().size(), 1u);
    }

    void aTextIsReplacedByItsId()
    {
        ChatHistoryStore store(*m_scratch);
        store.append(message(1));
        store.update(QUuid::createUuid(), u"nobody's"_s);
        QCOMPARE(store.messages().front().text, u"1");
        store.update(store.messages().front().id, u"mended"_s);
        QCOMPARE(ChatHistoryStore(*m_scratch).messages().front().text, u"mended");
        store.clear();
        QVERIFY(ChatHistoryStore(*m_scratch).messages().empty());
    }

    void aFinishedConversationIsArchivedUnderItsDay()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const TimePoint lateInLondon(std::chrono::seconds(1772400000));
        const auto dayKey = SessionBoundary::dayKey(lateInLondon, tokyo);
        const auto session = QUuid::fromString(u"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10");
        QVERIFY(ChatArchive::write(*m_scratch, { message(1) }, dayKey, session));
        QCOMPARE(m_scratch->names(), QStringList(u"chat-2026-03-02-5F0C7A2E.json"_s));
    }

    void usageGrowsPerLaneFromWhatTheFileHas()
    {
        m_scratch->write(u"usage.json"_s, "{\"chatCalls\": 7}");
        UsageCounter counter(*m_scratch);
        counter.addMainUsage(10, 1);
        counter.addMainUsage(20, 2);
        counter.addLibrarianUsage(31, 3);
        counter.addVisionUsage(40, 4);
        counter.addIntervention();
        const UsageCounter::Snapshot expected { 30, 3, 31, 3, 40, 4, 9, 1, 1, 1 };
        QVERIFY(UsageCounter(*m_scratch).snapshot() == expected);
    }

private:
    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatHistoryStoreTest)
#include "ChatHistoryStoreTest.moc"
