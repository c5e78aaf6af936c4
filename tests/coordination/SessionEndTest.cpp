#include "conversation/SessionEnd.h"

#include "coordination/ScriptedLibrarian.h"
#include "foundation/JSONFileStore.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

namespace pobblewig {

using std::chrono::days;

namespace {

const auto rested = QStringLiteral("{\"dailySummary\": \"Rested.\"}");

/// A conversation and all that has a part in ending it.
struct Conversation {
    explicit Conversation(const QString& path)
        : directory(QDir(path))
    {
        read.models.main = &model;
        chat.onTurnComplete = [this] { return afterChatTurn(); };
        read.memory.sessions.ensureActiveSession(read.time, Calendar());
    }
    Q_DISABLE_COPY_MOVE(Conversation)
    ~Conversation()
    {
        // A turn outlives its service unless it is told to end.
        chat.cancelStreaming();
        QCoreApplication::processEvents();
    }

    static SituationSnapshot situation() { return {}; }

    Task<> afterChatTurn()
    {
        read.memory.sessions.recordTurn(read.time);
        spawn(read.readingAlong.afterChatTurn());
        co_return;
    }
    void ask(const QString& text)
    {
        model.enqueue(QStringLiteral("Fine."));
        chat.submit(text);
        QTRY_VERIFY(!chat.isInTurn());
    }

    /// What the librarian was asked for, in order.
    QString asked() const
    {
        QStringList names;
        for (const auto& request : read.model.requests())
            names.append(request.responseFormat.name);
        return names.join(u' ');
    }
    size_t closedSessions() const { return read.memory.sessions.sessions().size() - 1; }

