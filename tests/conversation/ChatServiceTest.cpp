#include "conversation/ChatService.h"

#include "ChatFixture.h"
#include "prompts/PlatformWording.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/RequestParts.h"
#include "support/TableRow.h"
#include "wire/ChatCompletionsLogic.h"

#include <span>

namespace pobblewig {

namespace {

/// All but the prompt.
QString contents(const LLMRequest& request)
{
    return joined(std::span(request.messages).subspan(1), withoutContext);
}

/// The request as it is sent, up to the user's newest message.
QByteArray beginning(const LLMRequest& request)
{
    QByteArray bytes;
    for (const auto& message : std::span(request.messages).first(request.messages.size() - 1))
        bytes += QJsonDocument(ChatCompletionsLogic::encodeMessage(message)).toJson();
    return bytes;
}

} // namespace

class ChatServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<ChatFixture>(); }

    void aReplyIsStreamedAndThenStandsInTheHistory()
    {
        m->model.enqueue(
            { { LLMToken { u"  Hello "_s }, LLMToken { u"you\n"_s }, LLMUsage { 12, 3 } },
                std::nullopt, true });
        const auto asked = m->memory.sessions.ensureActiveSession(m->time, Calendar()).id;
        int completed = 0;
        m->chat.onTurnComplete = [&]() -> Task<> {
            ++completed;
            return ChatFixture::done();
        };
        QVERIFY(m->chat.submit(u"  hi\n"_s));
        QVERIFY(!m->chat.submit(u"two"_s));
        m->chat.retryLast();
        QTRY_COMPARE(m->chat.streamingPreview(), u"Hello you"_s);
        QVERIFY(m->chat.isStreaming());
        QCOMPARE(m->texts(), u"hi");
        QCOMPARE(completed, 0);

        m->memory.sessions.startNewSession(m->time, asked, Calendar());
        m->model.release();
        m->finishTurn();
        QVERIFY(m->succeeded());
        QCOMPARE(completed, 1);
        for (const auto& message : m->chat.messages())
            QVERIFY2(message.sessionID == asked, "the session in which it was asked");
        QCOMPARE(m->texts(), u"hi|Hello you");
        QVERIFY(m->chat.messages() == m->history.messages());
        QVERIFY(m->chat.streamingPreview().isEmpty());
        QCOMPARE(m->model.requests().size(), 1u);
        QCOMPARE(m->usage.snapshot().mainPromptTokens, 12);
    }

    void aRequestCarriesThePromptAndTheHistoryWithoutSystemMessages()
    {
        using Role = ChatMessage::Role;
        m->history.append({ {}, Role::system, u"internal"_s, {} });
        m->history.append({ {}, Role::assistant, u"earlier"_s, {} });
        m->ask(u"how are you?"_s, u"fine"_s);

        const auto& request = m->model.requests().front();
        QCOMPARE(contents(request), u"earlier|how are you?");
        QVERIFY(prompts(request.messages).contains(u"Current situation:\nAll is quiet.\n\n"));
        QCOMPARE(request.maxTokens, 1024);
        QCOMPARE(request.temperature, 0.7);
        QCOMPARE(m->texts(), u"internal|earlier|how are you?|fine");
    }

    void aRequestBeginsWithTheBytesOfTheOneBefore()
    {
        int turns = 0;
        ChatService chat(m->all, m->moment,
            { .models = m->models,
                .situation = [&]() -> SituationSnapshot {
                    return { .mode = CoachMode::focus,
                        .summary = u"Kate, %1 min"_s.arg(turns),
                        .sessionInfo = u"%1 turns today."_s.arg(turns) };
                },
                .wording = PlatformWording::linuxDesktop });
        int moves = 0;
        QByteArray before;
        for (turns = 1; turns <= 40; ++turns) {
            m->time += std::chrono::minutes(1);
            m->model.enqueue(u"reply %1"_s.arg(turns));
            chat.submit(u"question %1"_s.arg(turns));
            QTRY_VERIFY(!chat.isInTurn());
            if (turns % 3 == 0)
                chat.say(u"The outcome of something."_s);
            const auto& request = m->model.requests().back();
            const auto bytes = beginning(request);
            moves += bytes.startsWith(before) ? 0 : 1;
            QVERIFY2(turns > 12 || moves == 0, "the history is not full yet");
            QVERIFY(turns < 15 || request.messages.size() > 17);
            before = bytes;
        }
        QVERIFY2(moves <= 7, qPrintable(QString::number(moves)));
    }

    void onlyWhatMayPassIsRetriedOnceByItself_data()
    {
        columns<LLMFailure, int>("failure", "requests");
        const auto text = u"key sk-secret"_s;
        row("a server's error", LLMFailure(LLMError::http(500, text)), 2);
        row("nonsense", LLMFailure(LLMError::invalidResponse(text)), 2);
        row("no network", LLMFailure(TransportError { TransportError::Kind::unreachable, text }),
            1);
        row("not configured", LLMFailure(LLMError::notConfigured(text)), 1);
        auto busy = LLMError::http(429, text);
        busy.retryAfter = "12";
        row("asked to wait", LLMFailure(busy), 1);
    }
    void onlyWhatMayPassIsRetriedOnceByItself()
    {
        QFETCH(LLMFailure, failure);
        QFETCH(int, requests);
        const LogLines log;
        if (requests == 2)
            m->model.enqueue(failure);
        m->ask(u"hi"_s, failure);
        QVERIFY(!m->succeeded());
        QCOMPARE(std::ssize(m->model.requests()), requests);
        QCOMPARE(m->error(), description(failure));
        QCOMPARE(m->texts(), u"hi");
        QVERIFY(!m->chat.unsentText());
        QVERIFY(!log.lines().join(u' ').contains(u"sk-secret"));
        QCOMPARE(m->activity.count({ false, false }), 1);

        retry(u"hello"_s);
        QVERIFY(m->succeeded());
        QVERIFY(!m->chat.lastError());
        QCOMPARE(m->texts(), u"hi|hello");
        QCOMPARE(contents(m->model.requests().back()), u"hi");
    }

    void aServerWithoutTheModelOffersItsOwn()
    {
        m->model.offered = { u"owl"_s };
        m->ask(u"hi"_s, LLMFailure(LLMError::http(404, u"model 'emu' not found"_s)));
        const auto& problem = m->chat.problem().current();
        QTRY_COMPARE(problem->models, std::vector { u"owl"_s });
        m->model.enqueue(u"hello"_s);
        m->chat.retryWith(u"owl"_s);
        m->finishTurn();
        QCOMPARE(m->models.chosen[ModelUse::main], u"owl");
        QCOMPARE(m->texts(), u"hi|hello");
        QVERIFY(!problem);
    }

    void thoughtsAreShownAndNeverKept()
    {
        const auto& thinking = m->chat.watch().thinking();
        const LogLines log;
        m->model.enqueue(ScriptedProvider::Reply {
            { LLMThought { QString(30'000, u'x') }, LLMThought { u"Hm"_s } }, {}, true });
        m->chat.submit(u"hi"_s);
        QTRY_VERIFY(thinking.text.endsWith(u"xHm"));
        QVERIFY(thinking.text.size() <= TurnWatch::mostThoughts + 2);
        QVERIFY(thinking.since && !m->chat.watch().waiting());
        m->time += std::chrono::seconds(14);
        m->model.enqueue(u"hello"_s);
        m->model.release();
        m->finishTurn();
        QVERIFY(!thinking.since && thinking.before == std::chrono::seconds(14));
        QVERIFY(!m->texts().contains(u"Hm") && !log.lines().join(u' ').contains(u"Hm"));
        m->ask(u"again"_s, u"whole"_s);
        QVERIFY(thinking.isEmpty());
    }

    void whatTurnsOutToBeThoughtIsTakenBack()
    {
        m->model.enqueue(ScriptedProvider::Reply {
            { LLMToken { u"Tea? "_s }, LLMWasThought(), LLMToken { u"Tea."_s } }, {}, true });
        QStringList shown;
        QObject::connect(&m->chat, &ChatService::streamingPreviewChanged, &m->chat, [&] {
            shown.append(m->chat.streamingPreview());
            m->time += std::chrono::seconds(3);
        });
        m->chat.submit(u"tea or coffee?"_s);
        QTRY_COMPARE(shown.join(u'|'), u"Tea?||Tea.");
        const auto& thinking = m->chat.watch().thinking();
        QCOMPARE(thinking.text, u"Tea? ");
        QVERIFY(!thinking.since && thinking.before >= std::chrono::seconds(3));
        m->model.release();
        m->finishTurn();
        QCOMPARE(m->texts(), u"tea or coffee?|Tea.");
    }

    void aTurnSaysWhatItWaitsFor()
    {
        const auto& waiting = m->chat.watch().waiting();
        m->model.enqueue(ScriptedProvider::Reply { {}, {}, true });
        m->chat.submit(u"hi"_s);
        QTRY_VERIFY(waiting && waiting->cause == Waiting::Cause::reply);
        m->chat.cancelStreaming();
        QVERIFY(!waiting);
        m->model.enqueueHeld(u"half"_s);
        m->chat.submit(u"hi"_s);
        QTRY_COMPARE(m->chat.streamingPreview(), u"half");
        QVERIFY(!waiting);
        m->model.release();
        m->finishTurn();
    }

    void aTurnWhoseMessageIsGoneIsNotRetried()
    {
        m->ask(u"hi"_s, LLMFailure(LLMError::http(500, {})), LLMFailure(LLMError::http(500, {})));
        QVERIFY(m->chat.canRetry() && m->chat.lastError());
        m->history.clear();
        m->chat.reload();
        QVERIFY(!m->chat.canRetry() && !m->chat.lastError());
        m->chat.retryLast();
        QVERIFY(!m->chat.isInTurn());
        awaited(m->chat.send(u"hi"_s, {}, ChatService::UserMessage::reuseLast));
        QCOMPARE(m->model.requests().size(), 2u);
        QCOMPARE(m->texts(), u"");
    }

    void withoutAModelTheTextIsKeptForARetry()
    {
        m->models.main = nullptr;
        m->ask(u"hi"_s);
        QCOMPARE(m->error(), u"Model not configured: main model not configured");
        QCOMPARE(m->texts(), u"");
        QCOMPARE(m->chat.unsentText(), u"hi"_s);

        m->models.main = &m->model;
        retry(u"hello"_s);
        QCOMPARE(m->texts(), u"hi|hello");
    }

    void aStoppedReplyStaysAndIsContinued()
    {
        m->model.enqueueHeld(QString());
        m->chat.submit(u"hi"_s);
        QTRY_VERIFY(!m->model.requests().empty());
        m->chat.cancelStreaming();
        QCOMPARE(m->texts(), u"hi");

        m->model.enqueueHeld(u"half a "_s);
        m->chat.submit(u"hi"_s);
        QTRY_COMPARE(m->chat.streamingPreview(), u"half a"_s);
        m->chat.cancelStreaming();
        QVERIFY(!m->chat.isStreaming() && !m->succeeded() && !m->chat.canRetry());
        QCOMPARE(m->model.droppedStreams(), 2);
        QVERIFY(m->chat.messages().back().isStopped() && m->chat.canContinue());
        QCOMPARE(m->chat.messages().back().sessionID, m->chat.messages().front().sessionID);

        // The stopped turn must not disturb the next one, which begins before it has noticed.
        m->model.enqueue(u"whole"_s);
        m->chat.continueReply();
        m->finishTurn();
        QVERIFY(m->succeeded() && !m->chat.lastError() && !m->chat.canContinue());
        QCOMPARE(m->texts(), u"hi|hi|half a|Please go on where I stopped you.|whole");
        const auto& asked = m->model.requests().back().messages;
        QCOMPARE(asked[asked.size() - 2].content, u"half a");
    }

    void aMessageWithoutAnAnswerIsMarkedAndAskedAgain()
    {
        const auto failure = LLMError::http(401, {});
        m->ask(u"first"_s, failure);
        m->ask(u"second"_s, failure);
        const auto first = m->chat.messages()[0].id;
        const auto second = m->chat.messages()[1].id;
        QVERIFY(m->chat.isUnanswered(first) && m->chat.isUnanswered(second));
        const auto retry = [&](const QUuid& message, const QString& answer) {
            m->model.enqueue(answer);
            m->chat.retry(message);
            m->finishTurn();
            QVERIFY(m->succeeded() && !m->chat.isUnanswered(message));
        };
        retry(second, u"2"_s);
        QCOMPARE(m->texts(), u"first|second|2");
        retry(first, u"1"_s);
        QCOMPARE(m->texts(), u"first|second|2|first|1");
        m->chat.retry(first);
        QVERIFY(!m->chat.isInTurn());
    }

    void aQuestionIsAskedInOtherWords()
    {
        m->ask(u"hi"_s, u"hello"_s);
        m->chat.say(u"a reminder"_s, QUuid::createUuid());
        const auto question = m->chat.changeableQuestion()->id;
        QSignalSpy changes(&m->chat, &ChatService::messagesChanged);
        const auto provider = std::exchange(m->models.main, nullptr);
        m->chat.submitInstead(question, u"ho"_s);
        m->finishTurn();
        QCOMPARE(m->texts(), u"hi|hello|a reminder");
        m->models.main = provider;
        m->model.enqueue(LLMError::http(401, {}));
        m->chat.retryLast();
        m->finishTurn();
        QCOMPARE(m->texts(), u"a reminder|ho");
        QCOMPARE(changes.first().first().value<size_t>(), 0u);
        QVERIFY(m->chat.isUnanswered(m->chat.messages().back().id));
        retry(u"hey"_s);
        QCOMPARE(m->texts(), u"a reminder|ho|hey");
        m->model.enqueue(u"yes"_s);
        m->chat.submitInstead(question, u"more"_s);
        m->finishTurn();
        QCOMPARE(m->texts(), u"a reminder|ho|hey|more|yes");
    }

    void aReplyIsGivenAgain_data()
    {
        columns<bool>("isStopped");
        row("failed", false);
        row("stopped", true);
    }
    void aReplyIsGivenAgain()
    {
        QFETCH(bool, isStopped);
        m->ask(u"hi"_s, u"0"_s);
        for (int number = 1; number <= 6; ++number) {
            m->model.enqueue(QString::number(number));
            m->chat.answerAgain();
            m->finishTurn();
            QCOMPARE(contents(m->model.requests().back()), u"hi");
        }
        const std::vector earlier { u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s };
        QVERIFY(m->chat.messages().back().earlierTexts() == earlier);
        m->model.enqueue({ { LLMToken { u"half"_s } }, LLMError::http(401, {}), true });
        m->chat.answerAgain();
        QTRY_COMPARE(m->chat.streamingPreview(), u"half"_s);
        QCOMPARE(m->chat.replyInRevision(), m->chat.messages().back().id);
        if (isStopped)
            m->chat.cancelStreaming();
        else
            m->model.release();
        m->finishTurn();
        QCOMPARE(m->texts(), u"hi|6");
        QVERIFY(!m->chat.isUnanswered(m->chat.messages().front().id));
        QVERIFY(!m->chat.replyInRevision() && m->chat.canAnswerAgain());
        m->chat.say(u"Done."_s);
        QVERIFY(!m->chat.canAnswerAgain());
    }

    void aTurnThatNeedsNoModelOrGetsNoWordsEndsToo()
    {
        m->ask(u" \n\t"_s);
        QVERIFY(m->succeeded());
        ChatService blind(
            m->all, m->moment, { .models = m->models, .situation = ChatFixture::situation });
        blind.submit(u"look"_s, ChatService::Screenshot::with);
        QTRY_COMPARE(blind.lastError(), u"Screen capture is not available."_s);
        QTRY_VERIFY(blind.canRetry());
        QVERIFY(m->model.requests().empty());
        m->ask(u"hi"_s, u" \n"_s, u"```buddy-tools\n{}\n```"_s);
        QCOMPARE(m->model.requests().size(), 2u);
        QVERIFY(contents(m->model.requests().back())
                    .startsWith(u"hi|(empty reply)|Your last reply came through empty"));
        QCOMPARE(
            m->texts(), u"hi|I got tangled up in my own tools there — mind asking that again?");
    }

    void aPictureGoesToTheVisionModelWhereThereIsOne()
    {
        const LogLines log;
        for (const bool hasVisionModel : { false, true }) {
            m->models.vision = hasVisionModel ? &m->visionModel : nullptr;
            auto& asked = hasVisionModel ? m->visionModel : m->model;
            asked.enqueue({ { LLMToken { u"a cat"_s }, LLMUsage { 5, 1 } } });
            QVERIFY(awaited(
                m->chat.send(u"?"_s, QByteArray("JPEG"), ChatService::UserMessage::record)));
            const auto& request = asked.requests().front();
            QVERIFY(request.messages.back().images == std::vector<QByteArray> { "JPEG" });
            QCOMPARE(request.temperature, hasVisionModel ? 0.4 : 0.7);
            QCOMPARE(m->usage.snapshot().visionCalls, hasVisionModel ? 1 : 0);
        }
        QVERIFY(m->chat.messages().front().hadImage);
    }

    void whatIsAttachedGoesWithItsTurnAndIsNeverKept()
    {
        const std::vector<Attachment> attached {
            { .kind = Attachment::Kind::text, .name = u"notes.txt"_s, .text = u"Mitosis"_s },
            { .kind = Attachment::Kind::picture, .name = u"cell.png"_s, .jpegData = "CELL" },
        };
        const auto provider = std::exchange(m->models.main, nullptr);
        m->chat.submit(u"what?"_s, ChatService::Screenshot::without, attached);
        m->finishTurn();
        QCOMPARE(m->chat.unsentAttachments().size(), 2u);
        m->models.main = provider;
        m->models.vision = &m->visionModel;
        m->visionModel.enqueue(LLMError::http(401, {}));
        m->chat.retryLast();
        m->finishTurn();
        m->ask(u"meanwhile"_s, LLMError::http(401, {}));
        for (const auto number : { 0u, 1u })
            QVERIFY(m->chat.isUnanswered(m->chat.messages()[number].id));

        m->visionModel.enqueue(u"A cell."_s);
        m->chat.retry(m->chat.messages()[0].id);
        m->finishTurn();
        const auto line = u"what?\n\n[attached: notes.txt, cell.png]"_s;
        const auto asked = m->visionModel.requests().back().messages.back();
        const auto block = u"Attached file notes.txt:\nMitosis\n(End of notes.txt)\n\n"_s;
        QVERIFY2(asked.content.endsWith(block + line), qPrintable(asked.content));
        QVERIFY(!asked.content.contains(u"A screenshot is attached"));
        QVERIFY(asked.images == std::vector<QByteArray> { "CELL" });
        QCOMPARE(m->texts(), QStringList({ line, u"meanwhile"_s, line, u"A cell."_s }).join(u'|'));
        QVERIFY(m->chat.messages()[2].hadImage && !m->chat.changeableQuestion());
        QVERIFY(!m->chat.canAnswerAgain());
        m->ask(u"next"_s, u"Yes."_s);
        for (const auto& message : m->model.requests().back().messages)
            QVERIFY(!message.content.contains(u"Mitosis") && message.images.empty());
    }

    void aStoppedQuestionKeepsWhatIsAttachedForAnotherTry()
    {
        m->model.enqueue({ {}, std::nullopt, true });
        m->chat.submit(u"?"_s, ChatService::Screenshot::without,
            { { .name = u"a.txt"_s, .text = u"Mitosis"_s } });
        QTRY_COMPARE(m->model.requests().size(), 1u);
        m->chat.cancelStreaming();
        m->model.enqueue(u"Yes."_s);
        m->chat.retry(m->chat.messages().back().id);
        m->finishTurn();
        QVERIFY(m->model.requests().back().messages.back().content.contains(u"Mitosis"));
        QCOMPARE(m->texts(), u"?\n\n[attached: a.txt]|Yes.");
    }

    void aLookAtTheScreenGoesWithTheQuestion()
    {
        m->model.enqueueHeld(u"a cat"_s);
        QVERIFY(m->look());
        QTRY_COMPARE(m->screen.looks().size(), 1u);
        QVERIFY(m->screen.looks().front() == std::set { u"org.vault"_s });
        QVERIFY(!m->chat.captureIndicator() && m->chat.messages().empty());

        m->screen.enqueue(CapturedScreenshot { "JPEG", u"Captured Cats"_s });
        QTRY_COMPARE(m->chat.streamingPreview(), u"a cat"_s);
        QCOMPARE(m->chat.captureIndicator(), u"Captured Cats"_s);
        QVERIFY(m->model.requests().front().messages.back().images
            == std::vector<QByteArray> { "JPEG" });
        m->model.release();
        m->finishTurn();
        QVERIFY(m->succeeded() && !m->chat.captureIndicator());
        QVERIFY(m->chat.messages().front().hadImage);
    }

    void aLookThatFailsIsExplainedAndTakenAnewByARetry_data()
    {
        using Kind = ScreenCaptureError::Kind;
        columns<ScreenCaptureError, QString, int>("failure", "explanation", "permissionRequests");
        row("excluded", ScreenCaptureError { Kind::excludedApp, u"Vault"_s },
            "Screenshots are disabled while Vault is frontmost (excluded app).", 0);
        row("denied", ScreenCaptureError { Kind::permissionDenied },
            PlatformWording::linuxDesktop.screenPermissionNeeded.toString(), 1);
        row("nothing there", ScreenCaptureError { Kind::noCaptureTarget },
            "No window or display available to capture.", 0);
    }
    void aLookThatFailsIsExplainedAndTakenAnewByARetry()
    {
        QFETCH(ScreenCaptureError, failure);
        m->screen.enqueue(tl::unexpected(failure));
        m->look();
        m->finishTurn();
        QVERIFY(!m->succeeded());
        QTEST(m->error(), "explanation");
        QTEST(m->permissions.requests, "permissionRequests");

        m->screen.enqueue(CapturedScreenshot { "JPEG", {} });
        retry(u"a cat"_s);
        QCOMPARE(m->texts(), u"look|a cat");
        QCOMPARE(m->screen.looks().size(), 2u);
    }

    void aStoppedLookSendsNothingAndIsTheOnlyOne()
    {
        m->look();
        QTRY_COMPARE(m->screen.looks().size(), 1u);
        m->chat.cancelStreaming();
        QVERIFY(!m->look() && !m->chat.canRetry());
        m->ask(u"hi"_s, u"hello"_s);
        m->screen.enqueue(
            tl::unexpected(ScreenCaptureError { ScreenCaptureError::Kind::noCaptureTarget }));
        m->screen.enqueue(CapturedScreenshot { "JPEG", {} });
        m->model.enqueue(u"a cat"_s);
        QVERIFY(QTest::qWaitFor([&] { return m->look(); }));
        m->finishTurn();
        QVERIFY(!m->chat.lastError());
        QCOMPARE(m->texts(), u"hi|hello|look|a cat");
    }

private:
    void retry(const QString& answer) const
    {
        m->model.enqueue(answer);
        m->chat.retryLast();
        m->finishTurn();
    }

    std::unique_ptr<ChatFixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatServiceTest)
#include "ChatServiceTest.moc"
