#include "ChatFixture.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

Task<Tool::Outcome> price(QString currency, ToolArguments arguments)
{
    co_return arguments.string(u"of"_s).value_or(u"nothing"_s) + u" costs two "_s + currency;
}

Task<Tool::Outcome> changed(ChatFixture& on, std::function<void(ChatFixture&)> change)
{
    change(on);
    co_return u"done"_s;
}

Tool priceTool(Tool::Group group)
{
    return { .group = group,
        .name = u"shop_price"_s,
        .instruction = u"shop_price {of} — what something costs."_s,
        .run = Tool::runner(price, u"crowns"_s) };
}

LLMToolCall call(const QString& name, const QString& argument, const QString& value)
{
    return LLMToolCall(name + value, name, u"{\"%1\":\"%2\"}"_s.arg(argument, value));
}

ScriptedProvider::Reply calling(std::vector<LLMToolCall> calls)
{
    ScriptedProvider::Reply reply;
    reply.events.emplace_back(LLMToolCalls { std::move(calls) });
    return reply;
}

bool offers(const LLMRequest& request, const QString& name)
{
    return std::ranges::find(request.tools, name, &LLMToolDefinition::name) != request.tools.end();
}

} // namespace

class ToolRunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<ChatFixture>(); }

    void aToolIsOneRecord_data()
    {
        QTest::addColumn<Tool::Group>("group");
        row("from the start", Tool::Group::alwaysLoaded);
        row("once it is loaded", Tool::Group::deferred);
    }
    void aToolIsOneRecord()
    {
        QFETCH(Tool::Group, group);
        const auto isDeferred = group == Tool::Group::deferred;
        use({ priceTool(group) });
        if (isDeferred)
            m->model.enqueue(calling({ call(u"describe_tool"_s, u"name"_s, u"shop_price"_s) }));
        m->model.enqueue(calling({ call(u"shop_price"_s, u"of"_s, u"Tea"_s) }));
        m->model.enqueue(u"Two crowns."_s);
        m->ask(u"what is tea?"_s);
        const auto& requests = m->model.requests();
        QCOMPARE(offers(requests.front(), u"shop_price"_s), !isDeferred);
        QCOMPARE(prompt(0).contains(u"next step: shop_price. Load one"), isDeferred);
        QVERIFY(offers(requests[requests.size() - 2], u"shop_price"_s));
        QCOMPARE(requests.back().messages.back().content, u"Tea costs two crowns"_s);

        m->model.enqueue(LLMError::http(400, u"tools?"_s));
        m->model.enqueue(u"Hello."_s);
        m->ask(u"without functions?"_s);
        const auto asked = requests.size();
        m->model.enqueue(
            u"```buddy-tools\n{\"tools\":[{\"name\":\"shop_price\",\"args\":{}}]}\n```"_s);
        m->model.enqueue(u"Two."_s);
        m->ask(u"what is nothing?"_s);
        QVERIFY(prompt(asked).contains(u"\n- shop_price {of} — what something costs.\nRules: "));
        QVERIFY(requests.back().messages.back().content.contains(
            u"### shop_price\nnothing costs two crowns\n"));
    }

    void whatIsNotDeferredCannotBeLoaded()
    {
        m->model.enqueue(calling({ call(u"describe_tool"_s, u"name"_s, u"memory_find_notes"_s),
            call(u"describe_tool"_s, u"name"_s, u"Apps_read_file"_s) }));
        m->model.enqueue(u"I see."_s);
        m->ask(u"load it"_s);
        const auto& messages = m->model.requests().back().messages;
        for (auto message = messages.end() - 2; message != messages.end(); ++message)
            QVERIFY(message->content.startsWith(u"error: no loadable tool named "));
    }

    void theFifthLookupOfAReplyIsRefused()
    {
        use({ priceTool(Tool::Group::alwaysLoaded) });
        std::vector<LLMToolCall> calls;
        for (const auto letter : u"abcde"_s)
            calls.push_back(call(u"shop_price"_s, u"of"_s, QString(letter)));
        calls.insert(calls.begin() + 2, call(u"set_temporary_mode"_s, u"mode"_s, u"focus"_s));
        m->model.enqueue(calling(calls));
        m->model.enqueue(u"All cheap."_s);
        m->ask(u"prices?"_s);
        const auto& messages = m->model.requests().back().messages;
        QCOMPARE((messages.end() - 2)->content, u"d costs two crowns"_s);
        QCOMPARE(messages.back().content, u"refused: max 4 tool calls per request"_s);
    }

    void aSwitchAmidACallStopsTheNextOne_data()
    {
        QTest::addColumn<std::function<void(ChatFixture&)>>("change");
        using Change = std::function<void(ChatFixture&)>;
        row("stop", Change([](auto& on) { on.chat.cancelStreaming(); }));
        row("memory off", Change([](auto& on) { on.setMemoryEnabled(false); }));
    }
    void aSwitchAmidACallStopsTheNextOne()
    {
        QFETCH(std::function<void(ChatFixture&)>, change);
        auto tools = m->everyTool();
        tools.push_back({ .group = Tool::Group::alwaysLoaded,
            .name = u"switch"_s,
            .run = [&](auto) { return changed(*m, change); } });
        use(tools);
        m->memory.sessions.ensureActiveSession(m->time, Calendar());
        const auto note = call(u"memory_add_observation"_s, u"summary"_s, u"Is tired"_s);
        m->model.enqueue(calling({ call(u"switch"_s, {}, {}), note }));
        m->ask(u"I am tired"_s, u"Rest."_s);
        QCOMPARE(m->memory.observations.count(), 0);
        for (const auto& message : m->chat.messages())
            QCOMPARE(message.sessionID.has_value(), message.role == ChatMessage::Role::user);
    }

    void aTurnThatIsTriedAgainRecordsNothingTwice()
    {
        m->memory.sessions.ensureActiveSession(m->time, Calendar());
        const auto note = call(u"memory_add_observation"_s, u"summary"_s, u"Is tired"_s);
        m->model.enqueue(calling({ note }));
        m->model.enqueue(LLMError::http(500, {}));
        m->model.enqueue(calling({ note }));
        m->ask(u"I am tired"_s, u"Rest."_s);
        QCOMPARE(m->model.requests().size(), 4u);
        QCOMPARE(m->memory.observations.count(), 1);
    }

    void aReplyChangesAtMostFiftyThings()
    {
        size_t changes = 0;
        m->chat.onActions = [&changes](const auto& actions) {
            changes = actions.size();
            return []() -> Task<> { co_return; }();
        };
        QStringList actions;
        for (int number = 0; number < 51; ++number)
            actions +=
                uR"({"type":"propose_reminder","proposalId":"%1","title":"x"})"_s.arg(number);
        m->model.enqueue(u"Done.\n```buddy-actions\n[%1]\n```"_s.arg(actions.join(u',')));
        m->ask(u"flood"_s);
        QCOMPARE(changes, 50u);
    }

private:
    void use(const std::vector<Tool>& tools)
    {
        m->executor.setTools(tools);
        m->chat.setTools(tools);
    }

    QString prompt(size_t request) const
    {
        return m->model.requests()[request].messages.front().content;
    }

    std::unique_ptr<ChatFixture> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ToolRunnerTest)
#include "ToolRunnerTest.moc"
