#include "PobblewigDemoModel/DemoLookups.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoSections.h"
#include "PobblewigDemoModel/DemoWords.h"
#include "PobblewigDemoModel/ToolAnswers.h"

namespace pobblewig {

namespace {

using Plan = std::function<DemoPlan(const DemoSentence&)>;

/// Calls one tool that takes no arguments.
Plan ask(const QString& sentence, const QString& tool)
{
    return [=](const DemoSentence&) -> DemoPlan { return { sentence, { { tool, {} } } }; };
}

JSONValue::Object queryFor(const DemoSentence& sentence)
{
    return { { QStringLiteral("query"), DemoWords::keywords(sentence.part(u"what")) } };
}

DemoPlan lookAtScreen(const DemoSentence& sentence)
{
    return { QStringLiteral("One look at your screen."),
        { { QStringLiteral("screen_capture"),
            { { QStringLiteral("reason"), sentence.match.captured() } } } } };
}

DemoPlan writeDown(const DemoSentence& sentence)
{
    return { QStringLiteral("I write that down."),
        { { QStringLiteral("memory_add_observation"),
            { { QStringLiteral("summary"), sentence.part(u"what") } } } } };
}

DemoPlan findNotes(const DemoSentence& sentence)
{
    return { QStringLiteral("Let me look in my notes."),
        { { QStringLiteral("memory_find_notes"), queryFor(sentence) } } };
}

DemoPlan findEverywhere(const DemoSentence& sentence)
{
    const auto query = queryFor(sentence);
    return { QStringLiteral("Let me look everywhere."),
        { { QStringLiteral("memory_find_notes"), query },
            { QStringLiteral("memory_search_reference"), query },
            { QStringLiteral("memory_search_observations"), query } } };
}

DemoPlan searchReference(const DemoSentence& sentence)
{
    auto arguments = queryFor(sentence);
    if (const auto section = sentence.part(u"section"); !section.isEmpty())
        arguments[QStringLiteral("paths")] = JSONValue::Array { DemoSections::path(section) };
    return { QStringLiteral("Let me look that up."),
        { { QStringLiteral("memory_search_reference"), arguments } } };
}

DemoPlan searchObservations(const DemoSentence& sentence)
{
    const auto what = sentence.part(u"what");
    JSONValue::Object arguments;
    if (const auto days = DemoDates::readPast(what, sentence.now)) {
        arguments[QStringLiteral("from")] = DemoDates::format(days->first);
        arguments[QStringLiteral("to")] = DemoDates::format(days->second);
    } else {
        arguments = queryFor(sentence);
    }
    return { QStringLiteral("Let me look back."),
        { { QStringLiteral("memory_search_observations"), arguments } } };
}

DemoPlan expandPeriod(const DemoSentence&)
{
    const auto list = QStringLiteral("memory_list_period_summaries");
    const auto expand = QStringLiteral("memory_expand_period");
    const auto expandNewest = [=](const DemoResults& results) -> DemoPlan {
        const auto id = ToolAnswers::lastID(results, list);
        if (!id)
            return { QStringLiteral("There is no summary yet that I could tell more about.") };
        return { QStringLiteral("The newest one, then."),
            { { expand, { { QStringLiteral("id"), *id } } } } };
    };
    return { QStringLiteral("Let me see which summaries there are."), { { list, {} } },
        expandNewest, { expand } };
}

DemoPlan proposePattern(const DemoSentence& sentence)
{
    const auto find = QStringLiteral("memory_find_notes");
    const auto propose = QStringLiteral("memory_propose_pattern");
    const auto words = DemoWords::keywords(sentence.part(u"what"));
    const auto proposeFromNotes = [=](const DemoResults& results) -> DemoPlan {
        JSONValue::Array evidence;
        for (const auto& text : ToolAnswers::noteTexts(results, find))
            evidence.push_back(text);
        if (evidence.empty())
            return { QStringLiteral("I have no note about that, so I see no pattern.") };
        return { QStringLiteral("I do see something."),
            { { propose,
                { { QStringLiteral("text"), QStringLiteral("Keeps coming back to: ") + words },
                    { QStringLiteral("evidenceNoteTexts"), evidence },
                    { QStringLiteral("confidence"), 0.7 } } } } };
    };
    return { QStringLiteral("Let me see what speaks for it."),
        { { find, { { QStringLiteral("query"), words } } } }, proposeFromNotes, { propose } };
}

DemoPlan readSection(const DemoSentence& sentence)
{
    return { QStringLiteral("Let me open that section."),
        { { QStringLiteral("memory_read_section"),
            { { QStringLiteral("path"), DemoSections::path(sentence.part(u"section")) } } } } };
}

DemoPlan listFiles(const DemoSentence& sentence)
{
    const auto place = sentence.part(u"source");
    JSONValue::Object arguments { { QStringLiteral("source"), place.section(u'/', 0, 0) } };
    if (const auto below = place.section(u'/', 1); !below.isEmpty())
        arguments[QStringLiteral("subpath")] = below;
    return { QStringLiteral("Let me see what lies there."),
        { { QStringLiteral("apps_list_files"), arguments } } };
}

DemoPlan readFile(const DemoSentence& sentence)
{
    JSONValue::Object arguments { { QStringLiteral("source"), sentence.part(u"source") },
        { QStringLiteral("path"), sentence.part(u"path") } };
    if (const auto lines = sentence.part(u"lines").toInt(); lines > 0)
        arguments[QStringLiteral("tailLines")] = lines;
    return { QStringLiteral("Let me read it."),
        { { QStringLiteral("apps_read_file"), arguments } } };
}

} // namespace

const DemoRules& DemoLookups::rules()
{
    static const auto sections = DemoSections::names();
    static const DemoRules all {
        { QStringLiteral(
              R"(^what(?:'s| is| do you see)? on (?:my|the) screen|^(?:do you )?see )"
              R"((?:this|that|it|my screen)\b|^look at (?:this|my screen)|^take a screenshot)"),
            lookAtScreen },
        { QStringLiteral(R"(^(?:remember|note|write)(?: down)?(?: that)?[ :]+(?<what>.+))"),
            writeDown },
        { QStringLiteral(R"(^tell me everything\b(?: (?:that )?you know)? about (?<what>.+))"),
            findEverywhere },
        { QStringLiteral(R"(^what (?:do|did) you (?:remember|know|note)(?: about)? (?<what>.+))"),
            findNotes },
        { QStringLiteral(R"(^what (?:happened|did i (?:say|tell you|write|do))\b(?<what>.*))"),
            searchObservations },
        { QStringLiteral(R"(^(?:expand|tell me more about|more about|details of) )"
                         R"((?:the |my )?(?:last|past|newest|latest) (?:week|day|summary))"),
            expandPeriod },
        { QStringLiteral(R"(^(?:list|show)\b.*\bsummaries\b)"),
            ask(QStringLiteral("Let me see which summaries there are."),
                QStringLiteral("memory_list_period_summaries")) },
        { QStringLiteral(R"(^(?:what|list|show)\b.*\bmy (?:\w+ )?(?:goals|aspirations)\b)"),
            ask(QStringLiteral("Your goals, as I know them."),
                QStringLiteral("memory_list_active_goals")) },
        { QStringLiteral(R"(\bpatterns? (?:about|in|with) (?<what>.+))"), proposePattern },
        { QStringLiteral(R"(\btable of contents\b|^what (?:sections|topics)\b)"),
            ask(QStringLiteral("Let me open the table of contents."),
                QStringLiteral("memory_get_table_of_contents")) },
        { QStringLiteral(R"(^(?:open|read|show)(?: me)? (?:the )?section (?<section>[\w.]+))"),
            readSection },
        { QStringLiteral(R"(^(?:list|show)(?: me)? (?:my|the) (?<section>%1)$)").arg(sections),
            readSection },
        { QStringLiteral(R"(^(?:what|which) session\b|^how (?:many turns|long have we)\b)"),
            ask(QStringLiteral("Let me look at today's session."),
                QStringLiteral("memory_get_daily_session")) },
        { QStringLiteral(R"(^what am i (?:doing|up to)|^what(?:'s| is) going on\b)"),
            ask(QStringLiteral("Let me look around."),
                QStringLiteral("memory_get_active_context")) },
        { QStringLiteral(R"(^(?:list|show|what|which)\b.*\bfolders\b)"),
            ask(QStringLiteral("Let me see which folders you share."),
                QStringLiteral("apps_list_sources")) },
        { QStringLiteral(
              R"(\bfiles (?:are |do i have )?in (?:my |the )?(?:folder )?(?<source>[^?]+))"),
            listFiles },
        { QStringLiteral(
              R"(^(?:read|show)(?: me)? (?:the )?(?:last (?<lines>\d{1,5}) lines of )?)"
              R"((?:the )?(?:file )?(?<path>\S+) (?:from|in) (?:my |the )?(?:folder )?(?<source>.+))"),
            readFile },
        { QStringLiteral(
              R"(^search (?:in )?(?:(?:my|the) )?(?:(?<section>%1)|reference(?: memory)?|memory|notes)? ?(?:for )?(?<what>.+))")
                .arg(sections),
            searchReference },
        { QStringLiteral(R"(^(?:when is|when's|who is|who's|who teaches) (?<what>.+))"),
            searchReference },
    };
    return all;
}

} // namespace pobblewig
