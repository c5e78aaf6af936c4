#include "memory/history/ConversationLibrary.h"

#include "memory/history/ChatArchive.h"
#include "memory/history/PastConversationLogic.h"
#include "support/Awaited.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

#include <ranges>

namespace pobblewig {

class ConversationLibraryTest : public QObject {
    Q_OBJECT

    using Found = std::vector<PastConversation>;

    ScratchDirectory m_scratch;
    ScriptedStores m_stores { m_scratch };
    ConversationLibrary m_library { m_stores.history, m_stores.memory, m_stores.moment, m_scratch };
    QUuid m_session = QUuid::createUuid();

    static ChatMessage message(const QString& text, std::optional<QUuid> session = std::nullopt)
    {
        return { .id = QUuid::createUuid(),
            .text = text,
            .timestamp = ScriptedStores::morning,
            .sessionID = session };
    }

    QStringList names(const QString& wanted)
    {
        QStringList names;
        for (const auto& conversation : awaited(m_library.find(wanted, {})))
            names.append(
                conversation.name.sliced(0, std::min<qsizetype>(15, conversation.name.size())));
        return names;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_stores.history.append(message(u"Today\nI rest"_s));
        QVERIFY(ChatArchive::write(m_scratch,
            { message(u"Hi"_s, m_session), message(u"Ein Ca\u0301fe"_s) }, u"2026-02-27"_s,
            m_session));
        QVERIFY(ChatArchive::write(
            m_scratch, { message(u"GROSSE stra\u00dfe"_s) }, u"2026-02-28"_s, QUuid::createUuid()));
        m_stores.memory.summaries.add(
            { .id = dailySummaryID(m_session), .summary = u"Coffee.\nMore"_s });
        m_scratch.write(u"chat-2026-02-26-torn.json"_s, "[{");
        m_scratch.write(u"chat-notes.json"_s, "[]");
    }

    void conversationsAreListedByDay()
    {
        const auto all = awaited(m_library.find({}, {}));
        QCOMPARE(names({}), QStringList({ {}, u"chat-2026-02-28"_s, u"chat-2026-02-27"_s }));
        const PastConversation current {
            .day = { 2026, 3, 1 }, .messageCount = 1, .line = u"Today"_s
        };
        QVERIFY(all[0] == current);
        QCOMPARE(all[1].line, u"GROSSE stra\u00dfe");
        QCOMPARE(all[2].line, u"Coffee.");
        QCOMPARE(all[2].messageCount, 2);
        QCOMPARE(awaited(m_library.read(all[2].name)).back().text, u"Ein Ca\u0301fe");
        QCOMPARE(awaited(m_library.read({})).front().text, u"Today\nI rest");
        QVERIFY(awaited(m_library.read(u"chat-2026-02-28/../chat.json"_s)).empty());
        // What cannot be read is left alone.
        QVERIFY(m_scratch.names().contains(u"chat-2026-02-26-torn.json"_s));
    }

    void everyWordIsFoundWithoutCaseAndAccents_data()
    {
        columns<QString, QStringList>("wanted", "found");
        row("composed", u"caf\u00e9"_s, QStringList(u"chat-2026-02-27"_s));
        row("plain", u"CAFE ein"_s, QStringList(u"chat-2026-02-27"_s));
        row("folded", u"Gro\u00dfe STRASSE"_s, QStringList(u"chat-2026-02-28"_s));
        row("the current one", u"rest"_s, QStringList(QString()));
        row("words of two messages", u"hi cafe"_s, QStringList());
    }
    void everyWordIsFoundWithoutCaseAndAccents()
    {
        QFETCH(QString, wanted);
        QFETCH(QStringList, found);
        QCOMPARE(names(wanted), found);
    }

    void whatIsFoundHasItsPlace_data()
    {
        columns<QString, QString, QString>("text", "wanted", "marked");
        row("composed", u"Ein Caf\u00e9, ein CAFE"_s, u"cafe"_s, u"Ein [Caf\u00e9], ein [CAFE]"_s);
        row("decomposed", u"Cafe\u0301!"_s, u"caf\u00e9"_s, u"[Cafe\u0301]!"_s);
        row("one letter for two", u"Stra\u00dfen"_s, u"strasse"_s, u"[Stra\u00dfe]n"_s);
        row("half of such a letter", u"Stra\u00dfen"_s, u"stras"_s, u"[Stra\u00df]en"_s);
        row("overlapping words", u"teatime tea"_s, u"teat tea"_s, u"[teat]ime [tea]"_s);
        row("beyond 16 bits", u"\U0001f98a fox"_s, u"fox"_s, u"\U0001f98a [fox]"_s);
        row("not every word", u"tea"_s, u"tea cake"_s, u"tea"_s);
        row("no words", u"tea"_s, u" "_s, u"tea"_s);
    }
    void whatIsFoundHasItsPlace()
    {
        QFETCH(QString, text);
        QFETCH(QString, wanted);
        auto places = PastConversationLogic::places(text, PastConversationLogic::words(wanted));
        for (const auto& place : places | std::views::reverse) {
            text.insert(place.end(), u']');
            text.insert(place.start, u'[');
        }
        QTEST(text, "marked");
    }

    void aDeletedConversationLeavesTheRest()
    {
        const auto before = m_scratch.names();
        const auto name = awaited(m_library.find({}, {}))[1].name;
        QVERIFY(!m_library.remove({}) && !m_library.remove(u"chat.json"_s));
        QVERIFY(m_library.remove(name));
        auto rest = before;
        rest.removeOne(name);
        QCOMPARE(m_scratch.names(), rest);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ConversationLibraryTest)
#include "ConversationLibraryTest.moc"
