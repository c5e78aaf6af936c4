#include "PobblewigDemoModel/DemoReplies.h"

#include "PobblewigDemoModel/CompletionFormat.h"

#include <QTest>

namespace pobblewig {

class DemoRepliesTest : public QObject {
    Q_OBJECT

private:
    const QTime now { 9, 5 };

    /// As the newest message of a conversation that has had a reply.
    QString replyTo(const QString& text) const
    {
        ChatRequest request;
        request.messages = { { QStringLiteral("user"), QStringLiteral("what time is it?") },
            { QStringLiteral("assistant"), QStringLiteral("Noon.") },
            { QStringLiteral("user"), text } };
        return DemoReplies::reply(request, now).text;
    }

    QString replyToBody(const QByteArray& body) const
    {
        const auto request = ChatRequest::parse(body);
        return request ? DemoReplies::reply(*request, now).text : request.error();
    }

private Q_SLOTS:
    void theFirstFittingRuleAnswers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("part");
        const auto row = [](const char* text, const char* part) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(part);
        };
        row("  Hello there", "good to see you");
        row("HEY", "good to see you");
        row("This is a thing", "nothing clever");
        row("What's the time?", "It is 09:05");
        row("I had a hard time", "nothing clever");
        row("hi, can you help?", "I understand a greeting");
        row("helpless", "nothing clever");
        row("thanks", "You are welcome");
        row("I am so stressed, what now?", "ten minutes");
        row("Is 50 % of \"%1\" a lot?", "You asked: \"Is 50 % of \"%1\" a lot?\" A good");
        row("Is it long ago?", "You asked");
        row("", "nothing clever");
    }
    void theFirstFittingRuleAnswers()
    {
        QFETCH(QString, text);
        QFETCH(QString, part);
        QVERIFY2(replyTo(text).contains(part), qPrintable(replyTo(text)));
        QVERIFY(!replyTo(text).contains(u"demo model, not a real AI"));
    }

    void aStoryIsLongEnoughToScroll() { QVERIFY(replyTo(QStringLiteral("long")).size() > 3000); }

    void anEchoIsCut()
    {
        const auto reply = replyTo(QString(100000, u'a') + u'?');
        QVERIFY(reply.size() < 400);
    }

    void theFirstReplySaysWhatItIsAndAnswers()
    {
        const auto reply = replyToBody(
            R"({"messages":[{"role":"system","content":"s"},{"role":"user","content":"hi"}]})");
        for (const auto* part : { "not a real AI", "MAIN_MODEL_API_KEY", "good to see you" })
            QVERIFY2(reply.contains(QLatin1StringView(part)), part);
    }

    void partsOfAMessageAreRead()
    {
        const QByteArray message = R"({"messages":[{"role":"assistant"},{"role":"user","content":[)"
                                   R"({"type":"text","text":"thanks"},7,{"type":"other"}%1]}]})";
        const QByteArray image = R"(,{"type":"image_url","image_url":{"url":"data:,"}})";
        QVERIFY(replyToBody(QByteArray(message).replace("%1", "")).contains(u"You are welcome"));
        QVERIFY(replyToBody(QByteArray(message).replace("%1", image)).contains(u"no eyes"));
    }

    void aSchemaIsAnsweredWithItsEmptiestValue_data()
    {
        QTest::addColumn<QByteArray>("schema");
        QTest::addColumn<QString>("answer");
        QTest::newRow("only what is required")
            << QByteArray(R"({"type":"object","required":["list","kind"],"properties":{)"
                          R"("list":{"type":"array"},"kind":{"enum":["a","b"]},"more":{}}})")
            << R"({"kind":"a","list":[]})";
        QTest::newRow("null where it may be")
            << QByteArray(R"({"type":"object","required":["x","y"],"properties":{)"
                          R"("x":{"type":["string","null"]},"y":{"type":["integer","string"]}}})")
            << R"({"x":null,"y":0})";
        QTest::newRow("bounds, choices and nesting")
            << QByteArray(R"({"type":"object","required":["n","o"],"properties":{)"
                          R"("n":{"type":"number","minimum":0.5},"o":{"anyOf":[)"
                          R"({"type":"object","required":["b"],"properties":{)"
                          R"("b":{"type":"boolean"}}},{"type":"null"}]}}})")
            << R"({"n":0.5,"o":{"b":false}})";
        QTest::newRow("required but not described")
            << QByteArray(R"({"type":"object","required":["x"]})") << R"({"x":null})";
        QTest::newRow("not a schema") << QByteArray("7") << "{}";
    }
    void aSchemaIsAnsweredWithItsEmptiestValue()
    {
        QFETCH(QByteArray, schema);
        QFETCH(QString, answer);
        QCOMPARE(replyToBody(R"({"messages":[{"role":"user"}],"response_format":{)"
                             R"("type":"json_schema","json_schema":{"schema":)"
                     + schema + "}}}"),
            answer);
    }

    void whatIsNotARequestIsExplained_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("problem");
        QTest::newRow("nothing") << QByteArray() << "not JSON";
        QTest::newRow("an array") << QByteArray("[]") << "$: expected an object";
        QTest::newRow("no messages") << QByteArray("{}") << "$.messages: missing";
        QTest::newRow("empty") << QByteArray(R"({"messages":[]})") << "at least one message";
        QTest::newRow("wrong type")
            << QByteArray(R"({"messages":[{"role":5}]})") << "$.messages[0].role: expected";
    }
    void whatIsNotARequestIsExplained()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, problem);
        QVERIFY2(replyToBody(body).contains(problem), qPrintable(replyToBody(body)));
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
