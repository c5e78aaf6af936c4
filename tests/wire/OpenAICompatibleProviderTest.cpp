#include "wire/OpenAICompatibleProvider.h"

#include "foundation/NetworkHTTPClient.h"
#include "foundation/Overloaded.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/LoopbackServer.h"
#include "support/ScriptedHTTPClient.h"

#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

using Send = LoopbackServer::Send;
using Close = LoopbackServer::Close;
using Script = LoopbackServer::Script;

namespace {

const auto apiKey = QStringLiteral("sk-hush");

/// Events as one line of text each, the error last.
QString described(const LLMStreamEvent& event)
{
    return std::visit(
        Overloaded {
            [](const LLMToken& token) { return token.text; },
            [](const LLMToolCalls& calls) {
                QStringList texts;
                for (const auto& call : calls.calls) {
                    texts.append(call.id + u'=' + call.name + call.argumentsJSON
                        + call.thoughtSignature.value_or(QString()));
                }
                return texts.join(u';');
            },
            [](const LLMUsage& usage) {
                return QStringLiteral("%1+%2").arg(usage.promptTokens).arg(usage.completionTokens);
            },
            [](const LLMFinished&) { return QStringLiteral("."); },
        },
        event);
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

Task<bool> nextComes(std::shared_ptr<LLMStream> stream)
{
    const auto event = co_await stream->next();
    co_return event.has_value();
}

// JSON is written with single quotes here.
QByteArray quoted(QByteArray text)
{
    return text.replace('\'', '"');
}

QByteArray token(const QByteArray& text)
{
    return quoted("data: {'choices':[{'delta':{'content':'" + text + "'}}]}\n\n");
}

QByteArray toolCalls(const QByteArray& deltas)
{
    return "data: {'choices':[{'delta':{'tool_calls':[" + deltas + "]}}]}\n\n";
}

} // namespace

class OpenAICompatibleProviderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStreamBecomesEvents_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("events");
        const auto row = [](const char* name, const QByteArray& body, const QString& events) {
            QTest::newRow(name) << quoted(body) << events.split(u'|');
        };
        const QByteArray done = "data: [DONE]\n\n";
        row("tokens", token("Hel") + token("lo") + done + token("late"),
            QStringLiteral("Hel|lo|."));
        row("never the end mark", token("Hello"), QStringLiteral("Hello|."));
        row("no blank before the end mark", "data:[DONE]\n" + token("late"), QStringLiteral("."));
        row("more blanks", "data:  \t [DONE] \n" + token("late"), QStringLiteral("."));
        row("an end mark without prefix", "[DONE]\n" + token("more"), QStringLiteral("more|."));
        row("other lines", ": ping\nevent: x\n data: y\n" + token("a"), QStringLiteral("a|."));
        row("what is not JSON", "data: {'choices':[\ndata: 7\ndata:\n" + token("a"),
            QStringLiteral("a|."));
        row("wrong types", "data: {'choices':[{'delta':{'content':7}}]}\n" + token("a"),
            QStringLiteral("a|."));
        row("nulls and unknown keys",
            "data: {'choices':[{'delta':{'content':null,'tool_calls':null,'x':[]}},{}],"
            "'usage':null,'y':{}}\n",
            QStringLiteral("."));
        row("escapes", token("\\ud83e\\udd98 \\n\\'\xC3\xA9"), QStringLiteral("🦘 \n\"é|."));
        row("an empty token", token(""), QStringLiteral("."));
        row("usage first",
            "data: {'choices':[{'delta':{'content':'a'}}],"
            "'usage':{'prompt_tokens':3,'completion_tokens':4}}\n",
            QStringLiteral("3+4|a|."));
        row("usage without choices", "data: {'choices':[],'usage':{'completion_tokens':4}}\n",
            QStringLiteral("0+4|."));
        row("usage without numbers", "data: {'usage':{}}\n", QStringLiteral("."));
        row("a call in pieces",
            toolCalls("{'index':0,'id':'a','function':{'name':'x','arguments':'{\\'k\\''}}")
                + toolCalls("{'index':0,'id':'','function':{'name':'','arguments':':1}'}}"),
            QStringLiteral("a=x{\"k\":1}|."));
        row("later ids and names win",
            toolCalls("{'index':0,'id':'a','function':{'name':'x'}}")
                + toolCalls("{'index':0,'id':'b','function':{'name':'y'}}"),
            QStringLiteral("b=y|."));
        row("calls by index",
            toolCalls("{'index':2,'id':'b','function':{'name':'y'}}")
                + toolCalls("{'index':0,'id':'a','function':{'name':'x'}}") + done,
            QStringLiteral("a=x;b=y|."));
        row("neither index nor id",
            toolCalls("{'function':{'name':'x'}},{'function':{'name':'y','arguments':'1'}}")
                + toolCalls("{'function':{'arguments':'2'}},{'function':{'arguments':'3'}}"),
            QStringLiteral("call_0=x2;call_1=y13|."));
        row("a call without a name", toolCalls("{'id':'a','function':{'arguments':'{}'}}"),
            QStringLiteral("."));
        row("the first signature wins",
            toolCalls("{'id':'a','extra_content':{'google':{'thought_signature':''}}}")
                + toolCalls("{'function':{'name':'x'},"
                            "'extra_content':{'google':{'thought_signature':'S1'}}}")
                + toolCalls("{'extra_content':{'google':{'thought_signature':'S2'}}}"),
            QStringLiteral("a=xS1|."));
    }
    void aStreamBecomesEvents()
    {
        QFETCH(QByteArray, body);
        QFETCH(QStringList, events);
        ScriptedHTTPClient http;
        http.enqueue(200, body);
        QCOMPARE(ask(http, configuration(QUrl())), events);
    }

    void anAnswerMayBeCutAnywhere()
    {
        for (const QByteArray end : { "\n", "\r\n" }) {
            auto body = token("sal\xC3\xBC \xF0\x9F\xA6\x98") + token("!") + "data: [DONE]\n\n";
            body.replace("\n", end);
            for (qsizetype cut = 1; cut < body.size(); ++cut) {
                m_server.enqueue({ Send { LoopbackServer::eventStreamHead() },
                    Send { body.first(cut) }, Send { body.sliced(cut) }, Close() });
                QCOMPARE(ask(),
                    QStringList(
                        { QStringLiteral("salü 🦘"), QStringLiteral("!"), QStringLiteral(".") }));
            }
        }
    }

    void aFailureEndsTheStream_data()
    {
        QTest::addColumn<Script>("script");
        QTest::addColumn<QString>("begin");
        QTest::addColumn<int>("length");
        const auto row = [](const char* name, const Script& script, const char* begin,
                             int length = 0) {
            QTest::newRow(name) << script << QString::fromUtf8(begin) << length;
        };
        const auto answer = [](const QByteArray& status, const QByteArray& body) {
            return Script { Send { LoopbackServer::answer(status, body) } };
        };
        const auto lines = QByteArray(999, 'x') + '\n';
        row("unauthorised", answer("401 No", "bad\r\nkey"), "API error 401: badkey");
        row("one long line", answer("500 Oops", QByteArray(5000, 'x')), "API error 500: xxx", 5000);
        row("many lines", answer("503 Busy", lines.repeated(9)), "API error 503: xxx", 2997);
        row("a body that breaks off",
            { Send { "HTTP/1.1 502 B\r\nContent-Length: 9\r\n\r\nhalf\nof" }, Close() },
            "API error 502: half");
        row("a redirect",
            { Send { "HTTP/1.1 307 Go\r\nLocation: " + m_other.url().toEncoded()
                + "\r\nContent-Length: 0\r\n\r\n" } },
            "API error 307: ");
        row("silence", {}, "127.0.0.1:");
        row("silence after a token", { Send { LoopbackServer::eventStreamHead() + token("a") } },
            "127.0.0.1:");
        row("cut",
            { Send { "HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n" + token("a") }, Close() },
            "The connection to 127.0.0.1:");
        row("closed at once", { Close() }, "127.0.0.1:");
        row("an endless line",
            { Send { LoopbackServer::eventStreamHead() + "data: " },
                Send { QByteArray(1 << 20, 'x'), 200 } },
            "The answer of 127.0.0.1:");
    }
    void aFailureEndsTheStream()
    {
        QFETCH(Script, script);
        QFETCH(QString, begin);
        QFETCH(int, length);
        const LogLines log;
        const auto requests = m_server.requests().size();
        m_server.enqueue(script);
        const auto timeout = begin.startsWith(u"127.0.0.1") ? 100ms : 10s;
        OpenAICompatibleProvider provider(configuration(m_server.url()), m_http, timeout);
        const auto stream = std::make_shared<LLMStream>(provider.streamChat({}));
        const auto last = awaited(collected(stream)).last();
        QVERIFY2(last.startsWith(begin), qPrintable(last));
        QVERIFY(!last.contains(apiKey) && log.lines().isEmpty());
        if (length > 0)
            QCOMPARE(std::get<LLMError>(*stream->error()).text.size(), length);
        QCOMPARE(m_server.requests().size(), requests + 1);
        QVERIFY(m_other.requests().empty());
    }

    void aPageInPlaceOfAStreamSaysNothing()
    {
        m_server.enqueue({ Send { LoopbackServer::answer("200 OK", "<html>\n<p>Sign in") } });
        QCOMPARE(ask(), QStringList { QStringLiteral(".") });
    }

    void whatIsNotHTTPIsAnInvalidResponse()
    {
        ScriptedHTTPClient http;
        http.enqueue(
            tl::unexpected(TransportError { TransportError::Kind::notHTTP, QStringLiteral("x") }));
        QCOMPARE(ask(http, configuration(QUrl())).last(),
            QStringLiteral("Invalid response: not an HTTP response"));
    }

    void nothingIsSentWithoutAModelAndAKey()
    {
        ScriptedHTTPClient http;
        auto incomplete = configuration(QUrl());
        incomplete.apiKey.clear();
        QVERIFY(ask(http, incomplete).last().contains(u"MAIN_MODEL_API_KEY"));
        incomplete.modelID.clear();
        QVERIFY(ask(http, incomplete).last().contains(u"MAIN_MODEL_ID"));
        QVERIFY(http.requests().empty());
    }

    void aDroppedStreamClosesItsConnection()
    {
        m_server.enqueue({ Send { LoopbackServer::eventStreamHead() + token("a") } });
        OpenAICompatibleProvider provider(configuration(m_server.url()), m_http);
        auto stream = std::make_shared<LLMStream>(provider.streamChat({}));
        QVERIFY(awaited(nextComes(stream)));
        QCOMPARE(m_server.openConnections(), 1);
        stream.reset();
        QTRY_COMPARE(m_server.openConnections(), 0);
    }

    void aFinishedReplyIsNotCutOff()
    {
        LoopbackServer server;
        const auto body = token("a") + "data: [DONE]\n\n";
        const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
        const auto chunk = QByteArray::number(body.size(), 16) + "\r\n" + body + "\r\n";
        for (int replies = 1; replies <= 2; ++replies) {
            server.enqueue({ Send { head + chunk } });
            QCOMPARE(ask(m_http, configuration(server.url())).last(), QStringLiteral("."));
            QCOMPARE(server.openConnections(), replies);
        }
    }

private:
    static LLMConfiguration configuration(const QUrl& url)
    {
        LLMConfiguration result;
        result.baseURL = url;
        result.modelID = QStringLiteral("model");
        result.apiKey = apiKey;
        result.completionsPath = QStringLiteral("chat/completions");
        return result;
    }

    static QStringList ask(HTTPClient& http, const LLMConfiguration& configuration)
    {
        OpenAICompatibleProvider provider(configuration, http);
        return awaited(collected(std::make_shared<LLMStream>(provider.streamChat({}))));
    }
    QStringList ask() { return ask(m_http, configuration(m_server.url())); }

    LoopbackServer m_server;
    LoopbackServer m_other;
    NetworkHTTPClient m_http;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::OpenAICompatibleProviderTest)
#include "OpenAICompatibleProviderTest.moc"
