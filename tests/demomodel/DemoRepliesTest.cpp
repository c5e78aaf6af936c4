#include "PobblewigDemoModel/DemoReplies.h"

#include "PobblewigDemoModel/CompletionFormat.h"
#include "PobblewigDemoModel/DemoDates.h"
#include "support/TableRow.h"

#include <QTimeZone>

namespace pobblewig {

class DemoRepliesTest : public QObject {
    Q_OBJECT

private:
    /// A Saturday; the clocks go back in the following night.
    static QDateTime now()
    {
        return { { 2026, 10, 24 }, { 14, 7, 30 }, QTimeZone("Europe/Berlin") };
    }

    static QString replyTo(const QByteArray& body)
    {
        const auto request = ChatRequest::parse(body);
        return request ? DemoReplies::reply(*request, now()).text : request.error();
    }

    /// As the newest message of a conversation that has had a reply.
    static QString laterReplyTo(const QByteArray& content)
    {
        return replyTo(R"({"messages":[{"role":"user","content":"what time is it?"},)"
                       R"({"role":"assistant"},{"role":"user","content":)"
            + content + "}]}");
    }

private Q_SLOTS:
    void theFirstFittingRuleAnswers_data()
    {
        columns<QString>("part");
        row(R"("  HEY there")", "Hello, good to see you");
        row(R"("This is a thing")", "I hear you");
        row(R"("What is the time?")", "It is 14:07");
        row(R"("hi, can you help?")", "Gladly. Each of these");
        row(R"("helpless")", "I hear you");
        row(R"("I am so stressed, what now?")", "That sounds like a lot");
        row(R"("Is 50 % of %1 a lot?")", "You asked: \"Is 50 % of %1 a lot?\" A good");
        row(R"([{"type":"text","text":"thanks"},7,{"type":"other"}])", "You are welcome");
        row(R"([{"type":"text","text":"thanks"},{"type":"image_url"}])", "Thank you for the pic");
    }
    void theFirstFittingRuleAnswers()
    {
        QFETCH(QString, part);
        const auto reply = laterReplyTo(QTest::currentDataTag());
        QVERIFY2(reply.startsWith(part), qPrintable(reply));
    }

