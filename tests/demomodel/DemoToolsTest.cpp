#include "demomodel/AppTurn.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

using Role = LLMMessage::Role;

/// "name{arguments}" for each, without ids of proposals and without double quotes.
QString described(const std::vector<LLMToolCall>& calls)
{
    QStringList texts;
    for (const auto& call : calls) {
        auto arguments = call.arguments;
        arguments.erase(u"proposalId"_s);
        texts.append(call.name + JSONValue(arguments).displayString());
    }
    return texts.join(u' ');
}

} // namespace

class DemoToolsTest : public QObject {
    Q_OBJECT

private:
    QSet<QString> m_reached;

private Q_SLOTS:
    void aSentenceLeadsToItsCallsAndAnAnswer_data()
    {
        QTest::addColumn<QString>("calls");
        QTest::addColumn<QString>("answer");
        const auto waits = u"It waits for you"_s;
        row("Hey, remind me to email Davis tomorrow at 9, please.",
            "propose_reminder{due: 2026-11-22T09:00:00+01:00, title: Email Davis}",
            "A reminder: \"Email Davis\", Sunday, 22 November, at 09:00. It waits for you");
        row("Could you put dentist on friday at 3pm in my calendar?",
            "propose_calendar_event{end: 2026-11-27T16:00:00+01:00, "
            "start: 2026-11-27T15:00:00+01:00, title: Dentist}",
            waits);
        row("schedule lunch with Ana for 30 minutes tomorrow at noon",
            "propose_calendar_event{end: 2026-11-22T12:30:00+01:00, "
            "start: 2026-11-22T12:00:00+01:00, title: Lunch with Ana}",
            waits);
        row("focus for half an hour", "set_temporary_mode{minutes: 30, mode: focus}", "Done.");
        row("Switch to study mode", "update_settings{key: mode, value: studying}", waits);
        row("be a deadpan roommate", "set_persona{persona: deadpanRoommate}", waits);
        row("turn into a pink axolotl", "set_mascot{colorScheme: pink, mascot: axolotl}", waits);
        row("become a mouse", "set_mascot{mascot: mouse}", waits);
        row("pause observation", "update_settings{key: pausedIndefinitely, value: true}", waits);
        row("set the canvas interval to 45 minutes",
            "update_settings{key: canvasSyncIntervalMinutes, value: 45}", waits);
        row("be my tutor", "update_settings{key: roles, value: [\"tutor\"]}", waits);
        row("forget that I like tea",
            "memory_find_notes{query: like tea} forget_memory{id: 1a2b3c4d, target: note}", waits);
        row("forget the deadline essay",
            "memory_search_reference{query: essay} "
            "forget_memory{id: 5e6f7a8b, target: referenceItem}",
            waits);
        row("Forget all my old courses",
            "forget_memory{path: academics.courses, target: referenceSection}", waits);
        row("forget what I said about the party",
            "forget_memory{query: party, target: observations}", waits);
        row("what do you remember about tea?", "memory_find_notes{query: tea}",
            "This is what I found:\n\n- (preferences) Likes tea\n- (misc) Tea");
        row("tell me everything about tea",
            "memory_find_notes{query: tea} memory_search_reference{query: tea} "
            "memory_search_observations{query: tea}",
            "Essay: due soon");
        row("when is the essay due?", "memory_search_reference{query: essay}", "Essay: due soon");
        row("search my exams for physics",
            "memory_search_reference{paths: [academics.exams], query: physics}", "Essay");
        row("what happened yesterday?",
            "memory_search_observations{from: 2026-11-20T00:00:00+01:00, "
            "to: 2026-11-20T23:59:59+01:00}",
            "Result of");
        row("remember that I moved to Cork", "memory_add_observation{summary: I moved to Cork}",
            "I wrote that down");
        row("What's on my screen?", "screen_capture{reason: What's on my screen}",
            "The picture came, captured: Firefox.");
        row("list my folders", "describe_tool{name: apps_list_sources} apps_list_sources{}",
            "Result of");
        row("which files are in notes/uni?",
            "describe_tool{name: apps_list_files} apps_list_files{source: notes, subpath: uni}",
            "Result of");
        row("read the last 20 lines of todo.txt from notes",
            "describe_tool{name: apps_read_file} "
            "apps_read_file{path: todo.txt, source: notes, tailLines: 20}",
            "That did not work. The app says: \"error: refused\"");
        row("what am I doing right now?", "memory_get_active_context{}", "Result of");
        row("what are my goals?",
            "describe_tool{name: memory_list_active_goals} memory_list_active_goals{}", "Result");
        row("show me the table of contents",
            "describe_tool{name: memory_get_table_of_contents} memory_get_table_of_contents{}",
            "Result of");
        row("open section academics.exams", "memory_read_section{path: academics.exams}",
            "Result of");
        row("list the summaries",
            "describe_tool{name: memory_list_period_summaries} memory_list_period_summaries{}",
            "This is what I found:\n\n- day A");
        row("tell me more about last week",
            "describe_tool{name: memory_expand_period} "
            "describe_tool{name: memory_list_period_summaries} memory_list_period_summaries{} "
            "memory_expand_period{id: 22222222}",
            "Result of memory_expand_period");
        row("which session is this?",
            "describe_tool{name: memory_get_daily_session} memory_get_daily_session{}", "Result");
        row("do you see a pattern about tea?",
            "describe_tool{name: memory_propose_pattern} memory_find_notes{query: tea} "
            "memory_propose_pattern{confidence: 0.7, evidenceNoteTexts: [Likes tea, Tea], "
            "text: Keeps coming back to: tea}",
            "Not enough for a pattern");
        row("forget everything", "", "the app's Memory screen");
        row("don't forget the milk", "", "I hear you");
    }
    void aSentenceLeadsToItsCallsAndAnAnswer()
    {
        QFETCH(QString, calls);
        QFETCH(QString, answer);
        const auto sentence = QString::fromUtf8(QTest::currentDataTag());
        AppTurn native(sentence);
        native.runWithFunctions();
        QCOMPARE(described(native.calls), calls);
        QVERIFY2(native.answer.contains(answer), qPrintable(native.answer));
        QVERIFY(native.rounds <= 3);
        QVERIFY(!native.answer.contains(u"```"));
        for (const auto& call : native.calls)
            m_reached.insert(call.name);

        AppTurn inText(sentence);
        inText.runWithBlocks();
        std::erase_if(native.calls, [](const auto& call) { return call.name == u"describe_tool"; });
        std::vector<BuddyAction> nativeActions;
        for (const auto& call : native.calls)
            std::ranges::move(ActionParser::actions(call, {}), std::back_inserter(nativeActions));
        std::erase_if(
            native.calls, [](const auto& call) { return ActionTools::isAction(call.name); });
        QCOMPARE(described(inText.calls), described(native.calls));
        QVERIFY(inText.actions == nativeActions);
        QVERIFY2(
            !nativeActions.empty() || inText.answer.contains(answer), qPrintable(inText.answer));
        QVERIFY(!inText.answer.isEmpty());
    }

