#include "wire/OpenAICompatibleProvider.h"

#include "network/CurlHTTPClient.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/LoopbackServer.h"
#include "support/ScriptedHTTPClient.h"
#include "support/TableRow.h"
#include "wire/LocalServers.h"

namespace pobblewig {

using namespace std::chrono_literals;

using Send = LoopbackServer::Send;
using Close = LoopbackServer::Close;
using Script = LoopbackServer::Script;

namespace {

const auto apiKey = u"sk-hush"_s;

/// Events as one piece of text each.
QString described(const LLMStreamEvent& event)
{
    if (const auto* token = std::get_if<LLMToken>(&event))
        return token->text;
    if (const auto* thought = std::get_if<LLMThought>(&event))
        return u'(' + thought->text + u')';
    if (std::holds_alternative<LLMWasThought>(event))
        return u"(^)"_s;
    if (const auto* usage = std::get_if<LLMUsage>(&event))
        return u"%1+%2"_s.arg(usage->promptTokens).arg(usage->completionTokens);
    if (const auto* end = std::get_if<LLMFinished>(&event))
        return end->isCutOff ? u"cut"_s : end->hasThought ? u"thought"_s : u"."_s;
    QStringList texts;
    if (const auto* calls = std::get_if<LLMToolCalls>(&event)) {
        for (const auto& call : calls->calls)
            texts.append(call.id + u'=' + call.name + call.argumentsJSON
                + call.thoughtSignature.value_or(QString()));
    }
    return texts.join(u';');
}

Task<QStringList> collected(std::shared_ptr<LLMStream> stream)
{
    QStringList texts;
    while (const auto event = co_await stream->next())
        texts.append(described(*event));
    if (stream->error())
        texts.append(description(*stream->error()));
    co_return texts;
}

// JSON is written with single quotes here.
QByteArray token(const QByteArray& text)
{
    return "data: {'choices':[{'delta':{'content':'" + text + "'}}]}\n\n";
}

QByteArray toolCalls(const QByteArray& deltas)
{
    return "data: {'choices':[{'delta':{'tool_calls':[" + deltas + "]}}]}\n\n";
}

} // namespace

class OpenAICompatibleProviderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<Connection>(); }

    void aStreamBecomesEvents_data()
    {
        columns<QByteArray, QString>("body", "events");
        const QByteArray done = "data: [DONE]\n\n";
        row("tokens", token("Hel") + token("lo") + done + token("late"), "Hel|lo|.");
        row("never the end mark", token("Hello"), "Hello|.");
        row("no blank before the end mark", "data:[DONE]\n" + token("late"), ".");
        row("more blanks", "data:  \t [DONE] \n" + token("late"), ".");
        row("an end mark without prefix", "[DONE]\n" + token("more"), "more|.");
        row("other lines", ": ping\nevent: x\n data: y\n" + token("a"), "a|.");
        row("a page in place of a stream", QByteArray("<html>\n<p>Sign in"),
            "Invalid response: a web page came in place of an answer.");
        row("another answer in place of a stream", QByteArray("{'pong':\n1}"),
            "Invalid response: it is no chat completion.");
        row("an error in place of a stream", QByteArray("{'error':{'message':'Full'}}"),
            "API error: {\"error\":{\"message\":\"Full\"}}");
        row("an empty stream", QByteArray("event: x\nid: 1"), ".");
        row("what is not JSON", "data: {'choices':[\ndata: 7\ndata:\n" + token("a"), "a|.");
        row("wrong types", "data: {'choices':[{'delta':{'content':7}}]}\n" + token("a"), "a|.");
        row("nulls and unknown keys",
            QByteArray("data: {'choices':[{'delta':{'content':null,'tool_calls':null,'x':[]}},{}],"
                       "'usage':null,'y':{}}\n"),
            ".");
        row("escapes", token("\\ud83e\\udd98 \\n\\'\xC3\xA9"), "🦘 \n\"é|.");
        row("an empty token", token(""), ".");
        const QByteArray end = "data: {'choices':[{'delta':{},'finish_reason':";
        row("cut off", token("a") + end + "'length'}]}\n" + done, "a|cut");
        row("a reason of another type", token("a") + end + "7}]}\n", "a|.");
        row("thoughts", "data: {'choices':[{'delta':{'reasoning':'Hm'}}]}\n" + token("a"),
            "(Hm)|a|thought");
        row("thoughts in tags",
            token(" <th") + token("ink>\\nH") + token("m</thi") + token("nk>\\n")
                + token(" a <think>"),
            "(\nH)|(m)|a <think>|thought");
        row("tags that do not end", token("<think>Hm</th"), "(Hm)|(</th)|thought");
        row("thoughts without the opening tag",
            token("Hm. ") + token("So") + token("</think>\\n\\nTea."), "Hm. |So|(^)|Tea.|thought");
        row("nearly a tag", token("<") + token("thin air>"), "<thin air>|.");
        row("an error after a token",
            token("a") + "data: {'error':{'message':'Overloaded','code':529}}\n" + token("b"),
            "a|API error 529: Overloaded");
        row("an error as a text", QByteArray("data: {'error':'Out of memory'}\n"),
            "API error: Out of memory");
        row("an error without words", QByteArray("data: {'error':{'code':7}}\n"),
            "API error: {\"code\":7}");
        row("no error", "data: {'error':null,'choices':[{'delta':{'content':'a'}}]}\n" + done,
            "a|.");
        row("usage first",
            QByteArray("data: {'choices':[{'delta':{'content':'a'}}],"
                       "'usage':{'prompt_tokens':3,'completion_tokens':4}}\n"),
            "3+4|a|.");
        row("usage without choices", QByteArray("data: {'usage':{'completion_tokens':4}}\n"),
            "0+4|.");
        row("usage without numbers", QByteArray("data: {'choices':[],'usage':{}}\n"), ".");
        row("a call in pieces",
            toolCalls("{'index':0,'id':'a','function':{'name':'x','arguments':'{\\'k\\''}}")
                + toolCalls(
                    "{'index':0,'id':'','type':null,'function':{'name':null,'arguments':':1}'}}"),
            "a=x{\"k\":1}|.");
        row("later ids and names win",
            toolCalls("{'id':'a','function':{'name':'x'}}")
                + toolCalls("{'id':'b','function':{'name':'y'}}"),
            "b=y|.");
        row("calls by index",
            toolCalls("{'index':2,'id':'b','function':{'name':'y'}}")
                + toolCalls("{'index':0,'id':'a','function':{'name':'x'}}") + done,
            "a=x;b=y|.");
        row("neither index nor id",
            toolCalls("{'function':{'name':'x'}},{'function':{'name':'y','arguments':'1'}}")
                + toolCalls("{'function':{'arguments':'2'}},{'function':{'arguments':'3'}}"),
            "call_0=x2;call_1=y13|.");
        row("more calls than any model means",
            toolCalls(QByteArray("{'index':1},").repeated(20'000)
                + "{'index':2,'function':{'arguments':'" + QByteArray(200'001, 'x') + "'}}")
                + token("late"),
            "Invalid response: the answer is too long.");
        row("no name", toolCalls("{'id':'a','function':{'arguments':'{}'}}"), ".");
        row("the first signature wins",
            toolCalls("{'id':'a','extra_content':{'google':{'thought_signature':''}}}")
                + toolCalls("{'function':{'name':'x'},"
                            "'extra_content':{'google':{'thought_signature':'S1'}}}")
                + toolCalls("{'extra_content':{'google':{'thought_signature':'S2'}}}"),
            "a=xS1|.");
    }
    void aStreamBecomesEvents()
    {
        QFETCH(QByteArray, body);
        ScriptedHTTPClient http;
        http.enqueue(200, body.replace('\'', '"'));
        QTEST(ask(http), "events");
        QVERIFY(http.requests().at(0).longest == 10min);
    }

    void aFailureEndsTheStream_data()
    {
        columns<Script, QString, int>("script", "begin", "length");
        const auto answer = [](const QByteArray& status, const QByteArray& body) {
            return Script { Send { LoopbackServer::answer(status, body) } };
        };
        const auto lines = QByteArray(999, 'x') + '\n';
        row("unauthorised", answer("401 No", "bad\r\nkey"), "API error 401: badkey", 6);
        row("one long line", answer("500 Oops", QByteArray(5000, 'x')), "API error 500: xx", 5000);
        row("many lines", answer("503 Busy", lines.repeated(9)), "API error 503: xxx", 2997);
        row("a body that breaks off",
            Script { Send { "HTTP/1.1 502 B\r\nContent-Length: 9\r\n\r\nhalf\nof" }, Close() },
            "API error 502: half", 4);
        row("a redirect",
            Script { Send { "HTTP/1.1 307 Go\r\nLocation: " + m_other.url().toEncoded()
                + "\r\nContent-Length: 0\r\n\r\n" } },
            "API error 307: ", 0);
        row("silence", Script(), "127.0.0.1:", 0);
        row("silence after a token",
            Script { Send { LoopbackServer::eventStreamHead() + token("a") } }, "127.0.0.1:", 0);
        row("comments in place of a beginning",
            Script { Send { LoopbackServer::eventStreamHead() }, Send { ":\n", 1 << 30 } },
            "127.0.0.1:", 0);
        row("cut", Script { Send { "HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n" }, Close() },
            "The connection to 127.0.0.1:", 0);
        row("closed at once", Script { Close() }, "127.0.0.1:", 0);
    }
    void aFailureEndsTheStream()
    {
        QFETCH(Script, script);
        QFETCH(QString, begin);
        const LogLines log;
        m->server.enqueue(script);
        const auto timeout = begin.startsWith(u"127.0.0.1") ? 100ms : 10s;
        OpenAICompatibleProvider provider(
            configuration(m->server.url()), m->http, { timeout, 4 * timeout });
        const auto stream = std::make_shared<LLMStream>(provider.streamChat({}));
        const auto last = awaited(collected(stream)).last();
        QVERIFY2(last.startsWith(begin), qPrintable(last));
        QVERIFY(!last.contains(apiKey) && log.lines().isEmpty());
        if (const auto* error = std::get_if<LLMError>(&*stream->error()))
            QTEST(int(error->text.size()), "length");
        QCOMPARE(m->server.requests().size(), 1u);
        QVERIFY(m_other.requests().empty());
    }

    void aRequestIsNotedWithoutWhatWasSaid_data()
    {
        using Outcome = RequestRecord::Outcome;
        columns<int, QByteArray, Outcome, QString>("status", "body", "outcome", "failure");
        const QByteArray usage = "data: {'usage':{'prompt_tokens':3,'completion_tokens':4}}\n";
        row("answered", 200, token("secret") + usage, Outcome::answered, QString());
        row("cut off", 200,
            "data: {'choices':[{'delta':{'content':'secret'},'finish_reason':'length'}]}\n" + usage,
            Outcome::cutOff, QString());
        row("refused", 401, QByteArray("secret"), Outcome::failed, u"API error 401:"_s);
    }
    void aRequestIsNotedWithoutWhatWasSaid()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        auto now = TimePoint(1h);
        RequestLog log([&now] { return now; });
        ScriptedHTTPClient http;
        http.enqueue(status, body.replace('\'', '"'));
        OpenAICompatibleProvider provider(configuration(m->server.url()), http);
        provider.setWatching([&] {
            const auto watch = log.begin(ModelUse::librarian, u"model"_s);
            now += 2s;
            return watch;
        });
        awaited(collected(std::make_shared<LLMStream>(provider.streamChat({}))));
        const auto record = log.latest().front();
        QTEST(record.outcome, "outcome");
        QTEST(record.failure, "failure");
        QVERIFY(record.use == ModelUse::librarian && record.begunAt == TimePoint(1h));
        QCOMPARE(record.firstToken.has_value(), status == 200);
        QCOMPARE(record.lastToken.value_or(2s), 2000ms);
        QCOMPARE(record.promptTokens * 10 + record.completionTokens, status == 200 ? 34 : 0);
    }

    void theLogKeepsTheLatestAndKnowsWhatWasStopped()
    {
        RequestLog log(systemNow);
        const auto first = log.begin(ModelUse::main, u"first"_s);
        for (size_t number = 1; number < RequestLog::most; ++number)
            log.begin(ModelUse::main, {}).stop();
        QCOMPARE(log.latest().back().modelID, u"first");
        log.begin(ModelUse::main, u"last"_s);
        first.finish({});
        QCOMPARE(log.latest().size(), RequestLog::most);
        QCOMPARE(log.latest().front().modelID, u"last");
        QVERIFY(log.latest().back().outcome == RequestRecord::Outcome::stopped);
    }

    void aRefusalKeepsWhatExplainsIt()
    {
        const QByteArray head = "429 Slow\r\nRETRY-AFTER: 7\r\nContent-Type: text/html";
        m->server.enqueue({ Send { LoopbackServer::answer(head, "<p>Wait") } });
        OpenAICompatibleProvider provider(configuration(m->server.url()), m->http);
        const auto stream = std::make_shared<LLMStream>(provider.streamChat({}));
        awaited(collected(stream));
        const auto& error = std::get<LLMError>(*stream->error());
        QCOMPARE(error.retryAfter, "7");
        QVERIFY(error.isPage);
    }

    void theServersModelsAreListed()
    {
        ScriptedHTTPClient http;
        OpenAICompatibleProvider provider(configuration(QUrl(u"http://h.test/v1"_s)), http);
        const QByteArray list = R"({"data":[{"id":"b"},{"id":" "},{"id":7},{},{"id":"a"}]})";
        http.enqueue(200, list);
        QCOMPARE(awaited(provider.models()), std::vector({ u"b"_s, u"a"_s }));
        QCOMPARE(http.requests().at(0).url.path(), u"/v1/models");
        QVERIFY(http.requests().at(0).longest <= 10s);
        for (const auto& other : { QByteArray("<html>"), QByteArray(1 << 20, ' ') + list }) {
            http.enqueue(200, other);
            QVERIFY(awaited(provider.models()).empty());
        }
        http.enqueue(404, list);
        QVERIFY(awaited(provider.models()).empty());
    }

    void serversOnThisComputerAreFoundByTheirModels()
    {
        ScriptedHTTPClient http;
        http.enqueue(tl::unexpected(TransportError { TransportError::Kind::refused, {} }));
        http.enqueue(200, R"({"data":[{"id":"owl"},{"id":"emu"}]})");
        http.enqueue(200, R"({"data":[]})");
        http.enqueue(200, "<html>");
        http.enqueue(404, {});
        const auto found = awaited(LocalServers::find(&http));
        QCOMPARE(found.size(), 1u);
        QCOMPARE(found.front().baseURL, u"http://127.0.0.1:1234/v1"_s);
        QCOMPARE(found.front().models, std::vector({ u"owl"_s, u"emu"_s }));
        for (const auto& request : http.requests()) {
            QCOMPARE(request.url.host(), u"127.0.0.1"_s);
            QVERIFY(request.longest <= std::chrono::seconds(1));
        }
    }

    void whatIsNotHTTPIsAnInvalidResponse()
    {
        ScriptedHTTPClient http;
        http.enqueue(tl::unexpected(TransportError { TransportError::Kind::notHTTP, {} }));
        QCOMPARE(ask(http), u"Invalid response: not an HTTP response"_s);
    }

    void nothingIsSentWithoutAModelAndAKey()
    {
        ScriptedHTTPClient http;
        auto incomplete = configuration({});
        incomplete.apiKey.clear();
        QVERIFY(ask(http, incomplete).contains(u"MAIN_MODEL_API_KEY"));
        incomplete.modelID.clear();
        QVERIFY(ask(http, incomplete).contains(u"MAIN_MODEL_ID"));
        QVERIFY(http.requests().empty());
    }

    void aDroppedStreamClosesItsConnection()
    {
        m->server.enqueue({ Send { LoopbackServer::eventStreamHead() } });
        OpenAICompatibleProvider provider(configuration(m->server.url()), m->http);
        auto stream = std::make_unique<LLMStream>(provider.streamChat({}));
        QTRY_COMPARE(m->server.openConnections(), 1);
        stream.reset();
        QTRY_COMPARE(m->server.openConnections(), 0);
    }

    void aFinishedReplyIsNotCutOff()
    {
        for (int replies = 1; replies <= 2; ++replies) {
            m->server.enqueue({ Send { "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                       "e\r\ndata: [DONE]\n\n\r\n" } });
            QCOMPARE(ask(m->http), u".");
            QCOMPARE(m->server.openConnections(), replies);
        }
    }

private:
    static LLMConfiguration configuration(const QUrl& url)
    {
        return { .baseURL = url,
            .modelID = u"model"_s,
            .apiKey = apiKey,
            .completionsPath = u"chat/completions"_s };
    }

    static QString ask(HTTPClient& http, const LLMConfiguration& given)
    {
        OpenAICompatibleProvider provider(given, http);
        const auto stream = std::make_shared<LLMStream>(
            provider.streamChat({ .longest = 10min, .wantsThoughts = true }));
        return awaited(collected(stream)).join(u'|');
    }
    QString ask(HTTPClient& http) const { return ask(http, configuration(m->server.url())); }

    struct Connection {
        LoopbackServer server;
        CurlHTTPClient http;
    };
    std::unique_ptr<Connection> m;
    LoopbackServer m_other;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::OpenAICompatibleProviderTest)
#include "OpenAICompatibleProviderTest.moc"