    void aMessageThatTheAppBeginsIsWritten_data()
    {
        columns<QString>("reply");
        row("Compose ONE brief reminder.\\n\\nA Canvas deadline is close: \\\"Essay\\\" for Art is "
            "due "
            "2 Mar 2026, 14:15 (about 3 hours left) and nothing is submitted yet.",
            "“Essay” for Art is due 2 Mar 2026, 14:15, in about 3 hours.");
        row("Compose ONE brief check-in. The rule fired: the user has had Tube active for about 40 "
            "minutes.",
            "Tube has been open for about 40 minutes.");
        row("Compose the user's daily briefing: Lead.\\n\\nReminders due in the next 24 hours:\\n"
            "- Call Ann — Due\\n- Pay — Due\\n\\nRelevant memory:\\n- tea",
            "Hello! To remember: Call Ann, Pay.");
        row("Compose the user's daily briefing: Nothing.", "Nothing is due");
        row("Compose a song", "Before anything else");
    }
    void aMessageThatTheAppBeginsIsWritten()
    {
        QFETCH(QString, reply);
        const auto message = replyTo(R"({"messages":[{"role":"user","content":")"
            + QByteArray(QTest::currentDataTag()) + R"("}]})");
        QVERIFY2(message.startsWith(reply), qPrintable(message));
    }

    void repliesHaveTheirLengths()
    {
        QVERIFY(
            laterReplyTo("\"put " + QByteArray(1000000, 'a') + "?\"").startsWith(u"I hear you"));
        QVERIFY(laterReplyTo(R"("long")").size() > 3000);
        QVERIFY(laterReplyTo('"' + QByteArray(1000, 'a') + "?\"").size() < 400);
        QVERIFY(replyTo(R"({"messages":[{"role":"user","content":"hi"}]})")
                    .contains(u"MAIN_MODEL_API_KEY"));
    }

    void aSchemaIsAnsweredWithItsEmptiestValue()
    {
        const QByteArray schema =
            R"({"type":"object","required":["k","l","n","o","x","y","z"],"properties":{)"
            R"("k":{"enum":["a","b"]},"l":{"type":"array"},"n":{"type":"number","minimum":0.5},)"
            R"("o":{"anyOf":[{"type":"object","required":["b"],"properties":{)"
            R"("b":{"type":"boolean"}}},{"type":"null"}]},"more":{},)"
            R"("x":{"type":["string","null"]},"y":{"type":["integer","string"]}}})";
        QCOMPARE(replyTo(R"({"messages":[{"role":"user"}],"response_format":)"
                         R"({"type":"json_schema","json_schema":{"schema":)"
                     + schema + "}}}"),
            uR"({"k":"a","l":[],"n":0.5,"o":{"b":false},"x":null,"y":0,"z":null})");
    }

    void whatIsNotARequestIsExplained()
    {
        QVERIFY(replyTo("").startsWith(u"not JSON"));
        QVERIFY(replyTo("{}").startsWith(u"$.messages: missing"));
        QCOMPARE(replyTo(R"({"messages":[]})"), u"$.messages: expected at least one message");
        QVERIFY(replyTo(R"({"messages":[{"role":5}]})").startsWith(u"$.messages[0].role: "));
    }

    void theStreamedWordsAreTheText()
    {
        const DemoReply reply { u"  One,\n\ntwo  \U0001F600 "_s };
        const auto events = CompletionFormat::events({}, reply, TimePoint());
        QString joined;
        for (const auto& event : events) {
            const auto chunk = QJsonDocument::fromJson(event.mid(6));
            joined += chunk[u"choices"][0][u"delta"][u"content"].toString();
        }
        QCOMPARE(joined, reply.text);
        QCOMPARE(events.size(), 5u);
    }

    void timesAreReadAndTakenOut_data()
    {
        columns<QString, QString>("time", "rest");
        row("call tomorrow at 9", "2026-10-25T09:00:00+01:00", "call");
        row("tonight at 8 call", "2026-10-24T20:00:00+02:00", "call");
        row("call in 20 minutes Ana", "2026-10-24T14:27:00+02:00", "call Ana");
        row("in half an hour", "2026-10-24T14:37:00+02:00", "");
        row("in 13 hours", "2026-10-25T02:07:00+01:00", "");
        row("in two days at 5:30 pm", "2026-10-26T17:30:00+01:00", "");
        row("on Saturday", "2026-10-31T09:00:00+01:00", "");
        row("next monday in the evening at 6", "2026-10-26T18:00:00+01:00", "");
        row("at 3", "2026-10-24T15:00:00+02:00", "");
        row("at 2", "2026-10-25T14:00:00+01:00", "");
        row("at 12am", "2026-10-25T00:00:00+02:00", "");
        row("noon", "2026-10-25T12:00:00+01:00", "");
        row("party on the 24th of December at 19:30", "2026-12-24T19:30:00+01:00", "party");
        row("on march 1", "2027-03-01T09:00:00+01:00", "");
        row("tax on 2027-02-28", "2027-02-28T09:00:00+01:00", "tax");
        row("call at 25", "", "call at 25");
        row("february 30", "", "");
        row("a march of 12 men in 1812", "", "a march of 12 men in 1812");
    }
    void timesAreReadAndTakenOut()
    {
        const auto read = DemoDates::readTime(QString::fromUtf8(QTest::currentDataTag()), now());
        QTEST(read.time ? DemoDates::format(*read.time) : QString(), "time");
        QTEST(read.rest, "rest");
    }

    void pastDaysAreWhole()
    {
        const auto days = DemoDates::readPast(u"what happened yesterday"_s, now().addDays(2));
        QCOMPARE(DemoDates::format(days->first), u"2026-10-25T00:00:00+02:00");
        QCOMPARE(DemoDates::format(days->second), u"2026-10-25T23:59:59+01:00");
        QVERIFY(!DemoDates::readPast(u"yesteryear"_s, now()));
        QCOMPARE(DemoDates::format({ { 2026, 1, 2 }, { 3, 4 }, QTimeZone("Europe/Lisbon") }),
            u"2026-01-02T03:04:00Z");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoRepliesTest)
#include "DemoRepliesTest.moc"
