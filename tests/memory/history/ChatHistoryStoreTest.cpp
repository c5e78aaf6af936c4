#include "memory/history/ChatHistoryStore.h"

#include "memory/SessionBoundary.h"
#include "memory/history/ChatArchive.h"
#include "support/FaultyFileOperations.h"
#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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
    void init() { m_scratch = std::make_unique<QTemporaryDir>(); }

    void theLatestThirtyMessagesComeBackAfterARestart()
    {
        std::vector<ChatMessage> earlier;
        for (int number = 0; number < 34; ++number)
            earlier.push_back(message(number));
        QVERIFY(JSONFileStore(directory(), QStringLiteral("chat.json")).save(earlier));
        ChatHistoryStore store(directory());
        const std::vector<ChatMessage> latest(earlier.end() - 30, earlier.end());
        QVERIFY(store.messages() == latest);
        store.append(message(34));
        QCOMPARE(store.messages().size(), 30u);
        QVERIFY(ChatHistoryStore(directory()).messages() == store.messages());
    }

    void anEarlierMessageNeedsOnlyItsFirstFields()
    {
        QFile file(m_scratch->filePath(QStringLiteral("chat.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[{\"id\": \"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10\", \"role\": \"system\","
                   "\"text\": \"t\", \"timestamp\": \"2026-03-01T08:15:00Z\"}]");
        file.close();
        QCOMPARE(ChatHistoryStore(directory()).messages().size(), 1u);
    }

    void aTextIsReplacedByItsId()
    {
        ChatHistoryStore store(directory());
        store.append(message(1));
        store.update(QUuid::createUuid(), QStringLiteral("nobody's"));
        QCOMPARE(store.messages().front().text, QStringLiteral("1"));
        store.update(store.messages().front().id, QStringLiteral("mended"));
        QCOMPARE(ChatHistoryStore(directory()).messages().front().text, QStringLiteral("mended"));
        store.clear();
        QVERIFY(ChatHistoryStore(directory()).messages().empty());
    }

    void aFailedSaveIsLoggedAndRepairedByTheNext()
    {
        const LogLines log;
        auto failing = directory();
        failing.operations = std::make_shared<FaultyFileOperations>(1);
        ChatHistoryStore store(failing);
        store.append(message(1));
        QCOMPARE(log.lines(),
            QStringList(QStringLiteral("buddy: failed to persist chat: No space left on device")));
        store.append(message(2));
        QCOMPARE(ChatHistoryStore(directory()).messages().size(), 2u);
    }

    void aFinishedConversationIsArchivedUnderItsDay()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const TimePoint lateInLondon(std::chrono::seconds(1772400000));
        const auto dayKey = SessionBoundary::dayKey(lateInLondon, tokyo);
        const auto session = QUuid::fromString(u"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10");
        QVERIFY(ChatArchive::write(directory(), { message(1) }, dayKey, session));
        QVERIFY(
            QFile::exists(m_scratch->filePath(QStringLiteral("chat-2026-03-02-5F0C7A2E.json"))));
    }

private:
    DataDirectory directory() const { return QDir(m_scratch->path()); }

    std::unique_ptr<QTemporaryDir> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatHistoryStoreTest)
#include "ChatHistoryStoreTest.moc"
