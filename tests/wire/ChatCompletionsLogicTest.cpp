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
        columns<LLMMessage, QString>("message", "json");
        const auto hi = u"hi"_s;
        const auto f = u"f"_s;
        const QByteArray image("\xFF\xD8\x00", 3);
        const LLMToolCall call(hi, f, u"{ bad"_s);
        const LLMToolCall signedCall(hi, f, {}, std::nullopt, u"S"_s);
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
        columns<LLMResponseFormat, std::vector<LLMToolDefinition>, QString>(
            "format", "tools", "json");
        using Format = LLMResponseFormat;
        using Tools = std::vector<LLMToolDefinition>;
        const auto n = u"n"_s;
        const JSONValue::Object schema { { n, true } };
        row("text", Format(), Tools(), "%1'stream':true,'temperature':0.5}");
        row("object", Format { Format::Kind::jsonObject }, Tools(),
            "%1'response_format':{'type':'json_object'},'stream':true,'temperature':0.5}");
        row("schema", Format { Format::Kind::jsonSchema, n, schema }, Tools(),
            "%1'response_format':{'json_schema':{'name':'n','schema':{'n':true},"
            "'strict':true},'type':'json_schema'},'stream':true,'temperature':0.5}");
        row("tools and usage", Format(), Tools { { n, u"d"_s, schema } },
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
            u"m"_s, { {}, 5, 0.5, format, tools }, !tools.empty());
        QCOMPARE(compact(payload), json.arg(u"{'max_tokens':5,'messages':[],'model':'m',"_s));
    }

    void theRightCredentialTravelsToThePathBelowTheBase_data()
    {
        columns<QString, bool, QString, QString>("base", "usesCloudAuth", "session", "sent");
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
        configuration.completionsPath = u"chat"_s;
        configuration.apiKey = u"key"_s;
        configuration.usesCloudAuth = usesCloudAuth;
        configuration.sessionToken = session;
        configuration.lane = u"main"_s;
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
