#include "ChatFixture.h"
#include "PobblewigDemoModel/DemoServer.h"
#include "VendorStream.h"
#include "foundation/NetworkHTTPClient.h"
#include "support/TableRow.h"
#include "wire/OpenAICompatibleProvider.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace pobblewig {

using namespace VendorStream;

namespace {

using namespace Qt::StringLiterals;

QJsonObject bodyOf(const QByteArray& request)
{
    return QJsonDocument::fromJson(request.mid(request.indexOf("\r\n\r\n") + 4)).object();
}

QString described(const QJsonValue& call)
{
    const auto function = call[u"function"];
    return QStringList { call[u"id"].toString(), function[u"name"].toString(),
        function[u"arguments"].toString(),
        call[u"extra_content"][u"google"][u"thought_signature"].toString() }
        .join(u' ')
        .trimmed();
}

/// What a request says back to the model of its last reply: each call and the beginning of its
/// result, or that the reply was found empty.
QString toldBack(const QByteArray& request)
{
    const auto messages = bodyOf(request)[u"messages"].toArray();
    if (messages.last()[u"content"].toString().startsWith(u"Your last reply came through empty"))
        return QStringLiteral("empty");
    QStringList told;
    QStringList ids;
    for (const auto& message : messages) {
        for (const auto& call : message[u"tool_calls"].toArray()) {
            told.append(described(call));
            ids.append(call[u"id"].toString());
        }
        if (!message[u"tool_call_id"].isUndefined()
            && message[u"tool_call_id"].toString() == ids.takeFirst())
            told.append(message[u"content"].toString().section(u' ', 0, 0));
    }
    return told.join(u'|');
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
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("told");
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("answer");
        const auto full =
            calls("{'id':'a','function':{'name':'propose_reminder','arguments':'" + tea + "'}}");
        const auto stop = ended("stop");
        const QString registered = QStringLiteral("|registered");
        const QString teaCall = u"a propose_reminder {'proposalId':'t','title':'Tea'}"_s;

        row("a call in one piece, with a text and the reason to end in the same event",
            chunk("{'choices':[{'delta':{'role':'assistant','content':'Sure.','tool_calls':[{"
                  "'index':0,'id':'a','type':'function','function':{'name':'propose_reminder',"
                  "'arguments':'"
                + tea + "'}}]},'finish_reason':'tool_calls'}]}"),
            teaCall + registered, "Tea", "Done.");
        row("no index and no end mark", full, teaCall + registered, "Tea", "Done.");
        row("no ids",
            calls("{'function':{'name':'propose_reminder','arguments':'" + tea
                + "'}},{'function':{'name':'interventions_recent','arguments':'{}'}}")
                + stop,
            u"call_0"_s + teaCall.mid(1)
                + u"|call_1 interventions_recent {}|registered|(interventions"_s,
            "Tea", "Done.");
        row("id and name in every piece",
            opened(0, "a", reminder)
                + calls("{'index':0,'id':'a','function':{'name':"
                        "'propose_reminder','arguments':'{`proposalId`:`t`'}}")
                + calls("{'index':0,'id':'a','function':{'name':'propose_reminder','arguments':"
                        "',`title`:`Tea`}'}}")
                + stop,
            teaCall + registered, "Tea", "Done.");
        row("nulls where pieces have nothing to say",
            opened(0, "a", reminder)
                + delta("'role':null,'content':null,'tool_calls':[{'index':0,'id':null,'type':null,"
                        "'function':{'name':null,'arguments':'"
                    + tea + "'}}]")
                + stop,
            teaCall + registered, "Tea", "Done.");
        row("one id for two calls",
            opened(0, "a", reminder) + piece(0, tea) + opened(1, "a", "interventions_recent")
                + stop,
            teaCall + u"|a interventions_recent|registered|(interventions"_s, "Tea", "Done.");
        row("calls in turns, the last one first",
            opened(1, "b", "interventions_recent") + opened(0, "a", reminder) + piece(1, "{")
                + piece(0, tea.first(9)) + piece(1, "}") + piece(0, tea.mid(9))
                + ended("tool_calls"),
            teaCall + u"|b interventions_recent {}|registered|(interventions"_s, "Tea", "Done.");
        row("escapes cut in two",
            opened(0, "a", reminder) + piece(0, "{`proposalId`:`t`,`title`:`Caf\\\\u00")
                + piece(0, "e9 \\\\ud8") + piece(0, "3e\\\\udd") + piece(0, "98 \\\\")
                + piece(0, "``}") + stop,
            "a propose_reminder {'proposalId':'t','title':'Caf\\u00e9 \\ud83e\\udd98 "
            "`'}|registered",
            "Café 🦘 \"", "Done.");
        row("a signature that has to come back",
            calls("{'index':0,'id':'a','function':{'name':'propose_reminder','arguments':'" + tea
                + "'},'extra_content':{'google':{'thought_signature':'S1'}}}")
                + stop,
            teaCall + u" S1"_s + registered, "Tea", "Done.");
        row("whole calls without index, in events of their own, cannot be told apart",
            full + full + stop, teaCall + teaCall.mid(19) + u"|error:"_s, "", "Done.");
        row("a call that the length limit cut",
            opened(0, "a", reminder) + piece(0, tea.first(20)) + ended("length"),
            "a propose_reminder {'proposalId':'t','t|error:", "", "Done.");
        row("a call that the end of the connection cut",
            delta("'content':'Sure.'") + opened(0, "a", reminder) + piece(0, "{`title`"),
            "a propose_reminder {'title'|error:", "", "Done.");

        row("a text that the length limit cut", delta("'content':'Once upon'") + ended("length"),
            "", "", "Once upon");
        row("thoughts aside",
            delta("'reasoning_content':'Hm. ','content':null") + delta("'reasoning':'Well.'")
                + delta("'content':'Tea.','reasoning_details':[{'text':'x'}]") + stop,
            "", "", "Tea.");
        row("nothing but thoughts", delta("'content':'','reasoning':'Hm.'") + stop, "empty", "",
            "Done.");
        row("nothing at all", QByteArray("data: [DONE]\n\n"), "empty", "", "Done.");
        row("an error in place of a reply", chunk("{'error':{'message':'Overloaded','code':529}}"),
            "empty", "", "Done.");
        row("a function of the old kind",
            delta("'content':null,'function_call':{'name':'propose_reminder','arguments':'{}'}")
                + ended("function_call"),
            "empty", "", "Done.");
        row("arguments that are no text",
            calls("{'index':0,'id':'a','function':{'name':'propose_reminder','arguments':{}}}")
                + stop,
            "empty", "", "Done.");
    }
    void aStreamLeadsToItsCallsAndItsText()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, told);
        told = QString::fromUtf8(requoted(told.toUtf8()));
        m_server->enqueue(streamed(body));
        m_server->enqueue(streamed(delta("'content':'Done.'")));
        ask();
        QVERIFY2(m_chat->succeeded(), qPrintable(m_chat->error()));
        QCOMPARE(m_server->requests().size(), told.isEmpty() ? 1u : 2u);
        if (!told.isEmpty())
            QCOMPARE(toldBack(m_server->requests().back()), told);
        QTEST(m_actions.join(u'|'), "actions");
        QTEST(m_chat->chat.messages().back().text, "answer");
    }

    void usageIsCountedWhereverItComes_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("counted");
        const auto text = delta("'content':'Hi'");
        row("never", text, 0);
        row("before the text", usage(3, 4) + text + ended("stop"), 7);
        row("behind the reason to end",
            text + ended("stop").replace("data: [DONE]\n\n", "") + usage(3, 4), 7);
        row("with every event, growing",
            usage(3, 0) + text
                + chunk("{'choices':[{'delta':{'content':'!'}}],'usage':{'prompt_tokens':3,"
                        "'completion_tokens':1,'total_tokens':4,'prompt_tokens_details':null}}")
                + usage(3, 4),
            7);
        row("null until the end",
            chunk("{'choices':[{'delta':{'content':'Hi'}}],'usage':null}") + usage(3, 4), 7);
    }
    void usageIsCountedWhereverItComes()
    {
        QFETCH(QByteArray, body);
        m_server->enqueue(streamed(body));
        ask();
        const auto counted = m_chat->usage.snapshot();
        QTEST(int(counted.mainPromptTokens + counted.mainCompletionTokens), "counted");
        QVERIFY(m_chat->chat.messages().back().text.startsWith(u"Hi"));
    }

    void aServerWithoutToolsIsAskedOnceMoreAndThenByText_data()
    {
        QTest::addColumn<QByteArray>("status");
        row("a bad request", QByteArray("400 Bad Request"));
        row("not to be processed", QByteArray("422 Unprocessable Entity"));
    }
    void aServerWithoutToolsIsAskedOnceMoreAndThenByText()
    {
        QFETCH(QByteArray, status);
        m_server->enqueue(refused(status));
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

    void aRefusalAfterARoundOfToolsStartsTheTurnOver()
    {
        const auto asking = opened(0, "a", "interventions_recent") + ended("tool_calls");
        m_server->enqueue(streamed(asking));
        m_server->enqueue(refused("422 Unprocessable Entity"));
        m_server->enqueue(streamed(asking));
        m_server->enqueue(streamed(delta("'content':'Done.'")));
        ask();
        QCOMPARE(m_chat->texts(), u"tea?|Done.");
        const auto& requests = m_server->requests();
        QCOMPARE(requests.size(), 4u);
        QCOMPARE(bodyOf(requests[2]), bodyOf(requests[0]));
        QCOMPARE(bodyOf(requests[3]), bodyOf(requests[1]));
    }

    void aCutStreamLeavesNothingBehindAndCanBeRetried()
    {
        m_server->enqueue(cut(delta("'content':'Su'") + opened(0, "a", reminder) + piece(0, tea)));
        ask();
        QVERIFY(!m_chat->succeeded() && !m_chat->error().isEmpty());
        QCOMPARE(m_chat->texts(), u"tea?");
        QVERIFY(m_actions.isEmpty() && m_chat->chat.streamingPreview().isEmpty());
        QCOMPARE(m_server->requests().size(), 1u);

        m_server->enqueue(streamed(opened(0, "a", reminder) + piece(0, tea)));
        m_server->enqueue(streamed(delta("'content':'Done.'")));
        m_chat->chat.retryLast();
        m_chat->finishTurn();
        QCOMPARE(m_chat->texts(), u"tea?|Done.");
        QCOMPARE(m_actions, QStringList(QStringLiteral("Tea")));
    }

    void theDemoModelServesBothProtocols_data()
    {
        QTest::addColumn<bool>("refusesTools");
        row("by function calls", false);
        row("by text", true);
    }
    void theDemoModelServesBothProtocols()
    {
        QFETCH(bool, refusesTools);
        DemoServer demo({ .refusesTools = refusesTools });
        connectTo(QUrl(QStringLiteral("http://127.0.0.1:%1/v1").arg(*demo.listen(0))));
        for (int turn = 1; turn <= 2; ++turn) {
            m_actions.clear();
            ask(QStringLiteral("remind me to drink tea"));
            QCOMPARE(m_actions, QStringList(QStringLiteral("Drink tea")));
        }
        ask(QStringLiteral("remember that I like tea"));
        ask(QStringLiteral("what did I say about tea?"));
        const auto answer = m_chat->chat.messages().back().text;
        QVERIFY2(answer.contains(u"I like tea"), qPrintable(answer));
        ask(QStringLiteral("pretend you queued a reminder"));
        QVERIFY(m_chat->chat.messages().back().text.startsWith(u"Caught"));
    }

private:
    void connectTo(const QUrl& url)
    {
        LLMConfiguration configuration;
        configuration.baseURL = url;
        configuration.modelID = configuration.apiKey = QStringLiteral("x");
        configuration.completionsPath = QStringLiteral("chat/completions");
        m_provider = std::make_unique<OpenAICompatibleProvider>(configuration, m_http);
        m_chat = std::make_unique<ChatFixture>();
        m_chat->main = m_provider.get();
        m_actions.clear();
        m_chat->chat.onActions = [this](std::vector<BuddyAction> actions) {
            return take(std::move(actions));
        };
    }

    void ask(const QString& text = QStringLiteral("tea?")) { m_chat->ask(text); }

    Task<> take(std::vector<BuddyAction> actions)
    {
        for (const auto& action : actions)
            m_actions.append(std::get<RuleProposal>(action).name);
        co_return;
    }

    NetworkHTTPClient m_http;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<OpenAICompatibleProvider> m_provider;
    std::unique_ptr<ChatFixture> m_chat;
    QStringList m_actions;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::VendorStreamsTest)
#include "VendorStreamsTest.moc"
