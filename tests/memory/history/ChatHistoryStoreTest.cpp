#include "memory/history/ChatHistoryStore.h"

#include "memory/SessionBoundary.h"
#include "memory/history/ChatArchive.h"
#include "memory/history/UsageCounter.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Messages = std::vector<ChatMessage>;

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

    void allMessagesComeBackAndTheModelReadsTheLatestThirty()
    {
        const auto earlier = messages(0, 34);
        put(u"chat.json"_s, earlier);
        ChatHistoryStore store(*m_scratch);
        QVERIFY(store.transcript() == earlier && store.messages() == last(earlier, 30));
        // More than are ever written at once, and no event loop in between.
        for (const auto& next : messages(34, 99))
            store.append(next);
        const auto all = store.transcript();
        QCOMPARE(all.size(), 99u);
        QVERIFY(store.messages() == last(all, 30));
        const ChatHistoryStore again(*m_scratch);
        QVERIFY(again.transcript() == all && again.messages() == store.messages());
    }

    void aCrashBetweenTheFilesLosesAndDoublesNothing_data()
    {
        columns<Messages, Messages, Messages>("window", "transcript", "all");
        const auto all = messages(0, 40);
        row("no transcript yet", last(all, 30), Messages(), last(all, 30));
        row("a transcript left behind", last(all, 30), Messages(all.begin(), all.begin() + 12),
            all);
        row("messages removed from the window only", last(all, 2), all, all);
        row("no window", Messages(), all, all);
        auto gaping = all;
        gaping.erase(gaping.begin() + 12);
        gaping.erase(gaping.begin() + 34);
        row("gaps in the transcript", last(all, 30), gaping, all);
        auto changed = last(all, 30);
        changed.back().text = u"mended"_s;
        auto mended = all;
        mended.back().text = u"mended"_s;
        row("a text changed in the window only", changed, all, mended);
    }
    void aCrashBetweenTheFilesLosesAndDoublesNothing()
    {
        QFETCH(Messages, window);
        QFETCH(Messages, transcript);
        QFETCH(Messages, all);
        put(u"chat.json"_s, window);
        put(u"transcript.json"_s, transcript);
        ChatHistoryStore store(*m_scratch);
        QVERIFY(store.transcript() == all && store.messages() == last(all, 30));
    }

    void messagesGoWhenTheirTimeIsOver_data()
    {
        columns<ConversationKeeping, int>("keeping", "kept");
        row("year", ConversationKeeping::year, 33);
        row("month", ConversationKeeping::month, 32);
        row("the last", ConversationKeeping::lastMessages, 30);
    }
    void messagesGoWhenTheirTimeIsOver()
    {
        QFETCH(ConversationKeeping, keeping);
        QFETCH(int, kept);
        auto all = messages(0, 34);
        all[0].timestamp -= std::chrono::days(365);
        all[1].timestamp -= std::chrono::days(30);
        put(u"transcript.json"_s, all);
        ChatHistoryStore store(*m_scratch);
        const auto now = all.back().timestamp;
        QVERIFY(store.sweep(keeping, now) && !store.sweep(keeping, now));
        QVERIFY(ChatHistoryStore(*m_scratch).transcript() == last(all, kept));
        const std::array days { 0, 30, 31, 365, 366 };
        for (const auto age : days)
            put(u"chat-%1.json"_s.arg(Calendar().day(now).addDays(-age).toString(Qt::ISODate)), {});
        ChatArchive::sweepChatArchives(*m_scratch, now, Calendar(), keeping);
        const auto left = m_scratch->path().entryList({ u"chat-*"_s }).size();
        QCOMPARE(left, keeping == ConversationKeeping::year ? 4 : kept == 32 ? 2 : 0);
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
        QVERIFY(ChatHistoryStore(*m_scratch).transcript().empty());
    }

    void aFinishedConversationIsArchivedUnderItsDay()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const TimePoint lateInLondon(std::chrono::seconds(1772400000));
        const auto dayKey = SessionBoundary::dayKey(lateInLondon, tokyo);
        const auto session = QUuid::fromString(u"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10");
        QVERIFY(ChatArchive::write(*m_scratch, { message(1) }, dayKey, session));
        QCOMPARE(m_scratch->names(), QStringList(u"chat-2026-03-02-5F0C7A2E.json"_s));
        // After a crash, what came later is archived as well.
        const auto later = message(2);
        QVERIFY(ChatArchive::write(*m_scratch, { later }, dayKey, session));
        QVERIFY(ChatArchive::write(*m_scratch, { later }, dayKey, session));
        const JSONFileStore archive(*m_scratch, m_scratch->names()[0]);
        QCOMPARE(archive.load<Messages>()->size(), 2u);
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

    void usageIsKeptByDayForTheLatestDays()
    {
        QDate today(2026, 3, 1);
        std::vector<UsageCounter::Day> full;
        for (int number = int(UsageCounter::mostDays); number > 0; --number)
            full.push_back({ .day = today.addDays(-number).toString(Qt::ISODate) });
        QVERIFY(JSONFileStore(*m_scratch, u"usage_days.json"_s).save(full));
        UsageCounter counter(*m_scratch, [&] { return today; });
        counter.addVisionUsage(10, 1);
        counter.addLibrarianUsage(399, 2);
        today = today.addDays(-1);
        counter.addMainUsage(1, 0);
        const UsageCounter kept(*m_scratch);
        QVERIFY(kept.days() == counter.days());
        QCOMPARE(kept.days().size(), UsageCounter::mostDays);
        QCOMPARE(kept.days().front().day, full[1].day);
        QCOMPARE(kept.days()[UsageCounter::mostDays - 2].usage.mainPromptTokens, 1);
        const UsageCounter::Snapshot last { 0, 0, 399, 2, 10, 1, 0, 1, 1, 0 };
        QVERIFY(kept.days().back().usage == last);
        QCOMPARE(kept.snapshot().mainPromptTokens, 1);
    }

private:
    static Messages messages(int from, int to)
    {
        Messages messages;
        for (auto number = from; number < to; ++number)
            messages.push_back(message(number));
        return messages;
    }
    static Messages last(const Messages& all, int count)
    {
        return { all.end() - count, all.end() };
    }
    void put(const QString& name, const Messages& messages)
    {
        QVERIFY(JSONFileStore(*m_scratch, name).save(messages));
    }

    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatHistoryStoreTest)
#include "ChatHistoryStoreTest.moc"
