#include "conversation/ChatService.h"

#include "support/Awaited.h"
#include "support/BorrowedProvider.h"
#include "support/LogLines.h"
#include "support/ScriptedProvider.h"

#include <QSignalSpy>
#include <QTest>

namespace pobblewig {

namespace {

const LLMFailure serverError = LLMError::http(500, QStringLiteral("overloaded, key sk-secret"));
const LLMFailure noNetwork = TransportError { TransportError::Kind::unreachable,
    QStringLiteral("The server does not answer.") };

ChatService::Dependencies dependencies(LLMProvider*& main, LLMProvider*& vision)
{
    const auto lend = [](LLMProvider* provider) -> Task<std::unique_ptr<LLMProvider>> {
        co_return BorrowedProvider::of(provider);
    };
    return {
        .mainProvider = [&main, lend] { return lend(main); },
        .visionProvider = [&vision, lend] { return lend(vision); },
        .mainConfig = []() -> Task<MainModelConfig> { co_return MainModelConfig(); },
        .situationProvider = []() -> Task<SituationSnapshot> {
            co_return SituationSnapshot { .mode = CoachMode::studying,
                .summary = QStringLiteral("All is quiet.") };
        },
        .clock = [] { return TimePoint(std::chrono::seconds(1772352900)); },
    };
}

struct Fixture {
    ScriptedProvider model;
    ScriptedProvider visionModel;
    LLMProvider* main = &model;
    LLMProvider* vision = nullptr;
    ChatHistoryStore history { std::nullopt };
    UsageCounter usage { std::nullopt };
    ChatService chat { history, usage, dependencies(main, vision) };
    QSignalSpy activity { &chat, &ChatService::activityChanged };

    void finishTurn() { QTRY_VERIFY(!activity.isEmpty() && !activity.last().at(0).toBool()); }

    bool succeeded() const { return activity.last().at(1).toBool(); }