    void aNudgeIsAnsweredPlainly_data()
    {
        QTest::addColumn<QString>("nudge");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        row("pretend you queued a reminder", "App note: your last reply told the user you…",
            "I've queued a reminder", "Caught");
        row("say nothing", "Your last reply came through empty or as only a control block. …", "",
            "That was an empty reply");
        row("what time is it?", "App note: your last reply told the user you…", "It is 14:07",
            "It is 14:07");
    }
    void aNudgeIsAnsweredPlainly()
    {
        QFETCH(QString, nudge);
        QFETCH(QString, before);
        QFETCH(QString, after);
        AppTurn turn(QString::fromUtf8(QTest::currentDataTag()));
        const auto first = turn.ask().text;
        QVERIFY(before.isEmpty() ? first.isEmpty() : first.startsWith(before));
        turn.say(Role::assistant, first);
        turn.say(Role::user, nudge);
        QVERIFY(turn.ask().text.startsWith(after));
    }

    void onlyWhatIsOfferedIsCalled()
    {
        AppTurn turn(u"forget that I like tea"_s);
        const auto saysSo = u"memory_find_notes, which I am not offered"_s;
        turn.offer(buddyTools().offered({}));
        const auto withMemoryOff = turn.ask();
        QVERIFY(withMemoryOff.calls.empty() && withMemoryOff.text.contains(saysSo));
        turn.offer({});
        turn.replaceSystem(u"Write one short sentence."_s);
        QVERIFY(turn.ask().text.contains(saysSo));
    }

    void withoutCalendarsNoReminderIsProposed()
    {
        const BuddyTools tools(ActionTools::tools(ActionTools::Calendars::none), {});
        AppTurn turn(u"remind me to email Davis tomorrow at 9"_s);
        turn.offer(tools.offered({}));
        for (const auto& prompt : { Prompts::nativeActionInstructions(tools.lines()),
                 Prompts::actionInstructions(tools.lines()) }) {
            QVERIFY(!prompt.contains(u"propose_") && !prompt.contains(u"a calendar event"));
            turn.replaceSystem(prompt);
            const auto reply = turn.ask();
            QVERIFY(reply.calls.empty() && !reply.text.contains(u"```"));
            QVERIFY(reply.text.contains(u"propose_reminder, which I am not offered"));
            turn.offer({});
        }
    }

    void anAppWhoseFunctionsWereRefusedGetsBlocks()
    {
        QVERIFY(AppTurn(u"become a mouse"_s).ask().text.contains(u"```buddy-actions"));
        QVERIFY(AppTurn(u"list my folders"_s).ask().text.contains(u"```buddy-tools"));
    }

    void theIntroductionComesWithTheFirstAnswerOnly()
    {
        const auto intro = u"not a real AI"_s;
        AppTurn turn(u"what do you know about tea?"_s);
        turn.forgetGreeting();
        const auto request = turn.ask().text;
        turn.runWithBlocks();
        QVERIFY(!request.contains(intro) && turn.answer.contains(intro));
    }

    void everyToolIsReached()
    {
        const auto& deferred = buddyTools().lines().deferred;
        const auto tools = buddyTools().offered({ .retrieval = BuddyTools::Offered::yes,
            .screenCapture = BuddyTools::Offered::yes,
            .expanded = { deferred.begin(), deferred.end() } });
        for (const auto& tool : tools)
            QVERIFY2(m_reached.contains(tool.name), qPrintable(tool.name));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoToolsTest)
#include "DemoToolsTest.moc"
