#include "wire/ChatCompletionsLogic.h"

#include "support/TableRow.h"

#include <QJsonDocument>

namespace pobblewig {

using Role = LLMMessage::Role;

namespace {

// JSON is written with single quotes here.
QString compact(const QJsonObject& object)
{
    const auto text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text).replace(u'"', u'\'');
}

} // namespace

class ChatCompletionsLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void messagesAreEncoded_data()
    {
        QTest::addColumn<LLMMessage>("message");
        QTest::addColumn<QString>("json");
        const auto hi = QStringLiteral("hi");
        const auto f = QStringLiteral("f");
        const QByteArray image("\xFF\xD8\x00", 3);
        const LLMToolCall call(hi, f, QStringLiteral("{ bad"));
        const LLMToolCall signedCall(hi, f, {}, std::nullopt, QStringLiteral("S"));
        row("empty, no calls", LLMMessage { Role::assistant, {}, {}, { {} }, {} },
            "{'content':'','role':'assistant'}");
        row("tool result", LLMMessage { Role::tool, hi, image, { { call } }, hi },
            "{'content':'hi','role':'tool','tool_call_id':'hi'}");
        row("image", LLMMessage { Role::user, {}, image, {}, {} },
            "{'content':[{'text':'','type':'text'},{'image_url':{'url':"
            "'data:image/jpeg;base64,/9gA'},'type':'image_url'}],'role':'user'}");
        row("image of another role", LLMMessage { Role::system, hi, image, {}, {} },
            "{'content':'hi','role':'system'}");
        row("calls only", LLMMessage { Role::assistant, {}, {}, { { call } }, {} },
            "{'role':'assistant','tool_calls':[{'function':"
            "{'arguments':'{ bad','name':'f'},'id':'hi','type':'function'}]}");
        row("signed call", LLMMessage { Role::assistant, hi, {}, { { signedCall } }, {} },
            "{'content':'hi','role':'assistant','tool_calls':[{'extra_content':{'google':"
            "{'thought_signature':'S'}},'function':{'arguments':'','name':'f'},"
            "'id':'hi','type':'function'}]}");
    }
    void messagesAreEncoded()
    {
        QFETCH(LLMMessage, message);
        QTEST(compact(ChatCompletionsLogic::encodeMessage(message)), "json");
    }

    void payloadsCarryWhatIsAskedFor_data()
    {
        QTest::addColumn<LLMResponseFormat>("format");
        QTest::addColumn<std::vector<LLMToolDefinition>>("tools");
        QTest::addColumn<QString>("json");
        using Format = LLMResponseFormat;
        using Tools = std::vector<LLMToolDefinition>;
        const auto n = QStringLiteral("n");
        const JSONValue::Object schema { { n, true } };
        row("text", Format(), Tools(), "%1'stream':true,'temperature':0.5}");
        row("object", Format { Format::Kind::jsonObject }, Tools(),
            "%1'response_format':{'type':'json_object'},'stream':true,'temperature':0.5}");
        row("schema", Format { Format::Kind::jsonSchema, n, schema }, Tools(),
            "%1'response_format':{'json_schema':{'name':'n','schema':{'n':true},"
            "'strict':true},'type':'json_schema'},'stream':true,'temperature':0.5}");
        row("tools and usage", Format(), Tools { { n, QStringLiteral("d"), schema } },
            "%1'stream':true,'stream_options':{'include_usage':true},'temperature':0.5,"
            "'tool_choice':'auto','tools':[{'function':{'description':'d','name':'n',"
            "'parameters':{'n':true}},'type':'function'}]}");
    }
    void payloadsCarryWhatIsAskedFor()
    {
        QFETCH(LLMResponseFormat, format);
        QFETCH(std::vector<LLMToolDefinition>, tools);
        QFETCH(QString, json);
        const auto payload = ChatCompletionsLogic::buildPayload(
            QStringLiteral("m"), { {}, 5, 0.5, format, tools }, !tools.empty());
        QCOMPARE(compact(payload),
            json.arg(QStringLiteral("{'max_tokens':5,'messages':[],'model':'m',")));
    }

    void theRightCredentialTravelsToThePathBelowTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<bool>("usesCloudAuth");
        QTest::addColumn<QString>("session");
        QTest::addColumn<QString>("sent");
        row("vendor", "http://h", false, "session", "http://h/chat application/json Bearer key");
        row("cloud", "https://h:1/v1/", true, "",
            "https://h:1/v1/chat application/json Bearer key main");
        row("signed in", "https://h/v1?region=x", true, "session",
            "https://h/v1/chat?region=x application/json Bearer session main");
    }
    void theRightCredentialTravelsToThePathBelowTheBase()
    {
        QFETCH(QString, base);
        QFETCH(bool, usesCloudAuth);
        QFETCH(QString, session);
        LLMConfiguration configuration;
        configuration.baseURL = QUrl(base);
        configuration.completionsPath = QStringLiteral("chat");
        configuration.apiKey = QStringLiteral("key");
        configuration.usesCloudAuth = usesCloudAuth;
        configuration.sessionToken = session;
        configuration.lane = QStringLiteral("main");
        const auto request = ChatCompletionsLogic::httpRequest(configuration);
        auto sent = request.url.toString();
        for (const auto& [name, value] : request.headers)
            sent += u' ' + QString::fromUtf8(value);
        QTEST(sent, "sent");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatCompletionsLogicTest)
#include "ChatCompletionsLogicTest.moc"
