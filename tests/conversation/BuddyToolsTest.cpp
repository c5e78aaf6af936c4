#include "conversation/BuddyTools.h"

#include "conversation/ActionParser.h"
#include "prompts/ActionInstructions.h"
#include "prompts/ToolInstructions.h"
#include "settings/SettingsWriteLogic.h"
#include <QRegularExpression>
#include <QTest>

namespace pobblewig {

namespace {

using BuddyTools::AccountabilityTools;
using BuddyTools::ScreenCapture;

std::vector<LLMToolDefinition> everyRetrievalTool()
{
    auto tools = BuddyTools::retrievalTools(ScreenCapture::offered, AccountabilityTools::offered);
    std::ranges::copy(BuddyTools::deferredRetrievalTools(), std::back_inserter(tools));
    return tools;
}

QStringList names(const std::vector<LLMToolDefinition>& tools)
{
    QStringList names;
    for (const auto& tool : tools)
        names.append(tool.name);
    return names;
}

QStringList strings(const JSONValue& array)
{
    QStringList strings;
    for (const auto& value : *array.array())
        strings.append(*value.string());
    return strings;
}

const JSONValue::Object& properties(const LLMToolDefinition& tool)
{
    return *tool.parameters.at(QStringLiteral("properties")).object();
}

QStringList required(const LLMToolDefinition& tool)
{
    const auto found = tool.parameters.find(QStringLiteral("required"));
    return found == tool.parameters.end() ? QStringList() : strings(found->second);
}

/// "a" and "b?", sorted.
QStringList arguments(const LLMToolDefinition& tool)
{
    QStringList arguments;
    for (const auto& [name, schema] : properties(tool))
        arguments.append(required(tool).contains(name) ? name : name + u'?');
    return arguments;
}

QString between(QStringView text, QStringView begin, QStringView end)
{
    const auto from = text.indexOf(begin) + begin.size();
    return text.mid(from, text.indexOf(end, from) - from).toString();
}

} // namespace

class BuddyToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everySchemaDescribesItsArgumentsAndAllowsNoOthers()
    {
        auto tools = everyRetrievalTool();
        std::ranges::copy(BuddyTools::actionTools(), std::back_inserter(tools));
        for (const auto& tool : tools) {
            QCOMPARE(
                tool.parameters.at(QStringLiteral("type")), JSONValue(QStringLiteral("object")));
            QVERIFY2(properties(tool).empty()
                    || tool.parameters.at(QStringLiteral("additionalProperties"))
                        == JSONValue(false),
                qPrintable(tool.name));
            for (const auto& name : required(tool))
                QVERIFY2(properties(tool).contains(name), qPrintable(tool.name + u' ' + name));
        }
    }

    void onlyWhatThereIsIsOffered()
    {
        const auto fewest = names(
            BuddyTools::retrievalTools(ScreenCapture::notOffered, AccountabilityTools::notOffered));
        QCOMPARE(fewest.size(), 6);
        QCOMPARE(fewest.back(), QStringLiteral("describe_tool"));
        const auto most =
            names(BuddyTools::retrievalTools(ScreenCapture::offered, AccountabilityTools::offered));
        QCOMPARE(most.mid(6).join(u' '),
            QStringLiteral("memory_get_active_context interventions_recent screen_capture"));
    }

    void whereToAllowScreenshotsDependsOnThePlatform()
    {
        const auto advice = [](const PlatformWording& wording) {
            const auto tools = BuddyTools::retrievalTools(
                ScreenCapture::offered, AccountabilityTools::notOffered, wording);
            return tools.back().description.section(QStringLiteral("own initiative. "), 1);
        };
        QCOMPARE(advice(PlatformWording::macOS),
            QStringLiteral("On a permission error, tell the user to enable System Settings → "
                           "Privacy & Security → Screen Recording → Pobblewig and ask again."));
        QVERIFY(!advice(PlatformWording::linuxDesktop).contains(u"System Settings"));
    }

