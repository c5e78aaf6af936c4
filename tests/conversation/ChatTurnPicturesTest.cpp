#include "TurnFixture.h"

namespace pobblewig {

class ChatTurnPicturesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TurnFixture>(); }

    void theScreenIsLookedAtOncePerTurn()
    {
        const auto look = call(u"screen_capture"_s);
        m->models.vision = &m->visionModel;
        m->model.enqueue(calling({ look, look }));
        m->visionModel.enqueue(calling({ look }));
        m->visionModel.enqueue(u"A cat."_s);
        m->screen.enqueue(CapturedScreenshot { "JPEG", u"Captured Cats"_s });
        m->ask(u"what's on my screen?"_s);

        QCOMPARE(m->screen.looks().size(), 1u);
        const auto& messages = m->visionModel.requests().front().messages;
        QVERIFY(prompts(messages).contains(u"A screenshot is attached"));
        QVERIFY(messages.back().images == std::vector<QByteArray> { "JPEG" });
        QCOMPARE(tail(m->visionModel.requests().front(), 3),
            QStringList({ u"captured: Captured Cats — the image is attached to this message"_s,
                u"refused: at most one screen capture per request"_s,
                ChatTurnLogic::screenshotAttached.toString() }));
        QVERIFY(tail(m->visionModel.requests().back(), 1).front().startsWith(u"refused"));
        QVERIFY(m->chat.messages().back().hadImage);
        QVERIFY(!m->chat.captureIndicator());
    }

    void aPictureForTheModelIsTheUsersToAllow_data()
    {
        columns<std::optional<ChatFixture::CaptureAnswer>, bool, int, QString>(
            "answer", "isPaused", "questions", "told");
        using Answer = ChatFixture::CaptureAnswer;
        const auto denied = "the user did not allow a picture";
        row("yes", std::optional(Answer::lookNow), false, 1, "captured: Captured Cats");
        row("no", std::optional(Answer::notNow), false, 1, denied);
        row("silence", std::optional<Answer>(), false, 1, denied);
        row("paused", std::optional(Answer::allowUntilQuit), true, 0, "observation is paused");
    }
    void aPictureForTheModelIsTheUsersToAllow()
    {
        QFETCH(std::optional<ChatFixture::CaptureAnswer>, answer);
        QFETCH(bool, isPaused);
        QFETCH(QString, told);
        if (!answer)
            m = std::make_unique<TurnFixture>(std::chrono::milliseconds(0));
        m->captureAnswer = answer;
        m->settings.update([&](auto& settings) { settings.pausedIndefinitely = isPaused; });
        m->screen.enqueue(CapturedScreenshot { "JPEG", u"Captured Cats"_s });
        const auto look = call(u"screen_capture"_s);
        m->ask(u"good night"_s, calling({ look, look }), u"Sleep well."_s);
        const auto& messages = m->model.requests().back().messages;
        const auto result = std::ranges::find(messages, look.id, &LLMMessage::toolCallID);
        QVERIFY(result->content.startsWith(told));
        QCOMPARE(m->screen.looks().size(), told.startsWith(u"captured") ? 1u : 0u);
        QTEST(m->captureQuestions, "questions");
    }

    void onceAllowedThereIsNoQuestionUntilAPause()
    {
        m->captureAnswer = ChatFixture::CaptureAnswer::allowUntilQuit;
        for (const auto isPaused : { false, false, true }) {
            m->settings.update([&](auto& settings) { settings.pausedIndefinitely = isPaused; });
            m->screen.enqueue(CapturedScreenshot { "JPEG", u"Captured Cats"_s });
            m->ask(u"look"_s, calling({ call(u"screen_capture"_s) }), u"A cat."_s);
        }
        QCOMPARE(m->captureQuestions, 1);
        QCOMPARE(m->screen.looks().size(), 2u);
    }

    void stoppingWithdrawsTheQuestionForAPicture()
    {
        m->captureAnswer.reset();
        m->model.enqueue(calling({ call(u"screen_capture"_s) }));
        m->chat.submit(u"look"_s);
        auto& consent = m->chat.captureConsent();
        QTRY_VERIFY(consent.isAsking());
        m->chat.cancelStreaming();
        QVERIFY(!consent.isAsking());
        consent.answer(ChatFixture::CaptureAnswer::allowUntilQuit);
        m->ask(u"hi"_s, u"Hello."_s);
        QVERIFY(m->screen.looks().empty());
        QCOMPARE(m->texts(), u"look|hi|Hello.");
    }

    void aLookThatIsDeniedIsToldToTheModel()
    {
        m->model.enqueue(calling({ call(u"screen_capture"_s) }));
        m->model.enqueue(u"I cannot see it."_s);
        m->screen.enqueue(
            tl::unexpected(ScreenCaptureError { ScreenCaptureError::Kind::permissionDenied }));
        m->ask(u"what's on my screen?"_s);
        QCOMPARE(m->permissions.requests, 1);
        QVERIFY(tail(m->model.requests().back(), 1).front().startsWith(u"error: Permission"));
        QVERIFY(m->succeeded());
    }

    void aTurnThatIsStoppedAmidAToolIsForgotten()
    {
        m->model.enqueue(calling({ call(u"screen_capture"_s) }));
        m->chat.submit(u"look"_s);
        QTRY_COMPARE(m->screen.looks().size(), 1u);
        m->chat.cancelStreaming();
        m->model.enqueueHeld(u"hel"_s);
        m->chat.submit(u"hi"_s);
        QTRY_COMPARE(m->chat.streamingPreview(), u"hel"_s);
        m->screen.enqueue(CapturedScreenshot { "JPEG", u"Captured Cats"_s });
        QTest::qWait(0);
        QCOMPARE(m->chat.streamingPreview(), u"hel"_s);
        m->model.release();
        m->finishTurn();
        QVERIFY(!m->chat.captureIndicator());
        QVERIFY(m->chat.lastToolCalls().empty());
        QCOMPARE(m->texts(), u"look|hi|hel");
    }

private:
    std::unique_ptr<TurnFixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatTurnPicturesTest)
#include "ChatTurnPicturesTest.moc"