    DataDirectory directory;
    ScriptedLibrarian read { directory };
    ScriptedProvider model;
    ChatService chat { read.all, read.moment, { .models = read.models, .situation = situation } };
    SessionRolloverService rollover { { read.moment, read.memory, read.history, read.librarian,
        directory, [](TimePoint, TimePoint) { return QString(); } } };
    /// Whether a session was being closed, each time that there was something new.
    std::vector<bool> published;
    SessionEnd end { { .memory = read.memory,
        .moment = read.moment,
        .chat = chat,
        .readingAlong = read.readingAlong,
        .rollover = rollover,
        .changed = [this] { published.push_back(end.isUnderWay()); } } };
};

QStringList texts(const std::vector<ChatMessage>& messages)
{
    QStringList texts;
    for (const auto& message : messages)
        texts.append(message.text);
    return texts;
}

} // namespace

class SessionEndTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m = std::make_unique<Conversation>(m_scratch->path());
    }

    void aDayThatIsOverIsReadAndClosed()
    {
        awaited(m->end.endIfDue());
        QCOMPARE(m->closedSessions(), 0u);
        m->ask(QStringLiteral("I am tired"));
        const auto lastSaidAt = m->chat.messages().back().timestamp;
        m->read.time += days(1);
        m->read.model.enqueue(QStringLiteral("{\"observations\": [{\"summary\": \"Tired\"}]}"));
        m->read.model.enqueue(rested);
        awaited(m->end.endIfDue());
        QCOMPARE(m->asked(), QStringLiteral("librarian_extraction daily_closeout"));
        QCOMPARE(
            m->read.memory.summaries.latestDaily(m->read.time)->summary, QStringLiteral("Rested."));
        QCOMPARE(
            archived(), QStringList({ QStringLiteral("I am tired"), QStringLiteral("Fine.") }));
        QVERIFY(m->chat.messages().empty());
        QVERIFY(m->published == std::vector({ true, false }));
        const auto observed = m->read.memory.observations.observations({}, {}).at(0);
        QCOMPARE(observed.occurredAt, lastSaidAt);
        QVERIFY(observed.archivedIntoPeriodID);
        QVERIFY(m->read.model.requests()[1].messages[0].content.contains(u"] Tired"));
    }

    void theUserCanComeBackInTime_data()
    {
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<bool>("isHeld");
        QTest::addColumn<bool>("isFailure");
        QTest::addColumn<int>("messages");
        QTest::addColumn<bool>("isClosed");
        const auto morning = QStringLiteral("Good morning");
        row("nobody came", QString(), false, false, 2, true);
        row("a turn", morning, false, false, 4, false);
        row("a turn that goes on", morning, true, false, 3, false);
        row("a turn that failed", morning, false, true, 3, true);
    }
    void theUserCanComeBackInTime()
    {
        QFETCH(QString, meanwhile);
        QFETCH(bool, isHeld);
        QFETCH(bool, isFailure);
        QFETCH(int, messages);
        QFETCH(bool, isClosed);
        m->ask(QStringLiteral("Good night"));
        m->read.time += days(1);
        m->read.enqueueHeld();
        auto ending = m->end.endIfDue();
        QCOMPARE(m->asked(), QStringLiteral("librarian_extraction"));
        if (isFailure) {
            m->model.enqueue(LLMError::http(500, {}));
            m->model.enqueue(LLMError::http(500, {}));
        }
        m->model.enqueue({ { LLMToken { QStringLiteral("Hello.") } }, std::nullopt, isHeld });
        if (!meanwhile.isEmpty())
            m->chat.submit(meanwhile);
        QTRY_COMPARE(int(m->chat.messages().size()), messages);
        QTRY_COMPARE(m->chat.isInTurn(), isHeld);
        m->read.model.enqueue(rested);
        m->read.model.release();
        awaited(std::move(ending));
        QCOMPARE(m->closedSessions(), size_t(isClosed));
        QCOMPARE(int(m->chat.messages().size()), isClosed ? messages - 2 : messages);
    }

    void aTurnIsNeverCutOff()
    {
        m->model.enqueue({ {}, std::nullopt, true });
        m->chat.submit(QStringLiteral("Good night"));
        QTRY_COMPARE(m->model.requests().size(), 1u);
        m->read.time += days(1);
        awaited(m->end.endIfDue());
        awaited(m->end.startNewSession());
        m->chat.cancelStreaming();
        // What a turn triggers is part of it.
        m->chat.onTurnComplete = [this] { return m->end.startNewSession(); };
        m->ask(QStringLiteral("Good morning"));
        QCOMPARE(m->closedSessions(), 0u);
        QVERIFY(m->published.empty());
    }

    void aPressEndsOneSession()
    {
        awaited(m->end.startNewSession());
        QCOMPARE(m->closedSessions(), 0u);
        m->ask(QStringLiteral("Hello"));
        m->read.time += days(1);
        m->read.enqueueHeld();
        m->read.model.enqueue(rested);
        auto first = m->end.startNewSession();
        awaited(m->end.startNewSession());
        awaited(m->end.endIfDue());
        QVERIFY(m->end.isUnderWay());
        m->read.model.release();
        awaited(std::move(first));
        QCOMPARE(m->closedSessions(), 1u);
        QCOMPARE(m->asked(), QStringLiteral("librarian_extraction daily_closeout"));
        awaited(m->end.startNewSession());
        QCOMPARE(m->closedSessions(), 1u);
    }

    /// While the librarian reads, and while it writes the day down.
    void whatIsSaidMeanwhileGoesOn_data()
    {
        QTest::addColumn<int>("answersBefore");
        QTest::addColumn<bool>("isReplyLate");
        row("reading", 0, false);
        row("reading, with a late reply", 0, true);
        row("writing", 1, false);
        row("writing, with a late reply", 1, true);
    }
    void whatIsSaidMeanwhileGoesOn()
    {
        QFETCH(int, answersBefore);
        QFETCH(bool, isReplyLate);
        m->ask(QStringLiteral("Old"));
        if (answersBefore > 0)
            m->read.model.enqueue(QStringLiteral("{}"));
        m->read.enqueueHeld();
        auto ending = m->end.startNewSession();
        QTRY_COMPARE(m->read.model.requests().size(), size_t(answersBefore + 1));
        m->model.enqueue({ { LLMToken { QStringLiteral("Indeed.") } }, std::nullopt, isReplyLate });
        m->chat.submit(QStringLiteral("New"));
        QTRY_COMPARE(m->chat.messages().size(), isReplyLate ? 3u : 4u);
        m->read.model.enqueue(rested);
        m->read.model.release();
        awaited(std::move(ending));
        m->model.release();
        const QStringList goesOn { QStringLiteral("New"), QStringLiteral("Indeed.") };
        QTRY_COMPARE(texts(m->chat.messages()), goesOn);
        QCOMPARE(archived(), QStringList({ QStringLiteral("Old"), QStringLiteral("Fine.") }));
        QCOMPARE(m->closedSessions(), 1u);
        const auto& sessions = m->read.memory.sessions.sessions();
        QCOMPARE(sessions[0].startedAt, m->chat.messages()[0].timestamp);
        QVERIFY(sessions[0].startedAt >= *sessions[1].endedAt);
    }

    /// The history does not hold all of it.
    void nothingIsLostHoweverMuchIsSaidMeanwhile()
    {
        m->ask(QStringLiteral("Old"));
        m->read.enqueueHeld();
        auto ending = m->end.startNewSession();
        m->read.model.enqueue(QStringLiteral("{}"));
        m->read.model.enqueue(rested);
        for (int turn = 0; turn < 16; ++turn)
            m->ask(QStringLiteral("New"));
        m->read.model.release();
        awaited(std::move(ending));
        QCOMPARE(archived(), QStringList({ QStringLiteral("Old"), QStringLiteral("Fine.") }));
        QCOMPARE(m->chat.messages().size(), 32u);
        QCOMPARE(m->closedSessions(), 1u);
    }

    void aLibrarianThatNeverAnswersHoldsNothingUp()
    {
        m->ask(QStringLiteral("Hello"));
        const TransportError silence { TransportError::Kind::timedOut,
            QStringLiteral("No answer.") };
        m->read.enqueueHeld(silence);
        m->read.enqueueHeld(silence);
        auto ending = m->end.startNewSession();
        QVERIFY(m->end.isUnderWay());
        m->read.model.release();
        QTRY_COMPARE(m->read.model.requests().size(), 2u);
        m->read.model.release();
        awaited(std::move(ending));
        QCOMPARE(m->read.memory.summaries.latestDaily(m->read.time)->summary,
            QStringLiteral("2 chat turns, 0 observations recorded."));
        QCOMPARE(archived().size(), 2);
        QVERIFY(!m->end.isUnderWay());
    }

    void nothingForgottenIsWrittenDown_data()
    {
        QTest::addColumn<int>("answersBefore");
        row("while it is read", 0);
        row("while the day is written down", 1);
    }
    void nothingForgottenIsWrittenDown()
    {
        QFETCH(int, answersBefore);
        beginToEnd(answersBefore);
        m->read.librarian.abandonRuns();
        m->read.history.clear();
        m->read.memory.sessions.deleteAll();
        m->read.memory.sessions.ensureActiveSession(m->read.time, Calendar());
        m->read.model.release();
        QTRY_VERIFY(!m->end.isUnderWay());
        QVERIFY(m->read.memory.summaries.all().empty());
        QCOMPARE(m->closedSessions(), 0u);
        QVERIFY(archived().isEmpty() && m->chat.messages().empty());
    }

    void aDeletionMeanwhileLetsTheDayBeToldAgain()
    {
        beginToEnd(1);
        m->read.librarian.abandonRuns();
        m->read.model.enqueue(QStringLiteral("{\"dailySummary\": \"Slept.\"}"));
        m->read.model.release();
        QTRY_VERIFY(!m->end.isUnderWay());
        QCOMPARE(m->closedSessions(), 1u);
        QCOMPARE(
            m->read.memory.summaries.latestDaily(m->read.time)->summary, QStringLiteral("Slept."));
    }

private:
    /// Until the librarian thinks about its next answer.
    void beginToEnd(int answersBefore)
    {
        m->ask(QStringLiteral("Secret"));
        if (answersBefore > 0)
            m->read.model.enqueue(QStringLiteral("{}"));
        m->read.model.enqueueHeld(rested);
        spawn(m->end.startNewSession());
        QTRY_COMPARE(m->read.model.requests().size(), size_t(answersBefore + 1));
    }

    /// The texts of all archives.
    QStringList archived() const
    {
        QStringList result;
        for (const auto& file : m->directory.path.entryList({ QStringLiteral("chat-*.json") }))
            result +=
                texts(JSONFileStore(m->directory, file).load<std::vector<ChatMessage>>().value());
        return result;
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<Conversation> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SessionEndTest)
#include "SessionEndTest.moc"
