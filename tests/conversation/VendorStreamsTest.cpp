#include "ChatFixture.h"
#include "PobblewigDemoModel/DemoServer.h"
#include "network/CurlHTTPClient.h"
#include "support/LoopbackServer.h"
#include "support/TableRow.h"
#include "wire/OpenAICompatibleProvider.h"

namespace pobblewig {

namespace {

using Send = LoopbackServer::Send;

// JSON is written with single quotes here, and what is JSON inside of JSON with back quotes.
QByteArray requoted(QByteArray text)
{
    return text.replace('\'', '"').replace('`', "\\\"");
}

QByteArray chunk(const QByteArray& text)
{
    return "data: " + requoted(text) + "\n\n";
}

QByteArray delta(const QByteArray& fields)
{
    return chunk("{'choices':[{'index':0,'delta':{" + fields + "},'finish_reason':null}]}");
}

/// A call that proposes a reminder, with this about it.
QByteArray call(const QByteArray& arguments, const QByteArray& more = {})
{
    return "'tool_calls':[{'id':'a','type':'function','function':{'name':'propose_reminder',"
           "'arguments':'"
        + arguments + "'}" + more + "}]";
}

const QByteArray tea = "{`proposalId`:`t`,`title`:`Tea`}";

LoopbackServer::Script streamed(const QByteArray& body)
{
    return { Send { LoopbackServer::eventStreamHead() }, Send { body }, LoopbackServer::Close() };
}

QJsonObject bodyOf(const QByteArray& request)
{
    return QJsonDocument::fromJson(request.mid(request.indexOf("\r\n\r\n") + 4)).object();
}

/// What a request says back to the model of its last reply: its call and the beginning of the
/// result.
QString toldBack(const QByteArray& request)
{
    const auto messages = bodyOf(request)[u"messages"].toArray();
    const auto last = messages.last()[u"content"].toString();
    const auto call = messages[messages.size() - 2][u"tool_calls"][0];
    const auto function = call[u"function"];
    const auto signature = call[u"extra_content"][u"google"][u"thought_signature"].toString();
    return QStringList { call[u"id"].toString(), function[u"name"].toString(),
        function[u"arguments"].toString() + signature, last.section(u' ', 0, 0) }
        .join(u' ');
}

} // namespace

/// Whole turns over a real connection with servers that keep to the format in their own ways.
class VendorStreamsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<LoopbackServer>();
        connectTo(m_server->url());
    }

    void aStreamLeadsToItsCallsAndItsText_data()
    {
        columns<QByteArray, QString, QString, QString>("body", "told", "actions", "answer");
        row("a text, a call and the reason to end in one event",
            chunk("{'choices':[{'delta':{'role':'assistant','content':'Sure.'," + call(tea)
                + "},'finish_reason':'tool_calls'}]}"),
            "a propose_reminder {'proposalId':'t','title':'Tea'} registered", "Tea", "Done.");
        row("a signature that has to come back",
            delta(call(tea, ",'extra_content':{'google':{'thought_signature':'S1'}}")),
            "a propose_reminder {'proposalId':'t','title':'Tea'}S1 registered", "Tea", "Done.");
        row("a call that the length limit cut",
            delta(call("{`title`:`T")) + chunk("{'choices':[{'finish_reason':'length'}]}"),
            "a propose_reminder {} error:", "", "Done.");
        row("thoughts aside",
            delta("'reasoning_content':'Hm. ','content':null") + delta("'reasoning':'Well.'")
                + delta("'content':'Tea.','reasoning_details':[{'text':'x'}]"),
            "", "", "Tea.");
    }
    void aStreamLeadsToItsCallsAndItsText()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, told);
        m_server->enqueue(streamed(body));
        m_server->enqueue(streamed(delta("'content':'Done.'")));
        ask();
        QVERIFY2(m_chat->succeeded(), qPrintable(m_chat->error()));
        QCOMPARE(m_server->requests().size(), told.isEmpty() ? 1u : 2u);
        if (!told.isEmpty())
            QCOMPARE(toldBack(m_server->requests().back()), told.replace(u'\'', u'"'));
        QTEST(m_actions.join(u'|'), "actions");
        QTEST(m_chat->chat.messages().back().text, "answer");
    }

    void anErrorWithinAStreamIsAFailure()
    {
        const auto error = chunk("{'error':{'message':'Overloaded','code':529}}");
        m_server->enqueue(streamed(error));
        m_server->enqueue(streamed(delta("'content':'Tea is'") + error));
        ask();
        QVERIFY(!m_chat->succeeded());
        QCOMPARE(m_chat->error(), u"API error 529: Overloaded");
        QCOMPARE(m_chat->texts(), u"tea?|Tea is");
        QVERIFY(m_chat->history.messages().back().isCutOff());
        QVERIFY(!m_chat->chat.canRetry());

        m_server->enqueue(streamed(delta("'content':' good.'")));
        m_chat->chat.continueReply();
        m_chat->finishTurn();
        QVERIFY(m_chat->succeeded() && !m_chat->chat.canContinue());
        QVERIFY(m_chat->texts().endsWith(u"cut off.|good."));
        QCOMPARE(m_server->requests().size(), 3u);
    }

    void usageThatGrowsIsCountedOnce()
    {
        m_server->enqueue(
            streamed(chunk("{'choices':[],'usage':{'prompt_tokens':3,'completion_tokens':0}}")
                + delta("'content':'Hi'")
                + chunk("{'choices':[{'delta':{'content':'!'}}],'usage':{'prompt_tokens':3,"
                        "'completion_tokens':4,'total_tokens':7,'prompt_tokens_details':null}}")));
        ask();
        const auto counted = m_chat->usage.snapshot();
        QCOMPARE(counted.mainPromptTokens + counted.mainCompletionTokens, 7);
        QCOMPARE(m_chat->texts(), u"tea?|Hi!");
    }

    void aServerThatRefusesToolsIsAskedOnceMoreAndThenByText()
    {
        m_server->enqueue({ Send { LoopbackServer::answer("422 Unprocessable Entity",
            requoted("{'error':{'message':'tools are not supported','code':null}}")) } });
        m_server->enqueue(streamed(delta("'content':'Hello.'")));
        m_server->enqueue(streamed(delta("'content':'Sure.'")));
        ask();
        ask();
        QCOMPARE(m_chat->texts(), u"tea?|Hello.|tea?|Sure.");
        const auto& requests = m_server->requests();
        QCOMPARE(requests.size(), 3u);
        QVERIFY(bodyOf(requests[0]).contains(u"tools"));
        for (size_t index : { 1, 2 })
            QVERIFY(!bodyOf(requests[index]).contains(u"tools"));
        QVERIFY(requests[2].contains("buddy-tools") && !requests[1].contains("buddy-tools"));
    }

    void aCutStreamLeavesOnlyItsText()
    {
        const auto body = delta("'content':'Su'") + delta(call(tea));
        m_server->enqueue({ Send { "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                + QByteArray::number(body.size(), 16) + "\r\n" + body + "\r\n" },
            LoopbackServer::Close() });
        ask();
        QVERIFY(!m_chat->succeeded() && !m_chat->error().isEmpty());
        QCOMPARE(m_chat->texts(), u"tea?|Su");
        QVERIFY(m_chat->chat.canContinue());
        QVERIFY(m_actions.isEmpty() && m_chat->chat.streamingPreview().isEmpty());
        QCOMPARE(m_server->requests().size(), 1u);
    }

    void theDemoModelServesBothProtocols()
    {
        for (const auto refusesTools : { false, true }) {
            DemoServer demo({ .refusesTools = refusesTools });
            connectTo(QUrl(u"http://127.0.0.1:%1/v1"_s.arg(*demo.listen(0))));
            ask(u"remind me to drink tea"_s);
            ask(u"remind me to drink tea"_s);
            QCOMPARE(m_actions.join(u'|'), u"Drink tea|Drink tea");
            ask(u"remember that I like tea"_s);
            ask(u"what did I say about tea?"_s);
            const auto answer = m_chat->chat.messages().back().text;
            QVERIFY2(answer.contains(u"I like tea"), qPrintable(answer));
        }
    }

private:
    void connectTo(const QUrl& url)
    {
        LLMConfiguration configuration;
        configuration.baseURL = url;
        configuration.modelID = configuration.apiKey = u"x"_s;
        configuration.completionsPath = u"chat/completions"_s;
        m_provider = std::make_unique<OpenAICompatibleProvider>(configuration, m_http);
        m_chat = std::make_unique<ChatFixture>();
        m_chat->models.main = m_provider.get();
        m_actions.clear();
        m_chat->chat.onActions = [this](std::vector<BuddyAction> actions) {
            return take(std::move(actions));
        };
    }

    void ask(const QString& text = u"tea?"_s) { m_chat->ask(text); }

    Task<> take(std::vector<BuddyAction> actions)
    {
        for (const auto& action : actions)
            m_actions.append(std::get<RuleProposal>(action).name);
        co_return;
    }

    CurlHTTPClient m_http;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<OpenAICompatibleProvider> m_provider;
    std::unique_ptr<ChatFixture> m_chat;
    QStringList m_actions;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::VendorStreamsTest)
#include "VendorStreamsTest.moc"
