#include "wire/ChatCompletionsLogic.h"

#include <QJsonDocument>
#include <QTest>

namespace pobblewig {

using Role = LLMMessage::Role;

namespace {

// JSON is written with single quotes here.
QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).replace('"', '\'');
}

QByteArray headers(const HTTPRequest& request)
{
    QByteArray text;
    for (const auto& [name, value] : request.headers)
        text += name + ": " + value + '\n';
    return text;
}

} // namespace

class ChatCompletionsLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void messagesAreEncoded_data()
    {
        QTest::addColumn<LLMMessage>("message");
        QTest::addColumn<QByteArray>("json");
        const auto row = [](const char* name, const LLMMessage& message, const char* json) {
            QTest::newRow(name) << message << QByteArray(json);
        };
        const auto hi = QStringLiteral("hi");
        const QByteArray image("\xFF\xD8\x00", 3);
        const LLMToolCall call(QStringLiteral("1"), QStringLiteral("f"), QStringLiteral("{ bad"));
        const LLMToolCall signedCall(QStringLiteral("1"), QStringLiteral("f"), QStringLiteral("{}"),
            std::nullopt, QStringLiteral("S"));
        row("plain", { Role::system, hi, {}, {}, {} }, "{'content':'hi','role':'system'}");
        row("empty", { Role::assistant, {}, {}, {}, {} }, "{'content':'','role':'assistant'}");
        row("empty, no calls", { Role::assistant, {}, {}, { {} }, {} },
            "{'content':'','role':'assistant'}");
        row("tool result", { Role::tool, hi, image, { { call } }, QStringLiteral("1") },
            "{'content':'hi','role':'tool','tool_call_id':'1'}");
        row("tool result without id", { Role::tool, hi, {}, {}, {} },
            "{'content':'hi','role':'tool','tool_call_id':''}");
        row("image", { Role::user, {}, image, {}, {} },
            "{'content':[{'text':'','type':'text'},{'image_url':{'url':"
            "'data:image/jpeg;base64,/9gA'},'type':'image_url'}],'role':'user'}");
        row("image of another role", { Role::assistant, hi, image, {}, {} },
            "{'content':'hi','role':'assistant'}");
        row("calls only", { Role::assistant, {}, {}, { { call } }, {} },
            "{'role':'assistant','tool_calls':[{'function':"
            "{'arguments':'{ bad','name':'f'},'id':'1','type':'function'}]}");
        row("signed call", { Role::assistant, hi, {}, { { signedCall } }, {} },
            "{'content':'hi','role':'assistant','tool_calls':[{'extra_content':{'google':"
            "{'thought_signature':'S'}},'function':{'arguments':'{}','name':'f'},"
            "'id':'1','type':'function'}]}");
    }
    void messagesAreEncoded()
    {
        QFETCH(LLMMessage, message);
        QFETCH(QByteArray, json);
        QCOMPARE(compact(ChatCompletionsLogic::encodeMessage(message)), json);
    }

    void payloadsCarryWhatIsAskedFor_data()
    {
        QTest::addColumn<LLMRequest>("request");
        QTest::addColumn<bool>("usage");
        QTest::addColumn<QByteArray>("json");
        using Format = LLMResponseFormat::Kind;
        const QByteArray start = "{'max_tokens':5,'messages':[],'model':'m',";
        const QByteArray end = "'stream':true,'temperature':0.5}";
        const JSONValue::Object schema { { QStringLiteral("type"), QStringLiteral("object") } };
        const auto asking = [](const LLMResponseFormat& format) {
            return LLMRequest { {}, 5, 0.5, format, {} };
        };
        QTest::newRow("text") << asking({}) << false << start + end;
        QTest::newRow("object") << asking({ Format::jsonObject }) << false
                                << start + "'response_format':{'type':'json_object'}," + end;
        QTest::newRow("schema") << asking({ Format::jsonSchema, QStringLiteral("n"), schema })
                                << false
                                << start
                + "'response_format':{'json_schema':{'name':'n','schema':{'type':'object'},"
                  "'strict':true},'type':'json_schema'},"
                + end;
        const LLMToolDefinition tool { QStringLiteral("f"), QStringLiteral("d"), schema };
        QTest::newRow("tools and usage") << LLMRequest { {}, 5, 0.5, {}, { tool } } << true
                                         << start
                + "'stream':true,'stream_options':{'include_usage':true},'temperature':0.5,"
                  "'tool_choice':'auto','tools':[{'function':{'description':'d','name':'f',"
                  "'parameters':{'type':'object'}},'type':'function'}]}";
    }
    void payloadsCarryWhatIsAskedFor()
    {
        QFETCH(LLMRequest, request);
        QFETCH(bool, usage);
        QFETCH(QByteArray, json);
        const auto model = QStringLiteral("m");
        QCOMPARE(compact(ChatCompletionsLogic::buildPayload(model, request, usage)), json);
    }

    void theRightCredentialTravels_data()
    {
        QTest::addColumn<bool>("usesCloudAuth");
        QTest::addColumn<QString>("session");
        QTest::addColumn<QByteArray>("expected");
        const auto session = QStringLiteral("session");
        QTest::newRow("vendor") << false << session << QByteArray("Bearer key\n");
        QTest::newRow("cloud") << true << QString()
                               << QByteArray("Bearer key\nX-Skrit-Lane: main\n");
        QTest::newRow("signed in")
            << true << session << QByteArray("Bearer session\nX-Skrit-Lane: main\n");
    }
    void theRightCredentialTravels()
    {
        QFETCH(bool, usesCloudAuth);
        QFETCH(QString, session);
        QFETCH(QByteArray, expected);
        LLMConfiguration configuration;
        configuration.apiKey = QStringLiteral("key");
        configuration.usesCloudAuth = usesCloudAuth;
        configuration.sessionToken = session;
        configuration.lane = QStringLiteral("main");
        const auto request = ChatCompletionsLogic::applyAuth({}, configuration);
        QCOMPARE(headers(request), "Authorization: " + expected);
    }

    void thePathIsAppendedToTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("url");
        const auto row = [](const char* base, const char* url) {
            QTest::newRow(base) << QString::fromUtf8(base) << QString::fromUtf8(url);
        };
        row("http://h", "http://h/chat/completions");
        row("https://h:1/v1/", "https://h:1/v1/chat/completions");
        row("https://h/v1?region=x", "https://h/v1/chat/completions?region=x");
    }
    void thePathIsAppendedToTheBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, url);
        LLMConfiguration configuration;
        configuration.baseURL = QUrl(base);
        configuration.completionsPath = QStringLiteral("chat/completions");
        QCOMPARE(ChatCompletionsLogic::httpRequest(configuration).url, QUrl(url));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ChatCompletionsLogicTest)
#include "ChatCompletionsLogicTest.moc"
