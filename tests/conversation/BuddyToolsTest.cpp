#include "conversation/BuddyTools.h"

#include "conversation/ActionParser.h"
#include "conversation/TurnTools.h"
#include "prompts/ActionInstructions.h"
#include "prompts/ToolInstructions.h"
#include "settings/SettingsWriteLogic.h"
#include "support/TableRow.h"
#include "support/ToolWorld.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

using Offer = BuddyTools::Offer;
using enum BuddyTools::Offered;

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
    return *tool.parameters.at(u"properties"_s).object();
}

QStringList required(const LLMToolDefinition& tool)
{
    const auto found = tool.parameters.find(u"required"_s);
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

QString between(const QString& text, QStringView begin, QStringView end)
{
    const auto from = text.indexOf(begin) + begin.size();
    return text.mid(from, text.indexOf(end, from) - from);
}

} // namespace

class BuddyToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everySchemaDescribesItsArgumentsAndAllowsNoOthers()
    {
        for (const auto& tool : everything()) {
            QCOMPARE(tool.parameters.at(u"type"_s), JSONValue(u"object"_s));
            QVERIFY2(properties(tool).empty()
                    || tool.parameters.at(u"additionalProperties"_s) == JSONValue(false),
                qPrintable(tool.name));
            for (const auto& name : required(tool))
                QVERIFY2(properties(tool).contains(name), qPrintable(tool.name + u' ' + name));
        }
    }

    void onlyWhatThereIsIsOffered_data()
    {
        QTest::addColumn<Offer>("offer");
        QTest::addColumn<QString>("offered");
        const auto memory = u"memory_read_section memory_search_reference "
                            "memory_search_observations memory_find_notes "
                            "memory_add_observation "_s;
        row("nothing", Offer {}, "");
        row("no screen", Offer { .retrieval = yes, .situation = no },
            QString(memory + u"describe_tool "_s));
        row("everything",
            Offer { .retrieval = yes,
                .screenCapture = yes,
                .expanded = { u"apps_read_file"_s, u"rules_list"_s } },
            QString(memory
                + u"describe_tool memory_get_active_context "
                  "screen_capture apps_read_file "_s));
        row("no memory",
            Offer { .retrieval = yes, .memory = no, .expanded = { u"memory_expand_period"_s } },
            "describe_tool ");
    }
    void onlyWhatThereIsIsOffered()
    {
        QFETCH(Offer, offer);
        QFETCH(QString, offered);
        QCOMPARE(names(m_tools.offered(offer)).join(u' '),
            QString(offered
                + u"set_temporary_mode propose_calendar_event propose_reminder "
                  "update_settings set_persona set_mascot forget_memory"_s));
    }

    void whereToAllowScreenshotsDependsOnThePlatform()
    {
        const auto advice = [](const PlatformWording& wording) {
            const BuddyTools tools({}, wording);
            const auto* capture = tools.find(TurnTools::screenCapture.toString());
            return capture->description.section(u"own initiative. "_s, 1);
        };
        QCOMPARE(advice(PlatformWording::macOS),
            u"On a permission error, tell the user to enable System Settings → "
            "Privacy & Security → Screen Recording → Pobblewig and ask again."_s);
        QVERIFY(!advice(PlatformWording::linuxDesktop).contains(u"System Settings"));
    }

    void theTextProtocolHasTheSameToolsAndArguments()
    {
        qsizetype expected = 0;
        for (const auto& tool : everything()) {
            const auto& record = *m_tools.find(tool.name);
            if (record.group == Tool::Group::action || tool.name == TurnTools::describeTool)
                continue;
            QVERIFY2(record.run || tool.name == TurnTools::screenCapture, qPrintable(tool.name));
            auto told = between(record.instruction, QString(tool.name + u" {"_s), u"} — ")
                            .split(u", "_s, Qt::SkipEmptyParts);
            told.sort();
            QCOMPARE(told, arguments(tool));
            ++expected;
        }
        QCOMPARE(m_tools.lines().lookups.size(), expected);
    }

    void theTextProtocolShowsEachActionAsItIsRead()
    {
        auto lines = m_tools.lines().actions;
        for (const auto& tool : m_tools.offered({})) {
            const auto json = lines.takeFirst().section(u'\n', 1);
            const auto reply = u"```buddy-actions\n[%1]\n```"_s.arg(json);
            QVERIFY2(!ActionParser::parse(reply, Calendar()).actions.empty(), qPrintable(json));
            auto action = QJsonDocument::fromJson(json.toUtf8()).object();
            QCOMPARE(action.take(u"type"_s).toString(), tool.name);
            for (const auto& name : action.keys())
                QVERIFY2(properties(tool).contains(name), qPrintable(json));
        }
        QVERIFY(lines.isEmpty());
    }

    void theExamplesAreRepliesThatAct()
    {
        for (const auto& lines : { ToolLines(), m_tools.lines() }) {
            const auto text = Prompts::actionInstructions(lines);
            const auto acting =
                ActionParser::parse(between(text, u"whole reply:\n", u"\n\nNever"), Calendar());
            QVERIFY(acting.displayText.startsWith(u"Sure — "));
            QCOMPARE(acting.actions.size(), 1u);
        }
        const auto asking = between(Prompts::toolInstructions({}), u"it):\n", u"\nAvailable tools");
        QCOMPARE(ActionParser::parseToolCalls(asking).calls.size(), 1u);
    }

    void everySettingThatIsOfferedMayBeChanged()
    {
        const auto tool = m_tools.offered({})[3];
        QCOMPARE(tool.name, u"update_settings"_s);
        const auto& schema = *properties(tool).at(u"key"_s).object();
        const auto keys = strings(schema.at(u"enum"_s));
        for (const auto& key : keys)
            QVERIFY2(SettingsWriteLogic::allowedKeys().contains(key), qPrintable(key));
        QCOMPARE(between(Prompts::actionInstructions({}), u"Allowlisted settings keys: ", u". "),
            keys.join(u", "_s));
    }

private:
    std::vector<LLMToolDefinition> everything() const
    {
        const auto& deferred = m_tools.lines().deferred;
        return m_tools.offered({ .retrieval = yes,
            .screenCapture = yes,
            .expanded = { deferred.begin(), deferred.end() } });
    }

    ToolWorld m_world;
    BuddyTools m_tools { m_world.everyTool(), PlatformWording::linuxDesktop };
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyToolsTest)
#include "BuddyToolsTest.moc"