    QStringList texts() const
    {
        QStringList result;
        for (const auto& message : chat.messages())
            result.append(message.text);
        return result;
    }
};

QStringList contents(const LLMRequest& request)
{
    QStringList result;
    for (const auto& message : request.messages)
        result.append(message.content);
    return result;
}

} // namespace

class ChatServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<Fixture>(); }

    void aReplyIsStreamedAndThenStandsInTheHistory()
    {
        m->model.enqueue({ { LLMToken { QStringLiteral("  Hello ") },
                               LLMToken { QStringLiteral("you\n") }, LLMUsage { 12, 3 } },
            std::nullopt, true });
        QVERIFY(m->chat.submit(QStringLiteral("  hi\n")));
        QTRY_COMPARE(m->chat.streamingPreview(), QStringLiteral("  Hello you\n"));
        QVERIFY(m->chat.isStreaming());
        QCOMPARE(m->texts(), QStringList(QStringLiteral("hi")));

        m->model.release();
        m->finishTurn();
        QVERIFY(m->succeeded());
        QCOMPARE(m->texts(), QStringList({ QStringLiteral("hi"), QStringLiteral("Hello you") }));
        QVERIFY(m->chat.messages() == m->history.messages());
        QVERIFY(m->chat.streamingPreview().isEmpty());
        QVERIFY(!m->chat.isStreaming());
        QCOMPARE(m->usage.snapshot().mainPromptTokens, 12);
        QCOMPARE(m->usage.snapshot().chatCalls, 1);
    }

    void aRequestCarriesThePromptAndTheHistoryWithoutSystemMessages()
    {
        m->history.append({ .id = QUuid::createUuid(),
            .role = ChatMessage::Role::system,
            .text = QStringLiteral("internal"),
            .timestamp = {} });
        m->history.append({ .id = QUuid::createUuid(),
            .role = ChatMessage::Role::assistant,
            .text = QStringLiteral("earlier"),
            .timestamp = {} });
        m->model.enqueue(QStringLiteral("fine"));
        m->chat.submit(QStringLiteral("how are you?"));
        m->finishTurn();

        const auto& request = m->model.requests().front();
        QCOMPARE(contents(request).mid(1),
            QStringList({ QStringLiteral("earlier"), QStringLiteral("how are you?") }));
        const auto& prompt = request.messages.front().content;
        QVERIFY(prompt.contains(QStringLiteral("\n\nCurrent situation:\nAll is quiet.\n\n")));
        QVERIFY(prompt.endsWith(QStringLiteral(
            "Current mode: Studying.\nCurrent date and time: 2026-03-01T08:15:00Z")));
        QCOMPARE(request.maxTokens, 1024);
        QCOMPARE(request.temperature, 0.7);
    }

    void onlyWhatMayPassIsRetriedOnceByItself_data()
    {
        QTest::addColumn<LLMFailure>("failure");
        QTest::addColumn<int>("requests");
        QTest::newRow("a server's error") << serverError << 2;
        QTest::newRow("nonsense") << LLMFailure(LLMError::invalidResponse(QStringLiteral("HTML")))
                                  << 2;
        QTest::newRow("no network") << noNetwork << 1;
        QTest::newRow("not configured")
            << LLMFailure(LLMError::notConfigured(QStringLiteral("no key"))) << 1;
    }
    void onlyWhatMayPassIsRetriedOnceByItself()
    {
        QFETCH(LLMFailure, failure);
        QFETCH(int, requests);
        const LogLines log;
        m->model.enqueue(failure);
        m->model.enqueue(failure);
        m->chat.submit(QStringLiteral("hi"));
        m->finishTurn();

        QVERIFY(!m->succeeded());
        QCOMPARE(std::ssize(m->model.requests()), requests);
        QCOMPARE(m->chat.lastError().value_or(QString()), description(failure));
        QCOMPARE(m->texts(), QStringList(QStringLiteral("hi")));
        QCOMPARE(log.lines().size(), requests - 1);
        QVERIFY(!log.lines().join(u' ').contains(QStringLiteral("sk-secret")));
        QCOMPARE(m->activity.count({ false, false }), 1);
    }

    void aRetrySucceedsWithoutASecondUserMessage()
    {
        m->model.enqueue(noNetwork);
        m->chat.submit(QStringLiteral("hi"));
        m->finishTurn();
        QVERIFY(m->chat.canRetry());
        QVERIFY(!m->chat.unsentText());

        m->activity.clear();
        m->model.enqueue(QStringLiteral("hello"));
        m->chat.retryLast();
        m->finishTurn();
        QVERIFY(m->succeeded());
        QVERIFY(!m->chat.lastError());
        QCOMPARE(m->texts(), QStringList({ QStringLiteral("hi"), QStringLiteral("hello") }));
        QCOMPARE(contents(m->model.requests().back()).mid(1), QStringList(QStringLiteral("hi")));
    }

    void withoutAModelTheTextIsKeptForARetry()
    {
        m->main = nullptr;
        m->chat.submit(QStringLiteral("hi"));
        m->finishTurn();
        QCOMPARE(m->chat.lastError().value_or(QString()),
            QStringLiteral("Model not configured: main model not configured"));
        QVERIFY(m->texts().isEmpty());
        QCOMPARE(m->chat.unsentText().value_or(QString()), QStringLiteral("hi"));

        m->main = &m->model;
        m->model.enqueue(QStringLiteral("hello"));
        m->activity.clear();
        m->chat.retryLast();
        m->finishTurn();
        QCOMPARE(m->texts(), QStringList({ QStringLiteral("hi"), QStringLiteral("hello") }));
    }

    void aStoppedTurnLeavesTheMessageAndNoError()
    {
        m->model.enqueue({ { LLMToken { QStringLiteral("half a") } }, std::nullopt, true });
        m->chat.submit(QStringLiteral("hi"));
        QTRY_COMPARE(m->chat.streamingPreview(), QStringLiteral("half a"));
        m->chat.cancelStreaming();
        QVERIFY(!m->chat.isStreaming());
        QVERIFY(!m->succeeded());
        QCOMPARE(m->model.droppedStreams(), 1);

        // The stopped turn must not disturb the next one, which begins before it has noticed.
        m->activity.clear();
        m->model.enqueue(QStringLiteral("whole"));
        QVERIFY(m->chat.submit(QStringLiteral("again")));
        m->finishTurn();
        QVERIFY(m->succeeded());
        QVERIFY(!m->chat.lastError());
        QCOMPARE(m->texts(),
            QStringList(
                { QStringLiteral("hi"), QStringLiteral("again"), QStringLiteral("whole") }));
    }

    void nothingIsAcceptedWhileATurnRuns()
    {
        m->model.enqueue({ {}, std::nullopt, true });
        QVERIFY(m->chat.submit(QStringLiteral("one")));
        QVERIFY(!m->chat.submit(QStringLiteral("two")));
        m->chat.retryLast();
        QTRY_COMPARE(m->model.requests().size(), 1u);
        m->model.release();
        m->finishTurn();
        QCOMPARE(m->model.requests().size(), 1u);
    }

    void aBlankTextIsNothing()
    {
        m->chat.submit(QStringLiteral(" \n\t"));
        m->finishTurn();
        QVERIFY(m->succeeded());
        QVERIFY(m->model.requests().empty());
        QVERIFY(m->texts().isEmpty());
    }

    void anEmptyReplyIsOwnedUpTo()
    {
        m->model.enqueue(QStringLiteral(" \n"));
        m->chat.submit(QStringLiteral("hi"));
        m->finishTurn();
        QCOMPARE(m->texts().last(),
            QStringLiteral("I got tangled up in my own tools there — mind asking that again?"));
    }

    void aPictureGoesToTheVisionModelWhereThereIsOne_data()
    {
        QTest::addColumn<bool>("hasVisionModel");
        QTest::newRow("vision model") << true;
        QTest::newRow("main model") << false;
    }
    void aPictureGoesToTheVisionModelWhereThereIsOne()
    {
        QFETCH(bool, hasVisionModel);
        const LogLines log;
        m->vision = hasVisionModel ? &m->visionModel : nullptr;
        auto& asked = hasVisionModel ? m->visionModel : m->model;
        asked.enqueue({ { LLMToken { QStringLiteral("a cat") }, LLMUsage { 5, 1 } } });
        const auto outcome = awaited(m->chat.send(
            QStringLiteral("what is it?"), QByteArray("JPEG"), ChatService::UserMessage::record));
        QVERIFY(outcome);
        const auto& request = asked.requests().front();
        QVERIFY(request.messages.back().imageJPEG == QByteArray("JPEG"));
        QCOMPARE(request.temperature, hasVisionModel ? 0.4 : 0.7);
        QVERIFY(m->chat.messages().front().hadImage);
        QCOMPARE(m->usage.snapshot().visionCalls, hasVisionModel ? 1 : 0);
        QCOMPARE(log.lines().size(), hasVisionModel ? 1 : 0);
    }

    void withoutACameraTheScreenCannotBeLookedAt()
    {
        m->chat.submit(QStringLiteral("look"), ChatService::Screenshot::with);
        m->finishTurn();
        QCOMPARE(m->chat.lastError().value_or(QString()),
            QStringLiteral("Screen capture is not available."));
        QVERIFY(m->model.requests().empty());
    }

    void theTurnIsCompletedBeforeItCountsAsDone()
    {
        int completed = 0;
        m->chat.onTurnComplete = [&]() -> Task<> {
            ++completed;
            return []() -> Task<> { co_return; }();
        };
        m->model.enqueue(QStringLiteral("hello"));
        m->chat.submit(QStringLiteral("hi"));
        m->finishTurn();
        QCOMPARE(completed, 1);
    }

private:
    std::unique_ptr<Fixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatServiceTest)
#include "ChatServiceTest.moc"
