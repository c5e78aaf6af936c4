#include "conversation/ChatTurn.h"

#include "TurnFixture.h"
#include "conversation/ContextLogic.h"
#include "support/Awaited.h"
#include "support/LogLines.h"

#include <QRegularExpression>

namespace pobblewig {

namespace {

using Reply = ScriptedProvider::Reply;

Reply findingNotes()
{
    return calling({ call(u"memory_find_notes"_s, u"query=tea"_s) });
}

} // namespace

class ChatTurnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TurnFixture>(); }

    void resultsOfCallsComeBackInTheirOrderAndOnlyTheAnswerStays()
    {
        m->memory.notes.addNote({ .text = u"Likes green tea"_s }, TimePoint());
        auto reply = findingNotes();
        auto& calls = std::get<LLMToolCalls>(reply.events.front()).calls;
        calls.insert(calls.begin(), call(u"describe_tool"_s));
        calls.push_back(reminder(u"buy-tea"_s));
        calls.push_back(call(u"no_such_tool"_s));
        // As some servers do.
        calls.back().id = calls.front().id;
        m->ask(u"what do I like?"_s, reply, u"Green tea."_s);

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
        QCOMPARE(m->actions.size(), 1u);
        QVERIFY(m->chat.lastToolCalls()
            == (std::vector {
                u"describe_tool (failed)"_s, u"memory_find_notes"_s, u"no_such_tool (failed)"_s }));
        QCOMPARE(m->chat.totalToolCalls(), 3);
    }

    void threeRoundsAreTheLimit()
    {
        for (int round = 0; round < 4; ++round)
            m->model.enqueue(findingNotes());
        m->ask(u"search on"_s, u"Nothing found."_s);
        QCOMPARE(m->executor.totalCalls(), 3);
        QCOMPARE(m->model.requests().size(), 5u);
        QVERIFY(tail(m->model.requests().back(), 1).front().startsWith(u"Your last reply came"));
        QCOMPARE(m->texts(), u"search on|Nothing found.");
    }

    void aLoadedToolIsOfferedForTheRestOfTheTurn()
    {
        const auto name = u"apps_list_sources"_s;
        m->ask(u"which folders?"_s, calling({ call(u"describe_tool"_s, u"name="_s + name) }),
            findingNotes(), u"done"_s);
        for (size_t request = 0; request < 3; ++request)
            QCOMPARE(toolNames(m->model.requests()[request]).contains(name), request > 0);
        QCOMPARE(toolNames(m->model.requests()[2]).back(), u"forget_memory");
        QVERIFY(tail(m->model.requests()[1], 1)[0].startsWith(
            u"apps_list_sources is now available — call it in your next step. It does: "));
    }

    void aMemoryThatIsSwitchedOffDuringATurnIsOutOfIt()
    {
        m->memory.sessions.ensureActiveSession(m->time, Calendar());
        m->memory.notes.addNote({ .text = u"Likes green tea"_s }, TimePoint());
        auto request = findingNotes();
        request.isHeld = true;
        m->model.enqueue(std::move(request));
        m->model.enqueue(u"No idea."_s);
        m->chat.submit(u"tea?"_s);
        QTRY_COMPARE(m->model.requests().size(), 1u);
        QVERIFY(m->model.requests()[0].messages.front().content.contains(u"green tea"));
        m->setMemoryEnabled(false);
        m->model.release();
        m->finishTurn();
        const auto& last = m->model.requests().back();
        QCOMPARE(tail(last, 1).front(), u"error: memory tools unavailable");
        QVERIFY(!last.messages.front().content.contains(u"green tea"));
        QVERIFY(!toolNames(last).contains(u"memory_find_notes"));
        QVERIFY(!m->chat.messages().back().sessionID);
    }

    void withTheMemoryOffNothingOfItIsOffered()
    {
        m->setMemoryEnabled(false);
        m->ask(u"hi"_s, u"hi"_s);
        const auto names = toolNames(m->model.requests().front());
        QVERIFY(names.filter(QRegularExpression(u"^memory_"_s)).isEmpty());
        QVERIFY(names.contains(u"screen_capture"_s));

        m->ask(u"look it up all the same"_s, findingNotes(), u"I cannot."_s);
        QCOMPARE(tail(m->model.requests().back(), 1).front(), u"error: memory tools unavailable");
    }

    void aModelWithoutFunctionsIsServedByText()
    {
        const LogLines log;
        m->ask(u"hi"_s, LLMError::http(400, u"tools?"_s), u"Hello."_s);
        QVERIFY(m->succeeded());
        QVERIFY(m->model.requests()[1].tools.empty());
        QVERIFY(log.lines().contains(
            u"buddy: native tools rejected on the main lane (HTTP 400); falling back to "
            "prompt-based tools"_s));

        const auto request = u"```buddy-tools\n{\"tools\":[{\"name\":\"memory_find_notes\","
                             "\"args\":{\"query\":\"tea\"}},{\"name\":\"x\"}]}\n```"_s;
        m->ask(u"tea?"_s, u"One moment.\n"_s + request, request, request,
            u"No tea.\n```buddy-actions\n[{\"type\":\"propose_reminder\","
            "\"proposalId\":\"tea\",\"title\":\"Buy tea\"}]\n```"_s);
        QCOMPARE(m->texts(), u"hi|Hello.|tea?|No tea.");
        QCOMPARE(m->actions.size(), 1u);

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

    void toolsAreGivenUpOnlyIfThatHelps_data()
    {
        columns<QString, int, bool>("body", "requests", "keepsTools");
        row("a picture", "image input is not supported", 1, true);
        row("a bad request all the same", "no", 2, true);
        row("tools", "tools param requires --jinja flag", 2, false);
    }
    void toolsAreGivenUpOnlyIfThatHelps()
    {
        QFETCH(QString, body);
        QFETCH(bool, keepsTools);
        const LogLines log;
        const auto refusal = LLMError::http(keepsTools ? 400 : 500, body);
        m->model.enqueue(refusal);
        if (keepsTools)
            m->model.enqueue(refusal);
        else
            m->model.enqueue(u"Hello."_s);
        awaited(m->chat.send(u"?"_s, QByteArray("JPEG"), ChatService::UserMessage::record));
        QTEST(int(m->model.requests().size()), "requests");
        m->ask(u"hi"_s, u"Hello."_s, u"Hello."_s);
        QCOMPARE(!m->model.requests().back().tools.empty(), keepsTools);
    }

    void aRequestThatIsTooLongLosesItsOldestMessages()
    {
        const LogLines log;
        const auto tooLong = LLMError::http(400, u"exceed_context_size_error"_s);
        m->ask(QString(500, u'a'), QString(500, u'b'));
        m->ask(u"c"_s, u"d"_s);
        m->ask(u"e"_s, tooLong, u"f"_s);
        QVERIFY(m->succeeded() && m->chat.notice());
        QVERIFY(!m->model.requests().back().tools.empty());
        QCOMPARE(tail(m->model.requests().back(), 3).join(u'|'), u"c|d|e");

        m->ask(u"g"_s, findingNotes(), u"h"_s);
        QVERIFY(!m->chat.notice());
        QCOMPARE(tail(m->model.requests()[4], 5).join(u'|'), u"c|d|e|f|g");
        QCOMPARE(m->model.requests()[4].messages.size(), 6u);

        const auto before = m->model.requests().size();
        for (int attempt = 0; attempt < 10; ++attempt)
            m->model.enqueue(tooLong);
        m->ask(u"i"_s);
        QCOMPARE(m->chat.problem().current()->action, ChatProblem::Action::newSession);
        QVERIFY(m->model.requests().size() - before <= ContextLogic::mostAttempts + 1);
        QCOMPARE(m->model.requests().back().messages.size(), 2u);
        QCOMPARE(tail(m->model.requests().back(), 1).front(), u"i");
    }

    /// Messages as letters: System, User, Assistant, Tool; the newest one of the user is "N".
    void theOldestPartGoesFirst_data()
    {
        columns<QString, int, int>("messages", "first", "count");
        row("half of the history", "SUAUAN", 1, 2);
        row("to the next message of the user", "SUAAAN", 1, 4);
        row("with what the turn has read", "SUANATT", 1, 2);
        row("a round with all its results", "SNATTAT", 2, 3);
        row("rounds by text", "SNAUAUAU", 2, 4);
        row("not the last round", "SNATT", 2, 0);
        row("nothing", "SN", 0, 0);
    }
    void theOldestPartGoesFirst()
    {
        QFETCH(QString, messages);
        std::vector<LLMMessage> request;
        for (const auto letter : messages) {
            const auto role = QStringView(u"SUAT").indexOf(letter == u'N' ? u'U' : letter);
            request.push_back({ .role = LLMMessage::Role(role), .content = u"x"_s });
        }
        const auto part = ContextLogic::oldestPart(request, size_t(messages.indexOf(u'N')));
        QTEST(int(part.first), "first");
        QTEST(int(part.count), "count");
    }

    void aModelThatIsLoadingIsWaitedFor()
    {
        const auto loading = LLMError::http(503, u"{\"message\":\"Loading model\"}"_s);
        QStringList notices;
        QObject::connect(&m->chat, &ChatService::noticeChanged, &m->chat,
            [&] { notices.append(m->chat.notice().value_or(QString())); });
        m->ask(u"hi"_s, loading, loading, u"Hello."_s);
        QCOMPARE(m->texts(), u"hi|Hello.");
        QCOMPARE(notices.filter(u"loading"_s).size(), 1);
        QVERIFY(!m->chat.notice());

        for (int request = 0; request < 91; ++request)
            m->model.enqueue(loading);
        m->ask(u"still?"_s);
        QCOMPARE(m->model.requests().size(), 3u + 91u);
        QVERIFY(m->error().contains(u"loading") && !m->chat.notice());

        m->model.enqueue(loading);
        m->chat.submit(u"stop"_s);
        QTRY_VERIFY(m->chat.notice());
        m->chat.cancelStreaming();
        QVERIFY(!m->chat.notice());
        QTest::qWait(0);
        QCOMPARE(m->model.requests().size(), 3u + 92u);
    }

    void thoughtsLeaveRoomForTheAnswer()
    {
        const auto cutThought = Reply { .end = { .isCutOff = true, .hasThought = true } };
        m->ask(
            u"why?"_s, cutThought, Reply { { LLMToken { u"So."_s } }, {}, false, { false, true } });
        m->ask(u"why?"_s, cutThought);
        QVERIFY(m->error().contains(u"MAX_OUTPUT_TOKENS"));
        QCOMPARE(m->texts(), u"why?|So.|why?");
        QStringList limits;
        for (const auto& request : m->model.requests())
            limits.append(QString::number(request.maxTokens));
        QCOMPARE(limits.join(u' '), u"1024 4096 4096");
    }

    void aReplyCutByItsLengthIsMarked()
    {
        m->ask(u"a list"_s, Reply { { LLMToken { u"One, two"_s } }, {}, false, { true } });
        QVERIFY(m->succeeded() && m->history.messages().back().isCutOff());
        QVERIFY(m->chat.canContinue());
        const QString flood(LLMProvider::mostCharacters + 1, u'x');
        m->ask(u"more"_s, Reply { { LLMToken { flood } }, {}, true });
        QVERIFY(m->history.messages().back().isCutOff());
        QCOMPARE(m->model.droppedStreams(), 1);
    }

    void aBrokenCallIsAnsweredAndNotRun()
    {
        const auto broken = [](const QString& name) {
            return LLMToolCall(name, name, u"{\"query\": \"te"_s);
        };
        m->ask(u"tea?"_s, calling({ broken(u"memory_find_notes"_s), broken(u"set_mascot"_s) }),
            u"Tea."_s);
        QCOMPARE(m->executor.totalCalls(), 0);
        for (const auto& told : tail(m->model.requests().back(), 2))
            QVERIFY(told.startsWith(u"error: the arguments of this call"));
        QCOMPARE(m->texts(), u"tea?|Tea.");
    }

    void aRejectionAmidToolCallsStartsTheTurnOver()
    {
        m->ask(u"tea?"_s, findingNotes(), LLMError::http(422, u"no"_s), u"fine"_s);
        QCOMPARE(m->texts(), u"tea?|fine");
        QCOMPARE(m->model.requests()[2].messages.size(), 2u);
        QVERIFY(!m->model.requests()[2].tools.empty());
    }

private:
    std::unique_ptr<TurnFixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatTurnTest)
#include "ChatTurnTest.moc"
