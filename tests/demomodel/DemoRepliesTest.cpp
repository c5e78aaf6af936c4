#include "PobblewigDemoModel/DemoReplies.h"

#include "PobblewigDemoModel/CompletionFormat.h"
#include "support/TableRow.h"

#include <QTimeZone>

namespace pobblewig {

class DemoRepliesTest : public QObject {
    Q_OBJECT

private:
    static QString replyTo(const QByteArray& body)
    {
        const QDateTime now({ 2026, 11, 21 }, { 9, 5 }, QTimeZone::utc());
        const auto request = ChatRequest::parse(body);
        return request ? DemoReplies::reply(*request, now).text : request.error();
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
        QTest::addColumn<QString>("part");
        row(R"("  HEY there")", "Hello, good to see you");
        row(R"("This is a thing")", "I hear you");
        row(R"("What is the time?")", "It is 09:05");
        row(R"("I had a hard time")", "I hear you");
        row(R"("hi, can you help?")", "Gladly. Each of these");
        row(R"("helpless")", "I hear you");
        row(R"("I am so stressed, what now?")", "That sounds like a lot");
        row(R"("Is 50 % of %1 a lot?")", "You asked: \"Is 50 % of %1 a lot?\" A good");
        row(R"("")", "I hear you");
        row(R"([{"type":"text","text":"thanks"},7,{"type":"other"}])", "You are welcome");
        row(R"([{"type":"text","text":"thanks"},{"type":"image_url"}])", "Thank you for the pic");
    }
    void theFirstFittingRuleAnswers()
    {
        QFETCH(QString, part);
        const auto reply = laterReplyTo(QTest::currentDataTag());
        QVERIFY2(reply.startsWith(part), qPrintable(reply));
    }

    void aSentenceMayBeEndless()
    {
        QVERIFY(
            laterReplyTo("\"put " + QByteArray(1000000, 'a') + "?\"").startsWith(u"I hear you"));
    }

    void aStoryIsLongEnoughToScrollAndAnEchoIsCut()
    {
        QVERIFY(laterReplyTo(R"("long")").size() > 3000);
        QVERIFY(laterReplyTo('"' + QByteArray(1000, 'a') + "?\"").size() < 400);
    }

    void theFirstReplySaysWhatItIsAndAnswers()
    {
        const auto reply = replyTo(R"({"messages":[{"role":"user","content":"hi"}]})");
        for (const auto* part : { u"not a real AI", u"MAIN_MODEL_API_KEY", u"good to see you" })
            QVERIFY(reply.contains(QStringView(part)));
    }

    void aSchemaIsAnsweredWithItsEmptiestValue_data()
    {
        QTest::addColumn<QByteArray>("schema");
        QTest::addColumn<QString>("answer");
        row("only what is required, null where it may be",
            QByteArray(R"({"type":"object","required":["x","y","z"],"properties":{"more":{},)"
                       R"("x":{"type":["string","null"]},"y":{"type":["integer","string"]}}})"),
            R"({"x":null,"y":0,"z":null})");
        row("bounds, choices and nesting",
            QByteArray(R"({"type":"object","required":["k","l","n","o"],"properties":{)"
                       R"("k":{"enum":["a","b"]},"l":{"type":"array"},)"
                       R"("n":{"type":"number","minimum":0.5},"o":{"anyOf":[)"
                       R"({"type":"object","required":["b"],"properties":{)"
                       R"("b":{"type":"boolean"}}},{"type":"null"}]}}})"),
            R"({"k":"a","l":[],"n":0.5,"o":{"b":false}})");
        row("not a schema", QByteArray("7"), "{}");
    }
    void aSchemaIsAnsweredWithItsEmptiestValue()
    {
        QFETCH(QByteArray, schema);
        const auto reply = replyTo(R"({"messages":[{"role":"user"}],"response_format":)"
                                   R"({"type":"json_schema","json_schema":{"schema":)"
            + schema + "}}}");
        QTEST(reply, "answer");
    }

    void whatIsNotARequestIsExplained_data()
    {
        QTest::addColumn<QString>("problem");
        row("", "not JSON");
        row("[]", "$: expected an object");
        row("{}", "$.messages: missing");
        row(R"({"messages":[]})", "$.messages: expected at least one message");
        row(R"({"messages":[{"role":5}]})", "$.messages[0].role: expected");
    }
    void whatIsNotARequestIsExplained()
    {
        QFETCH(QString, problem);
        const auto reply = replyTo(QTest::currentDataTag());
        QVERIFY2(reply.startsWith(problem), qPrintable(reply));
    }

    void theStreamedWordsAreTheText()
    {
        const DemoReply reply { QStringLiteral("  One,\n\ntwo  \U0001F600 ") };
        const auto events = CompletionFormat::events({}, reply, TimePoint());
        QString joined;
        for (const auto& event : events) {
            const auto chunk = QJsonDocument::fromJson(event.mid(6));
            joined += chunk[u"choices"][0][u"delta"][u"content"].toString();
        }
        QCOMPARE(joined, reply.text);
        QCOMPARE(events.size(), 5u);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoRepliesTest)
#include "DemoRepliesTest.moc"
