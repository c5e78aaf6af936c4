#include "TurnFixture.h"
#include "conversation/ActionParser.h"

namespace pobblewig {

class ChatTurnActionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TurnFixture>(); }

    void anActionCallIsAcknowledgedAsItWillBe_data()
    {
        columns<QString, LLMToolCall, QString>("allowedClass", "action", "beginning");
        const auto setting = [](const QString& change) {
            return call(u"update_settings"_s, u"proposalId=s "_s + change);
        };
        const auto focus = setting(u"key=mode value=focus"_s);
        row("asked", "", focus, "registered as a pending proposal");
        row("allowed", "settings_change", focus, "auto-approved — the user chose \"Allow always\"");
        row("allowed, of a kind that asks all the same", "settings_change",
            setting(u"key=cloudSyncEnabled value=true"_s), "registered");
        row("no such note", "memory_forget",
            call(u"forget_memory"_s, u"proposalId=f target=note id=12345678"_s),
            "refused: no memory note with id 12345678 — nothing was registered");
        row("no such value", "", setting(u"key=mode value=party"_s),
            "refused: mode must be one of: openEnded, focus, ");
        row("an address", "settings_change",
            setting(u"key=canvasBaseURL value=https://evil.example"_s), "registered");
        row("the end of a pause", "settings_change",
            setting(u"key=pausedIndefinitely value=false"_s), "registered");
        row("a pause", "settings_change", setting(u"key=pausedIndefinitely value=true"_s),
            "auto-approved");
        row("half of it", "",
            call(u"set_mascot"_s, u"proposalId=m mascot=axolotl colorScheme=plaid"_s),
            "form → axolotl: registered as a pending");
        row("for a while", "", call(u"set_temporary_mode"_s, u"mode=focus"_s),
            "noted — applied when this turn completes, for 60 minutes");
        row("without an id", "", call(u"propose_reminder"_s, u"title=x"_s),
            "error: missing or invalid arguments — nothing was registered");
    }
    void anActionCallIsAcknowledgedAsItWillBe()
    {
        QFETCH(QString, allowedClass);
        QFETCH(LLMToolCall, action);
        QFETCH(QString, beginning);
        m->setConfirmations({ { allowedClass, false } });
        m->ask(u"please"_s, calling({ action }), u"Done that."_s);
        const auto told = tail(m->model.requests().back(), 1).front();
        QVERIFY2(told.startsWith(beginning), qPrintable(told));
        // What is refused is told to the user too.
        QCOMPARE(m->actions.empty(), beginning.startsWith(u"error"));
        QCOMPARE(m->executor.totalCalls(), 0);
    }

    void aRequestIsAnsweredByWhatBecameOfTheLastOne()
    {
        const auto propose = [](const char* title) {
            return call(
                u"propose_reminder"_s, u"proposalId=r title=%1"_s.arg(QLatin1String(title)));
        };
        const auto told = [&](const LLMToolCall& request) {
            m->ask(u"please"_s, calling({ request }), u"There."_s);
            return tail(m->model.requests().back(), 1).front();
        };
        m->proposals.registerProposal(
            std::get<RuleProposal>(ActionParser::actions(propose("tea"), {}).front()));
        QVERIFY(told(propose("tea")).startsWith(u"already registered"));
        QVERIFY(told(propose("coffee")).startsWith(u"error: another request has this"));
        m->time += std::chrono::minutes(1);
        m->proposals.reject(u"r"_s);
        QVERIFY(m->judge.verdict(ActionParser::actions(propose("tea"), {}).front(), {}).kind
            == ActionVerdict::Kind::dismissed);
        m->time += std::chrono::minutes(1);
        QVERIFY(told(propose("tea")).startsWith(u"registered"));
    }

    void aModelThatCorrectsItselfIsBelieved()
    {
        const auto mode = [](const QString& value) {
            return call(u"update_settings"_s, u"proposalId=m key=mode value="_s + value);
        };
        m->ask(u"focus"_s, calling({ mode(u"party"_s) }), calling({ mode(u"focus"_s) }), u"Yes."_s);
        QCOMPARE(m->actions.size(), 1u);
        QCOMPARE(std::get<RuleProposal>(m->actions.front()).name, u"mode → focus");
    }

    void aReplyOfActionsAloneIsNoMessage()
    {
        const auto block = u"```buddy-actions\n[{\"type\":\"set_persona\",\"proposalId\":\"p\","
                           "\"persona\":\"classic\"}]\n```"_s;
        m->ask(u"be classic"_s, block);
        QCOMPARE(m->model.requests().size(), 1u);
        QCOMPARE(m->actions.size(), 1u);
        QCOMPARE(m->texts(), u"be classic");
    }

    void aMalformedBlockIsAskedForAgainOnce_data()
    {
        columns<QString>("block");
        row("no JSON", "```buddy-actions\n{\"actions\":[{\"type\"\n```");
        row("without what it needs", "```buddy-actions\n[{\"type\":\"set_persona\"}]\n```");
        row("without an end", "```buddy-actions\n[{\"type\":\"set_persona\",");
        row("with text behind", "```buddy-actions\n[]\n```\nThere you are.");
        row("a look-up", "```buddy-tools\n{\"tools\":[{\"args\":{}}]}\n```");
    }
    void aMalformedBlockIsAskedForAgainOnce()
    {
        QFETCH(QString, block);
        const auto reply = u"Here you go.\n"_s + block;
        m->ask(u"please"_s, reply, reply);
        QCOMPARE(m->model.requests().size(), 2u);
        QCOMPARE(tail(m->model.requests().back(), 2),
            QStringList({ reply, ChatTurnLogic::blockNudge.toString() }));
        QVERIFY(m->texts().startsWith(u"please|Here you go."));
    }

    void actionsArriveOnceAndAfterTheReply()
    {
        m->ask(u"two"_s, calling({ reminder(u"a"_s), reminder(u"b"_s) }),
            calling({ reminder(u"a"_s) }, u"Both."_s), u"Both are waiting."_s);
        QCOMPARE(m->actions.size(), 2u);
        QCOMPARE(m->textsAtActions, u"two|Both are waiting.");
    }

    void aClaimWithoutACallIsQuestionedOnce()
    {
        const auto claim = u"I've queued that. Confirm in the banner."_s;
        m->ask(u"remind me"_s, claim, claim);
        QCOMPARE(m->model.requests().size(), 2u);
        QCOMPARE(tail(m->model.requests().back(), 2),
            QStringList(
                { claim, ChatTurnLogic::claimNudge(toolNames(m->model.requests().back())) }));
        QCOMPARE(m->texts(), u"remind me|"_s + claim);

        m->ask(u"now really"_s, calling({ reminder(u"a"_s) }), claim);
        QCOMPARE(m->model.requests().size(), 4u);
    }

    void aFloodOfCallsIsBounded()
    {
        std::vector<LLMToolCall> calls(10'000, reminder(u"a"_s));
        calls.insert(calls.begin(), call(u"memory_find_notes"_s));
        m->ask(u"flood"_s, calling(calls), u"done"_s);
        QCOMPARE(m->model.requests().back().messages.size(), 3 + ChatTurnLogic::maxCallsPerReply);
        QCOMPARE(m->actions.size(), 1u);
    }

private:
    std::unique_ptr<TurnFixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatTurnActionsTest)
#include "ChatTurnActionsTest.moc"
