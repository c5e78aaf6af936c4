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
    void messagesAreEncoded()
    {
        const auto encoded = [](const LLMMessage& message) {
            return compact(ChatCompletionsLogic::encodeMessage(message));
        };
        const auto hi = u"hi"_s;
        const QByteArray image("\xFF\xD8\x00", 3);
        const LLMToolCall call(hi, u"f"_s, u"{ bad"_s, std::nullopt, u"S"_s);
        QCOMPARE(encoded({ .role = Role::assistant, .toolCalls = { {} } }),
            u"{'content':'','role':'assistant'}");
        QCOMPARE(encoded({ Role::tool, hi, { image }, { { call } }, hi }),
            u"{'content':'hi','role':'tool','tool_call_id':'hi'}");
        QCOMPARE(encoded({ .role = Role::user, .images = { image } }),
            u"{'content':[{'text':'','type':'text'},{'image_url':{'url':"
            "'data:image/jpeg;base64,/9gA'},'type':'image_url'}],'role':'user'}");
        QCOMPARE(
            encoded({ Role::system, hi, { image }, {}, {} }), u"{'content':'hi','role':'system'}");
        for (const auto& [written, sent] : { std::pair(u"{ } "_s, u"{ } "_s), { hi, u"{}"_s },
                 { u"[1]"_s, u"{}"_s }, { u" "_s, u"{}"_s } }) {
            const auto plain = LLMToolCall(hi, hi, written);
            QCOMPARE(encoded({ .role = Role::assistant, .toolCalls = { { plain } } }),
                u"{'role':'assistant','tool_calls':[{'function':{'arguments':'%1','name':'hi'},"
                "'id':'hi','type':'function'}]}"_s.arg(sent));
        }
        QCOMPARE(encoded({ Role::assistant, hi, {}, { { call } }, {} }),
            u"{'content':'hi','role':'assistant','tool_calls':[{'extra_content':{'google':"
            "{'thought_signature':'S'}},'function':{'arguments':'{}','name':'f'},"
            "'id':'hi','type':'function'}]}");
    }

    void payloadsCarryWhatIsAskedFor()
    {
        using Format = LLMResponseFormat;
        const JSONValue::Object schema { { u"n"_s, true } };
        const auto payload = [](const Format& format,
                                 const std::vector<LLMToolDefinition>& tools = {}) {
            return compact(ChatCompletionsLogic::buildPayload(
                u"m"_s, { {}, 5, 0.5, format, tools }, !tools.empty()));
        };
        QCOMPARE(payload({}),
            u"{'max_tokens':5,'messages':[],'model':'m','stream':true,'temperature':0.5}");
        QVERIFY(payload({ Format::Kind::jsonObject })
                    .contains(u"'response_format':{'type':'json_object'}"));
        QVERIFY(payload({ Format::Kind::jsonSchema, u"n"_s, schema })
                    .contains(u"'response_format':{'json_schema':{'name':'n','schema':{'n':true},"
                              "'strict':true},'type':'json_schema'}"_s));
        const auto withTools = payload({}, { { u"n"_s, u"d"_s, schema } });
        QVERIFY(withTools.contains(u"'stream_options':{'include_usage':true}"));
        QVERIFY(withTools.contains(
            u"'tool_choice':'auto','tools':[{'function':{'description':'d','name':'n',"
            "'parameters':{'n':true}},'type':'function'}]"_s));
    }

    void theRightCredentialTravelsToThePathBelowTheBase()
    {
        const auto sent = [](const QString& base, bool usesCloudAuth, const QString& session) {
            const auto request = ChatCompletionsLogic::httpRequest({ .baseURL = QUrl(base),
                .apiKey = u"key"_s,
                .usesCloudAuth = usesCloudAuth,
                .sessionToken = session,
                .completionsPath = u"chat"_s,
                .lane = u"main"_s });
            auto text = request.url.toString();
            for (const auto& [name, value] : request.headers)
                text += u' ' + QString::fromUtf8(value);
            return text;
        };
        QCOMPARE(
            sent(u"http://h"_s, false, u"session"_s), u"http://h/chat application/json Bearer key");
        QCOMPARE(sent(u"https://h:1/v1/"_s, true, {}),
            u"https://h:1/v1/chat application/json Bearer key main");
        QCOMPARE(sent(u"https://h/v1?region=x"_s, true, u"session"_s),
            u"https://h/v1/chat?region=x application/json Bearer session main");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatCompletionsLogicTest)
#include "ChatCompletionsLogicTest.moc"
