#include "conversation/ActionParser.h"

#include "foundation/Overloaded.h"
#include "support/TableRow.h"

#include <QJsonDocument>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

const Calendar berlin { QTimeZone("Europe/Berlin"), QLocale::c() };

template <typename Payload>
QString compact(const std::optional<Payload>& payload)
{
    if (!payload)
        return {};
    const auto document = QJsonDocument::fromJson(json::text(*payload));
    return u' ' + QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

QString ruleText(const RuleProposal& rule)
{
    if (rule.kind != RuleProposal::Kind::rule)
        return {};
    auto text = u" %1/%2 "_s.arg(rule.thresholdMinutes).arg(rule.cooldownMinutes);
    text += EnumNames::text(rule.responseStyle);
    for (const auto& name : rule.applicationMatch)
        text += u' ' + name;
    for (const auto mode : rule.excludedModes)
        text += u" not "_s + EnumNames::text(mode);
    return text;
}

QString told(const BuddyAction& action)
{
    return std::visit(
        Overloaded {
            [](const RuleProposal& p) {
                return EnumNames::text(p.kind) + u' ' + p.proposalId + u": "_s + p.name
                    + ruleText(p) + compact(p.event) + compact(p.reminder)
                    + compact(p.settingsChange) + compact(p.forget);
            },
            [](const TemporaryMode& temporary) {
                return u"%1 for %2"_s.arg(EnumNames::text(temporary.mode)).arg(temporary.minutes);
            },
        },
        action);
}

QString told(const std::vector<BuddyAction>& actions)
{
    QStringList texts;
    for (const auto& action : actions)
        texts += told(action);
    return texts.join(u'|');
}

/// JSON stands in the tables with single quotation marks.
QString quoted(QString text)
{
    return text.replace(u'\'', u'"');
}

QString unquoted(QString text)
{
    return text.replace(u'"', u'\'');
}

/// The arguments are the members of an object.
std::vector<BuddyAction> called(const QString& name, const QString& arguments)
{
    return ActionParser::actions(LLMToolCall({}, name, quoted(u'{' + arguments + u'}')), berlin);
}

QString block(const QString& body, const QString& tag = u"buddy-actions"_s)
{
    return u"Sure.\n```%1\n%2\n```"_s.arg(tag, body);
}

std::vector<BuddyAction> written(const QString& name, const QString& arguments)
{
    const auto payload = u"{'type':'%1',%2}"_s.arg(name, arguments);
    const auto result = ActionParser::parse(quoted(block(u"[%1]"_s.arg(payload))), berlin);
    return result.actions;
}

/// Of what may be long in the first of them; -1 without any.
int sizeOf(const std::vector<BuddyAction>& actions)
{
    if (actions.empty())
        return -1;
    const auto& proposal = std::get<RuleProposal>(actions.front());
    if (proposal.settingsChange)
        return int(proposal.settingsChange->value.array()->size());
    if (proposal.forget && proposal.forget->tags)
        return int(proposal.forget->tags->size());
    if (proposal.forget)
        return int(proposal.forget->query.value_or(QString()).size());
    return proposal.reminder ? int(proposal.reminder->notes.value_or(QString()).size()) : 0;
}

} // namespace

class ActionParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCallAndABlockAskForTheSame_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("actions");
        const auto settings = [](const char* value, const char* shown, const char* stored) {
            row(qPrintable(u"update_settings "_s + QLatin1String(value)),
                u"'proposalId':'s','key':'mode','value':"_s + QLatin1String(value),
                *shown ? u"settingsChange s: mode → %1 {'key':'mode','value':%2}"_s.arg(
                    QString::fromUtf8(shown), QString::fromUtf8(stored))
                       : QString());
        };
        settings("'focus'", "focus", "'focus'");
        settings("'30'", "30", "30");
        settings("'[1,'", "[1,", "'[1,'");
        settings("'1],[2'", "1],[2", "'1],[2'");
        settings("'[\\'tutor\\']'", "[tutor]", "['tutor']");
        settings("'\\'true\\''", "true", "'true'");
        settings("'null'", "null", "null");
        settings("true", "true", "true");
        settings("'a\\nb\\u202ec'", "a bc", "'a\\nb\u202ec'");
        settings("''", "", "");
        settings("null", "", "");
        row("update_settings ", "'proposalId':'','key':'mode','value':'focus'", "");
        row("set_persona", "'proposalId':'p','persona':'classic'",
            "settingsChange p: persona classic {'key':'companionPersona','value':'classic'}");
        row("set_mascot", "'proposalId':'m','mascot':'mouse','colorScheme':''",
            "settingsChange m: form → mouse {'key':'mascot','value':'mouse'}");
        row("set_mascot ", "'proposalId':'m','mascot':'mouse','colorScheme':'brown'",
            "settingsChange m: form → mouse {'key':'mascot','value':'mouse'}|"
            "settingsChange m-scheme: color scheme → brown "
            "{'key':'mascotColorScheme','value':'brown'}");
        row("propose_reminder", "'proposalId':'r','title':'Call\\r\\nDavis\\t\\u0000now','due':5",
            "reminder r: Call Davis now {'allDay':false,'title':'Call Davis now'}");
        row("propose_reminder ", "'proposalId':'r','title':'A','due':'2026-03-01','notes':[]",
            "reminder r: A {'allDay':true,'due':'2026-02-28T23:00:00Z','title':'A'}");
        row("propose_reminder  ", "'proposalId':'r','title':' \\n '", "");
        row("propose_calendar_event",
            "'proposalId':'e','title':'A','start':'2026-07-28T15:00:00.5','end':'soon',"
            "'notes':'a\\nb','calendarName':'Work'",
            "calendarEvent e: A {'allDay':false,'calendarName':'Work',"
            "'notes':'a\\nb',"
            "'start':'2026-07-28T13:00:00Z','title':'A'}");
        row("propose_calendar_event ",
            "'proposalId':'e','title':'A','start':'2026-03-29T02:30:00','end':'2026-03-29T04:00:"
            "00Z'",
            "calendarEvent e: A {'allDay':false,'end':'2026-03-29T04:00:00Z',"
            "'start':'2026-03-29T01:30:00Z','title':'A'}");
        row("propose_calendar_event   ",
            "'proposalId':'e','title':'A','start':'2026-07-28 15:00','end':'2026-07-28T14:00'",
            "calendarEvent e: A {'allDay':false,'start':'2026-07-28T13:00:00Z','title':'A'}");
        row("propose_calendar_event    ",
            "'proposalId':'e','title':'A','start':'2026-07-28','end':'2026-07-29'",
            "calendarEvent e: A {'allDay':true,'end':'2026-07-28T22:00:00Z',"
            "'start':'2026-07-27T22:00:00Z','title':'A'}");
        row("propose_calendar_event  ", "'proposalId':'e','title':'A','start':'tomorrow'", "");
        row("forget_memory", "'proposalId':'f','target':'note','id':'1a2b3c4d'",
            "forgetMemory f: forget note 1a2b3c4d "
            "{'id':'1a2b3c4d','summary':'forget note 1a2b3c4d','target':'note'}");
        row("forget_memory ",
            "'proposalId':'f','target':'observations','query':'q','to':'2026','tags':['a',1,'','b'"
            "]",
            "forgetMemory f: forget observations 'q' to 2026 tagged a, b {'query':'q',"
            "'summary':'forget observations \\'q\\' to 2026 tagged a, b',"
            "'tags':['a','b'],'target':'observations','to':'2026'}");
        row("forget_memory  ", "'proposalId':'f','target':'everything'", "");
        row("propose_rule", "'proposalId':'u','rule':{'name':'Tube','thresholdMinutes':30}",
            "rule u: Tube 30/120 gentle");
        row("propose_rule ",
            "'proposalId':'u','rule':{'name':'Tube','thresholdMinutes':30,'cooldownMinutes':5,"
            "'applicationMatch':['x',null],'excludedModes':['focus','nap'],"
            "'responseStyle':'direct'}",
            "rule u: Tube 30/5 direct x not focus");
        row("propose_rule  ", "'proposalId':'u','rule':{'name':'Tube','thresholdMinutes':'30'}",
            "");
        row("set_temporary_mode", "'mode':'focus','minutes':'9'", "focus for 60");
        row("set_temporary_mode ", "'mode':'focus','minutes':10080", "focus for 480");
        row("set_temporary_mode   ", "'mode':'focus','minutes':1e300", "focus for 480");
        row("set_temporary_mode    ", "'mode':'focus','minutes':0", "focus for 1");
        row("set_temporary_mode  ", "'mode':'Focus'", "");
        row("delete_everything", "'proposalId':'x'", "");
    }
    void aCallAndABlockAskForTheSame()
    {
        QFETCH(QString, arguments);
        const auto name = QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
        const auto ofCall = called(name, arguments);
        QTEST(unquoted(told(ofCall)), "actions");
        QVERIFY(ofCall == written(name, arguments));
    }

    void aReplyIsDividedAtItsLastFence_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("display");
        QTest::addColumn<int>("actions");
        const auto one = u"{'actions':[{'type':'set_temporary_mode','mode':'focus'}]}"_s;
        const auto sample = block(u"{'name':'x'}"_s, u"json"_s);
        row("none", "  Hello \n", "Hello", 0);
        row("block", block(one), "Sure.", 1);
        row("blanks and CRLF", u"Sure.\r\n``` buddy-actions \r\n%1\r\n```\r\n "_s.arg(one), "Sure.",
            1);
        row("four backticks", u"Sure. ````buddy-actions\n%1\n````"_s.arg(one), "Sure.", 1);
        row("behind a closing fence", u"```\na\n``````json\n%1\n```"_s.arg(one), "```\na\n```", 1);
        row("json", block(one, u"json"_s), "Sure.", 1);
        row("no tag", block(one, {}), "Sure.", 1);
        row("another tag", block(one, u"js"_s), block(one, u"js"_s), 0);
        row("a sample", sample, sample, 0);
        row("an empty list", block(u"{'actions':[]}"_s, u"json"_s), "Sure.", 0);
        row("a list of others", block(u"[1]"_s, {}), block(u"[1]"_s, {}), 0);
        row("an entry without type", block(u"[{'type':'set_temporary_mode','mode':'focus'},{}]"_s),
            "Sure.", 0);
        row("broken", block(u"{"_s), "Sure.", 0);
        row("tools", block(u"{'tools':[]}"_s, u"buddy-tools"_s), "Sure.", 0);
        row("text behind", block(one) + u"\nBye."_s, "Sure.\n\nBye.", 0);
        row("two", block(one) + u'\n' + block(one), "Sure.\n\nSure.", 1);
        row("one and the next", u"```buddy-tools\n{}\n```json\n%1\n```\n."_s.arg(one), ".", 0);
        row("in a sample", block(u"{'a':\n```buddy-actions\n"_s, u"json"_s),
            "Sure.\n```json\n{'a':", 0);
        row("not ended", "Sure.\n```buddy-actions\n{\"actions\":[", "Sure.", 0);
        row("json not ended", u"Sure.\n```json\n%1"_s.arg(one), "Sure.", 0);
        row("on one line", u"Sure. ```buddy-actions %1```"_s.arg(one),
            u"Sure. ```buddy-actions %1```"_s.arg(one), 0);
    }
    void aReplyIsDividedAtItsLastFence()
    {
        QFETCH(QString, text);
        const auto result = ActionParser::parse(quoted(text), berlin);
        QTEST(unquoted(result.displayText), "display");
        QTEST(int(result.actions.size()), "actions");
    }

    void whatIsTooLongIsCutOrCountsAsAbsent_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("kept");
        const auto limit = [](const char* name, const char* arguments, const QString& filler,
                               int times, int kept) {
            row(name, QString::fromLatin1(arguments).arg(filler.repeated(times)), kept);
        };
        const auto* title = "'proposalId':'r','title':'%1'";
        limit("propose_reminder title", title, u"é"_s, 1000, 0);
        limit("propose_reminder title of too many", title, u"é"_s, 1001, -1);
        limit("propose_reminder title of a megabyte", title, u"x"_s, 1'000'000, -1);
        limit("propose_reminder notes", "'proposalId':'r','title':'x','notes':'%1'", u"x"_s,
            1'000'000, 4000);
        limit("forget_memory id", "'proposalId':'f','target':'note','id':'%1'", u"x"_s, 1001, 0);
        limit("forget_memory query", "'proposalId':'f','target':'note','query':'%1'", u"x"_s, 1001,
            1000);
        limit("forget_memory tags", "'proposalId':'f','target':'note','tags':['%1']", u"x','"_s,
            50'000, 100);
        const auto* list = "'proposalId':'s','key':'roles','value':[%1 0]";
        limit("update_settings value", list, u"0,"_s, 9998, 9999);
        limit("update_settings value of too many", list, u"0,"_s, 9999, -1);
        limit("update_settings value of a megabyte", "'proposalId':'s','key':'roles','value':'%1'",
            u"x"_s, 1'000'000, -1);
        limit("update_settings deep value", "'proposalId':'s','key':'roles','value':%1",
            QString(1000, u'[') + QString(1000, u']'), 1, -1);
    }
    void whatIsTooLongIsCutOrCountsAsAbsent()
    {
        QFETCH(QString, arguments);
        const auto type = QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
        const auto actions = written(type, arguments);
        QVERIFY(actions == called(type, arguments));
        QTEST(sizeOf(actions), "kept");
    }

    void aHostileReplyIsReadToItsEnd_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("actions");
        const auto mode = u"{'type':'set_temporary_mode','mode':'focus'},"_s;
        const auto deep =
            u"{'type':'update_settings','proposalId':'s','key':'roles','value':'%1'},"_s.arg(
                QString(900, u'[') + QString(900, u']'));
        row("deep", block(QString(10'000, u'[')), 0);
        row("many payloads", block(u'[' + mode.repeated(10'000).chopped(1) + u']'), 50);
        row("deep values", block(u'[' + deep.repeated(50).chopped(1) + u']'), 0);
        const auto useless = u"{'type':'','title':'x','tags':[]},"_s;
        row("many others", block(u'[' + useless.repeated(10'000).chopped(1) + u']'), 0);
        row("backticks", QString(200'000, u'`'), 0);
        row("tags", u"```json\n"_s.repeated(50'000), 0);
        row("tags on a line", u"```json "_s.repeated(50'000), 0);
        row("tags behind text", u"a```json\n[{"_s.repeated(50'000), 0);
        row("tags in strings", u"a```json\n{'"_s.repeated(50'000), 0);
        row("blanks", QString(u"```"_s + QString(200'000, u' ')).repeated(3), 0);
        row("blocks", block(u"[]"_s).repeated(20'000), 0);
    }
    void aHostileReplyIsReadToItsEnd()
    {
        QFETCH(QString, text);
        text = quoted(text);
        QTEST(int(ActionParser::parse(text, berlin).actions.size()), "actions");
    }

    void toolsAreAskedForInABlockOfTheirOwn_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("calls");
        row("two", "{'tools':[{'name':'a','args':{'x':1}},{'name':'b','args':7}]}", "a1 b0");
        row("no name", "{'tools':[{'name':'a'},{'args':{}}]}", "");
        row("bare", "[{'name':'a'}]", "");
        row("broken", "{", "");
    }
    void toolsAreAskedForInABlockOfTheirOwn()
    {
        QFETCH(QString, body);
        const auto request = ActionParser::parseToolCalls(quoted(block(body, u"buddy-tools"_s)));
        QCOMPARE(request.displayText, u"Sure."_s);
        QStringList calls;
        for (const auto& call : request.calls)
            calls += call.name + QString::number(call.args.size());
        QTEST(calls.join(u' '), "calls");
        QVERIFY(!ActionParser::parseToolCalls(block(body)).displayText);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActionParserTest)
#include "ActionParserTest.moc"
