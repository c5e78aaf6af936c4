#include "conversation/ChatTurn.h"

#include "ChatFixture.h"
#include "support/LogLines.h"
#include "support/TableRow.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace pobblewig {

namespace {

using Reply = ScriptedProvider::Reply;

LLMToolCall call(const QString& name, const QJsonObject& arguments = {})
{
    static int number = 0;
    const auto json = QJsonDocument(arguments).toJson(QJsonDocument::Compact);
    return LLMToolCall(QStringLiteral("call-%1").arg(++number), name, QString::fromUtf8(json));
}

Reply calling(std::vector<LLMToolCall> calls, const QString& text = {})
{
    Reply reply;
    if (!text.isEmpty())
        reply.events.emplace_back(LLMToken { text });
    reply.events.emplace_back(LLMToolCalls { std::move(calls) });
    return reply;
}

Reply findingNotes()
{
    return calling(
        { call(QStringLiteral("memory_find_notes"), { { QStringLiteral("query"), u"tea"_qs } }) });
}

LLMToolCall reminder(const QString& id)
{
    return call(QStringLiteral("propose_reminder"),
        { { QStringLiteral("proposalId"), id }, { QStringLiteral("title"), id } });
}

QString fenced(const QString& tag, const QString& body)
{
    return QStringLiteral("```%1\n%2\n```").arg(tag, body);
}

QStringList toolNames(const LLMRequest& request)
{
    QStringList names;
    for (const auto& tool : request.tools)
        names.append(tool.name);
    return names;
}

/// What the model read last.
QStringList tail(const LLMRequest& request, qsizetype count)
{
    QStringList contents;
    for (const auto& message : request.messages)
        contents.append(message.content);
    return contents.last(count);
}

} // namespace

class ChatTurnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<ChatFixture>();
        m_actions.clear();
        m->chat.onActions = [this](std::vector<BuddyAction> actions) {
            return take(std::move(actions));
        };
    }

    void resultsOfCallsComeBackInTheirOrderAndOnlyTheAnswerStays()
    {
        m->memory.notes.addNote({ .text = QStringLiteral("Likes green tea") }, TimePoint());
        auto reply = findingNotes();
        auto& calls = std::get<LLMToolCalls>(reply.events.front()).calls;
        calls.insert(calls.begin(), call(QStringLiteral("describe_tool")));
        calls.push_back(reminder(QStringLiteral("buy-tea")));
        calls.push_back(call(QStringLiteral("no_such_tool")));
        m->model.enqueue(reply);
        m->model.enqueue(QStringLiteral("Green tea."));
        m->ask(QStringLiteral("what do I like?"));

        const auto& request = m->model.requests().back();
        const auto& messages = request.messages;
        QCOMPARE(messages.size(), 7u);
        QCOMPARE(messages[2].toolCalls->size(), 4u);
        for (size_t index = 0; index < 4; ++index)
            QCOMPARE(messages[3 + index].toolCallID, calls[index].id);
        QVERIFY(messages[3].content.startsWith(u"error: no loadable tool named (missing name)"));
        QVERIFY(messages[4].content.contains(u"Likes green tea"));
        QVERIFY(messages[5].content.startsWith(u"registered as a pending proposal"));
        QVERIFY(messages[6].content.startsWith(u"error"));
        QCOMPARE(m->texts(), u"what do I like?|Green tea.");
        QCOMPARE(m_actions.size(), 1u);
        QVERIFY(m->chat.lastToolCalls()
            == (std::vector { QStringLiteral("describe_tool (failed)"),
                QStringLiteral("memory_find_notes"), QStringLiteral("no_such_tool (failed)") }));
        QCOMPARE(m->chat.totalToolCalls(), 3);
    }

    void threeRoundsAreTheLimit()
    {
        for (int round = 0; round < 4; ++round)
            m->model.enqueue(findingNotes());
        m->model.enqueue(QStringLiteral("Nothing found."));
        m->ask(QStringLiteral("search on"));
        QCOMPARE(m->executor.totalCalls(), 3);
        QCOMPARE(m->model.requests().size(), 5u);
        QVERIFY(tail(m->model.requests().back(), 1).front().startsWith(u"Your last reply came"));
        QCOMPARE(m->texts(), u"search on|Nothing found.");
    }

    void aLoadedToolIsOfferedForTheRestOfTheTurn()
    {
        const auto name = QStringLiteral("apps_list_sources");
        m->model.enqueue(calling(
            { call(QStringLiteral("describe_tool"), { { QStringLiteral("name"), name } }) }));
        m->model.enqueue(findingNotes());
        m->model.enqueue(QStringLiteral("done"));
        m->ask(QStringLiteral("which folders?"));
        QVERIFY(!toolNames(m->model.requests()[0]).contains(name));
        QVERIFY(toolNames(m->model.requests()[1]).contains(name));
        QVERIFY(toolNames(m->model.requests()[2]).contains(name));
        QCOMPARE(toolNames(m->model.requests()[2]).back(), u"forget_memory");
        QVERIFY(
            tail(m->model.requests()[1], 1)
                .front()
                .startsWith(
                    u"apps_list_sources is now available — call it in your next step. It does: "));
    }

    void withTheMemoryOffNothingOfItIsOffered()
    {
        m->isMemoryEnabled = false;
        m->model.enqueue(QStringLiteral("hi"));
        m->ask(QStringLiteral("hi"));
        const auto names = toolNames(m->model.requests().front());
        QVERIFY(names.filter(QRegularExpression(QStringLiteral("^memory_"))).isEmpty());
        QVERIFY(names.contains(QStringLiteral("screen_capture")));

        m->model.enqueue(findingNotes());
        m->model.enqueue(QStringLiteral("I cannot."));
        m->ask(QStringLiteral("look it up all the same"));
        QCOMPARE(tail(m->model.requests().back(), 1).front(), u"error: memory tools unavailable");
    }

    void theScreenIsLookedAtOncePerTurn()
    {
        const auto look = call(QStringLiteral("screen_capture"));
        m->vision = &m->visionModel;
        m->model.enqueue(calling({ look, look }));
        m->visionModel.enqueue(calling({ look }));
        m->visionModel.enqueue(QStringLiteral("A cat."));
        m->screen.enqueue(CapturedScreenshot { "JPEG", QStringLiteral("Captured Cats") });
        m->ask(QStringLiteral("what's on my screen?"));

        QCOMPARE(m->screen.looks().size(), 1u);
        const auto& messages = m->visionModel.requests().front().messages;
        QVERIFY(messages.front().content.contains(u"A screenshot is attached"));
        QVERIFY(messages.back().imageJPEG == QByteArray("JPEG"));
        QCOMPARE(tail(m->visionModel.requests().front(), 3),
            QStringList({ u"captured: Captured Cats — the image is attached to this message"_qs,
                u"refused: at most one screen capture per request"_qs,
                ChatTurnLogic::screenshotAttached.toString() }));
        QVERIFY(tail(m->visionModel.requests().back(), 1).front().startsWith(u"refused"));
        QVERIFY(m->chat.messages().back().hadImage);
        QVERIFY(!m->chat.captureIndicator());
    }

    void aLookThatIsDeniedIsToldToTheModel()
    {
        m->model.enqueue(calling({ call(QStringLiteral("screen_capture")) }));
        m->model.enqueue(QStringLiteral("I cannot see it."));
        m->screen.enqueue(
            tl::unexpected(ScreenCaptureError { ScreenCaptureError::Kind::permissionDenied }));
        m->ask(QStringLiteral("what's on my screen?"));
        QCOMPARE(m->permissionRequests, 1);
        QVERIFY(tail(m->model.requests().back(), 1).front().startsWith(u"error: Permission"));
        QVERIFY(m->succeeded());
    }

    void aModelWithoutFunctionsIsServedByText()
    {
        const LogLines log;
        m->model.enqueue(LLMError::http(400, QStringLiteral("tools?")));
        m->model.enqueue(QStringLiteral("Hello."));
        m->ask(QStringLiteral("hi"));
        QVERIFY(m->succeeded());
        QVERIFY(m->model.requests()[1].tools.empty());
        QVERIFY(log.lines().contains(QStringLiteral(
            "buddy: native tools rejected on the main lane (HTTP 400); falling back to "
            "prompt-based tools")));

        const auto request = QStringLiteral(
            R"({"tools":[{"name":"memory_find_notes","args":{"query":"tea"}},{"name":"x"}]})");
        m->model.enqueue(u"One moment.\n"_qs + fenced(QStringLiteral("buddy-tools"), request));
        m->model.enqueue(fenced(QStringLiteral("buddy-tools"), request));
        m->model.enqueue(fenced(QStringLiteral("buddy-tools"), request));
        m->model.enqueue(u"No tea.\n"_qs
            + fenced(QStringLiteral("buddy-actions"),
                QStringLiteral(
                    R"([{"type":"propose_reminder","proposalId":"tea","title":"Buy tea"}])")));
        m->ask(QStringLiteral("tea?"));
        QCOMPARE(m->texts(), u"hi|Hello.|tea?|No tea.");
        QCOMPARE(m_actions.size(), 1u);

        const auto& asked = m->model.requests()[2];
        QVERIFY(asked.tools.empty());
        QVERIFY(!asked.messages.front().content.contains(u"call the provided functions"));
        const auto said = tail(m->model.requests()[3], 2);
        QCOMPARE(said[0], u"One moment.");
        QVERIFY(
            said[1].startsWith(u"Tool results (local, deterministic):\n### memory_find_notes\n"));
        QVERIFY(said[1].contains(u"\n\n### x\n"));
        QVERIFY(said[1].endsWith(u"plus what you already know."));
        QCOMPARE(tail(m->model.requests()[4], 2)[0], u"(gathering context before answering)");
        QVERIFY(tail(m->model.requests()[5], 1)[0].endsWith(u"do not request more tools."));
    }

    void aRejectionAmidToolCallsStartsTheTurnOver()
    {
        m->model.enqueue(findingNotes());
        m->model.enqueue(LLMError::http(422, QStringLiteral("no")));
        m->model.enqueue(QStringLiteral("fine"));
        m->ask(QStringLiteral("tea?"));
        QCOMPARE(m->texts(), u"tea?|fine");
        QCOMPARE(m->model.requests()[2].messages.size(), 2u);
        QVERIFY(!m->model.requests()[2].tools.empty());
    }

    void anActionCallIsAcknowledgedAsItWillBe_data()
    {
        QTest::addColumn<QString>("allowedClass");
        QTest::addColumn<LLMToolCall>("action");
        QTest::addColumn<QString>("beginning");
        const auto setting = [](const QString& key, const QString& value) {
            return call(QStringLiteral("update_settings"),
                { { QStringLiteral("proposalId"), u"s"_qs }, { QStringLiteral("key"), key },
                    { QStringLiteral("value"), value } });
        };
        const auto focus = setting(QStringLiteral("mode"), QStringLiteral("focus"));
        row("asked", "", focus, "registered as a pending proposal");
        row("allowed", "settings_change", focus, "auto-approved — the user chose \"Allow always\"");
        row("allowed, of a kind that asks all the same", "settings_change",
            setting(QStringLiteral("cloudSyncEnabled"), QStringLiteral("true")), "registered");
        row("forgetting always asks", "memory_forget",
            call(QStringLiteral("forget_memory"),
                { { QStringLiteral("proposalId"), u"f"_qs },
                    { QStringLiteral("target"), u"note"_qs },
                    { QStringLiteral("id"), u"12345678"_qs } }),
            "registered");
        row("for a while", "",
            call(QStringLiteral("set_temporary_mode"), { { QStringLiteral("mode"), u"focus"_qs } }),
            "noted — applied when this turn completes");
        row("without an id", "",
            call(QStringLiteral("propose_reminder"), { { QStringLiteral("title"), u"x"_qs } }),
            "error: missing or invalid arguments — nothing was registered");
    }
    void anActionCallIsAcknowledgedAsItWillBe()
    {
        QFETCH(QString, allowedClass);
        QFETCH(LLMToolCall, action);
        QFETCH(QString, beginning);
        m->confirmations[allowedClass] = false;
        m->model.enqueue(calling({ action }));
        m->model.enqueue(QStringLiteral("Done that."));
        m->ask(QStringLiteral("please"));
        QVERIFY(tail(m->model.requests().back(), 1).front().startsWith(beginning));
        QCOMPARE(m_actions.size(), beginning.startsWith(u"error") ? 0u : 1u);
        QCOMPARE(m->executor.totalCalls(), 0);
    }

    void actionsArriveOnceAndAfterTheReply()
    {
        m->model.enqueue(calling({ reminder(QStringLiteral("a")), reminder(QStringLiteral("b")) }));
        m->model.enqueue(calling({ reminder(QStringLiteral("a")) }, QStringLiteral("Both.")));
        m->model.enqueue(QStringLiteral("Both are waiting."));
        m->ask(QStringLiteral("two"));
        QCOMPARE(m_actions.size(), 2u);
        QCOMPARE(m_textsAtActions, u"two|Both are waiting.");
    }

    void aClaimWithoutACallIsQuestionedOnce()
    {
        const auto claim = QStringLiteral("I've queued that. Confirm in the banner.");
        m->model.enqueue(claim);
        m->model.enqueue(claim);
        m->ask(QStringLiteral("remind me"));
        QCOMPARE(m->model.requests().size(), 2u);
        QCOMPARE(tail(m->model.requests().back(), 2),
            QStringList({ claim, ChatTurnLogic::claimNudge.toString() }));
        QCOMPARE(m->texts(), u"remind me|"_qs + claim);

        m->model.enqueue(calling({ reminder(QStringLiteral("a")) }));
        m->model.enqueue(claim);
        m->ask(QStringLiteral("now really"));
        QCOMPARE(m->model.requests().size(), 4u);
    }

    void aFloodOfCallsIsBounded()
    {
        std::vector<LLMToolCall> calls(10'000, reminder(QStringLiteral("a")));
        calls.insert(calls.begin(), call(QStringLiteral("memory_find_notes")));
        m->model.enqueue(calling(calls));
        m->model.enqueue(QStringLiteral("done"));
        m->ask(QStringLiteral("flood"));
        QCOMPARE(m->model.requests().back().messages.size(), 3 + ChatTurnLogic::maxCallsPerReply);
        QCOMPARE(m_actions.size(), 1u);
    }

    void aTurnThatIsStoppedAmidAToolIsForgotten()
    {
        m->model.enqueue(calling({ call(QStringLiteral("screen_capture")) }));
        m->chat.submit(QStringLiteral("look"));
        QTRY_COMPARE(m->screen.looks().size(), 1u);
        m->chat.cancelStreaming();
        m->model.enqueue({ { LLMToken { QStringLiteral("hel") } }, std::nullopt, true });
        m->chat.submit(QStringLiteral("hi"));
        QTRY_COMPARE(m->chat.streamingPreview(), QStringLiteral("hel"));
        m->screen.enqueue(CapturedScreenshot { "JPEG", QStringLiteral("Captured Cats") });
        QTest::qWait(0);
        QCOMPARE(m->chat.streamingPreview(), QStringLiteral("hel"));
        m->model.release();
        m->finishTurn();
        QVERIFY(!m->chat.captureIndicator());
        QVERIFY(m->chat.lastToolCalls().empty());
        QCOMPARE(m->texts(), u"look|hi|hel");
    }

private:
    Task<> take(std::vector<BuddyAction> actions)
    {
        m_textsAtActions = m->texts();
        std::ranges::move(actions, std::back_inserter(m_actions));
        co_return;
    }

    std::unique_ptr<ChatFixture> m;
    std::vector<BuddyAction> m_actions;
    QString m_textsAtActions;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatTurnTest)
#include "ChatTurnTest.moc"