    void toolsAreFoundByTheirExactName()
    {
        const auto name = QStringLiteral("apps_read_file");
        QVERIFY(BuddyTools::deferredTool(name) && BuddyTools::deferredTool(name)->name == name);
        QVERIFY(!BuddyTools::deferredTool(QStringLiteral("Apps_read_file")));
        QVERIFY(!BuddyTools::deferredTool(QStringLiteral("memory_read_section")));
        QVERIFY(BuddyTools::isActionTool(QStringLiteral("forget_memory")));
        QVERIFY(!BuddyTools::isActionTool(QStringLiteral("propose_rule")));
    }

    void instructionsNameExactlyTheDeferredTools()
    {
        const auto named = between(Prompts::nativeToolInstructions, u"next step: ", u". Load one");
        QCOMPARE(named, names(BuddyTools::deferredRetrievalTools()).join(QStringLiteral(", ")));
    }

    void theTextProtocolHasTheSameToolsAndArguments()
    {
        const auto text = Prompts::toolInstructions(Prompts::AccountabilityTools::included);
        qsizetype expected = 0;
        for (const auto& tool : everyRetrievalTool()) {
            if (tool.name == u"describe_tool")
                continue;
            auto told = between(text, QStringLiteral("\n- %1 {").arg(tool.name), u"} — ")
                            .split(QStringLiteral(", "), Qt::SkipEmptyParts);
            told.sort();
            QCOMPARE(told, arguments(tool));
            ++expected;
        }
        QCOMPARE(text.count(u"\n- "), expected);
    }

    void theTextProtocolShowsEachActionAsItIsRead()
    {
        static const QRegularExpression sample(
            QStringLiteral("^\\{\"type\".*\\}$"), QRegularExpression::MultilineOption);
        auto samples = sample.globalMatch(Prompts::actionInstructions());
        for (const auto& tool : BuddyTools::actionTools()) {
            QVERIFY2(samples.hasNext(), qPrintable(tool.name));
            const auto json = samples.next().captured();
            const auto reply = QStringLiteral("```buddy-actions\n[%1]\n```").arg(json);
            QVERIFY2(!ActionParser::parse(reply, Calendar()).actions.empty(), qPrintable(json));
            auto action = QJsonDocument::fromJson(json.toUtf8()).object();
            QCOMPARE(action.take(QStringLiteral("type")).toString(), tool.name);
            for (const auto& name : action.keys())
                QVERIFY2(properties(tool).contains(name), qPrintable(json));
        }
        QVERIFY(!samples.hasNext());
    }

    void theExamplesAreRepliesThatAct()
    {
        const auto acting = ActionParser::parse(
            between(Prompts::actionInstructions(), u"whole reply:\n", u"\n\nNever"), Calendar());
        QVERIFY(acting.displayText.startsWith(u"Sure — ") && acting.displayText.endsWith(u"list."));
        QCOMPARE(acting.actions.size(), 1u);
        const auto text = Prompts::toolInstructions(Prompts::AccountabilityTools::leftOut);
        const auto asking = between(text, u"it):\n", u"\nAvailable tools");
        QCOMPARE(ActionParser::parseToolCalls(asking).calls.size(), 1u);
    }

    void everySettingThatIsOfferedMayBeChanged()
    {
        const auto& tool = BuddyTools::actionTools()[3];
        QCOMPARE(tool.name, QStringLiteral("update_settings"));
        const auto& schema = *properties(tool).at(QStringLiteral("key")).object();
        const auto keys = strings(schema.at(QStringLiteral("enum")));
        for (const auto& key : keys)
            QVERIFY2(SettingsWriteLogic::allowedKeys().contains(key), qPrintable(key));
        QCOMPARE(between(Prompts::actionInstructions(), u"Allowlisted settings keys: ", u". "),
            keys.join(QStringLiteral(", ")));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyToolsTest)
#include "BuddyToolsTest.moc"
