#include "memory/recall/RetrievalTools.h"

#include "foundation/IDPrefix.h"
#include "memory/recall/MemoryToolText.h"
#include "tools/MemoryToolExecutor.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

using Outcome = Tool::Outcome;

constexpr int defaultObservations = 20;
constexpr int mostObservations = 100;

template <typename Error>
tl::unexpected<QString> failed(const Error& error)
{
    return tl::unexpected(error.description());
}

/// The retrieved value, rendered as text, or the error.
template <typename Retrieved, typename Render>
Task<Outcome> rendered(Task<Retrieved> retrieval, Render render)
{
    const auto retrieved = co_await retrieval;
    if (!retrieved)
        co_return failed(retrieved.error());
    co_return render(*retrieved);
}

struct TimeWindow {
    std::optional<TimePoint> from;
    std::optional<TimePoint> to;
};

tl::expected<TimeWindow, ArgError> timeWindow(const ToolArguments& arguments)
{
    const auto from = arguments.date(u"from"_s);
    if (!from)
        return tl::unexpected(from.error());
    const auto to = arguments.date(u"to"_s, ToolArguments::BareDate::endOfDay);
    if (!to)
        return tl::unexpected(to.error());
    return TimeWindow { *from, *to };
}

QString wholeText(const MemoryTableOfContents& contents)
{
    using Contents = MemoryTableOfContents;
    return contents.compactText(Contents::IncludeEmpty::yes, Contents::IncludeTimestamps::yes);
}

Task<Outcome> getTableOfContents(MemoryRetrievalService* retrieval, ToolArguments)
{
    return rendered(retrieval->getTableOfContents(), wholeText);
}

Task<Outcome> readSection(MemoryRetrievalService* retrieval, ToolArguments arguments)
{
    const auto path = arguments.requiredString(u"path"_s);
    if (!path)
        co_return failed(path.error());
    co_return co_await rendered(
        retrieval->readReferenceSection(*path), std::mem_fn(&ReferenceSection::compactText));
}

Task<Outcome> searchReference(MemoryRetrievalService* retrieval, ToolArguments arguments)
{
    const auto query = arguments.requiredString(u"query"_s);
    if (!query)
        co_return failed(query.error());
    auto hits = retrieval->searchReference(*query, arguments.strings(u"paths"_s));
    co_return co_await rendered(std::move(hits), MemoryToolText::renderHits);
}

Task<Outcome> searchObservations(MemoryRetrievalService* retrieval, ToolArguments arguments)
{
    const auto window = timeWindow(arguments);
    if (!window)
        co_return failed(window.error());
    const auto limit = arguments.integer(u"limit"_s, 1, mostObservations);
    ObservationStore::Query query {
        .text = arguments.string(u"query"_s).value_or(QString()),
        .from = window->from,
        .to = window->to,
        .tags = arguments.strings(u"tags"_s),
        .limit = limit.value_or(defaultObservations),
    };
    co_return co_await rendered(
        retrieval->searchObservations(std::move(query)), MemoryToolText::renderObservations);
}

QString newestPeriods(const std::vector<PeriodSummary>& summaries)
{
    return MemoryToolText::renderNewestPeriods(summaries, MemoryToolExecutor::maxResultCharacters);
}

Task<Outcome> listPeriodSummaries(MemoryRetrievalService* retrieval, ToolArguments arguments)
{
    const auto window = timeWindow(arguments);
    if (!window)
        co_return failed(window.error());
    const auto isBounded = window->from || window->to;
    co_return co_await rendered(retrieval->listPeriodSummaries(window->from, window->to),
        isBounded ? MemoryToolText::renderPeriods : newestPeriods);
}

Task<Outcome> expandPeriod(MemoryRetrievalService* retrieval, ToolArguments arguments)
{
    const auto id = arguments.requiredString(u"id"_s);
    if (!id)
        co_return failed(id.error());
    const auto summaries = co_await retrieval->listPeriodSummaries(std::nullopt, std::nullopt);
    if (!summaries)
        co_return failed(summaries.error());
    const auto named = IDPrefix::resolve(*id, *summaries);
    if (named.isAmbiguous())
        co_return u"id %1 matches more than one summary — use more characters"_s.arg(*id);
    if (!named.found())
        co_return u"no period summary matches id %1 — call memory_list_period_summaries to see "
                  "current ids"_s.arg(*id);
    co_return co_await rendered(
        retrieval->expandPeriod(named.found()->id), MemoryToolText::renderExpanded);
}

Task<Outcome> getDailySession(MemoryRetrievalService* retrieval, ToolArguments)
{
    return rendered(retrieval->getDailySession(), MemoryToolText::renderSession);
}

Task<Outcome> getActiveContext(MemoryRetrievalService* retrieval, ToolArguments)
{
    return rendered(retrieval->getActiveContext(), std::identity());
}

Task<Outcome> listActiveGoals(MemoryRetrievalService* retrieval, ToolArguments)
{
    return rendered(retrieval->listActiveGoals(), MemoryToolText::renderGoals);
}

std::vector<Tool> tableOfContentsAndReference(MemoryRetrievalService& retrieval)
{
    return {
        {
            .group = Tool::Group::deferred,
            .name = u"memory_get_table_of_contents"_s,
            .description = u"The full reference-memory table of contents: every section path with "
                           "titles and summaries."_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_get_table_of_contents {} — every section path with titles and "
                           "summaries."_s,
            .needsMemory = true,
            .run = Tool::runner(getTableOfContents, &retrieval),
        },
        {
            .group = Tool::Group::alwaysLoaded,
            .name = u"memory_read_section"_s,
            .description = u"Read one reference section with all its items. Use a path from the "
                           "table of contents."_s,
            .schema = uR"json({"type":"object","properties":{
                "path":{"type":"string","description":"Section path, e.g. academics.professors"}
                },"required":["path"],"additionalProperties":false})json"_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_read_section {path} — one reference section with all its "
                           "items; take the path from the table of contents."_s,
            .needsMemory = true,
            .run = Tool::runner(readSection, &retrieval),
        },
        {
            .group = Tool::Group::alwaysLoaded,
            .name = u"memory_search_reference"_s,
            .description = u"Lexical search over structured reference items (professors, courses, "
                           "deadlines, decisions...)."_s,
            .schema = uR"json({"type":"object","properties":{
                "query":{"type":"string"},
                "paths":{"type":"array","items":{"type":"string"},
                    "description":"Optional section paths to restrict the search to"}
                },"required":["query"],"additionalProperties":false})json"_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_search_reference {query, paths?} — lexical search over "
                           "reference items (professors, courses, deadlines, decisions...); paths "
                           "is an array that restricts it to those sections."_s,
            .needsMemory = true,
            .run = Tool::runner(searchReference, &retrieval),
        },
    };
}

std::vector<Tool> observationsAndSummaries(MemoryRetrievalService& retrieval)
{
    return {
        {
            .group = Tool::Group::alwaysLoaded,
            .name = u"memory_search_observations"_s,
            .description = u"Search the chronological observation archive (dated records of "
                           "moods, events, corrections, small developments). Dates are ISO-8601."_s,
            .schema = uR"json({"type":"object","properties":{
                "query":{"type":"string"},
                "from":{"type":"string","description":"ISO-8601 lower bound"},
                "to":{"type":"string","description":"ISO-8601 upper bound"},
                "tags":{"type":"array","items":{"type":"string"}},
                "limit":{"type":"integer"}
                },"additionalProperties":false})json"_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_search_observations {query?, from?, to?, tags?, limit?} — the "
                           "dated archive of moods, events, corrections, and small developments; "
                           "from and to are ISO-8601, tags is an array."_s,
            .needsMemory = true,
            .run = Tool::runner(searchObservations, &retrieval),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"memory_list_period_summaries"_s,
            .description = u"Index of daily and weekly summaries. Dates are ISO-8601."_s,
            .schema = uR"json({"type":"object","properties":{
                "from":{"type":"string"},
                "to":{"type":"string"}
                },"additionalProperties":false})json"_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_list_period_summaries {from?, to?} — index of daily and "
                           "weekly summaries; from and to are ISO-8601."_s,
            .needsMemory = true,
            .run = Tool::runner(listPeriodSummaries, &retrieval),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"memory_expand_period"_s,
            .description = u"Expand a daily or weekly summary into its daily summaries and raw "
                           "observations."_s,
            .schema = uR"json({"type":"object","properties":{
                "id":{"type":"string",
                    "description":"The summary's [id:xxxxxxxx] from the chronological index or )json"
                      uR"json(memory_list_period_summaries"}
                },"required":["id"],"additionalProperties":false})json"_s,
            .section = Tool::Section::archive,
            .instruction = u"memory_expand_period {id} — a daily or weekly summary opened into "
                           "its daily summaries and raw observations; id is the [id:xxxxxxxx] "
                           "from the chronological index or memory_list_period_summaries."_s,
            .needsMemory = true,
            .run = Tool::runner(expandPeriod, &retrieval),
        },
    };
}

std::vector<Tool> sessionAndGoals(MemoryRetrievalService& retrieval)
{
    return {
        {
            .group = Tool::Group::deferred,
            .name = u"memory_get_daily_session"_s,
            .description = u"Metadata of the active daily session (id, day, start, turn count)."_s,
            .section = Tool::Section::archive,
            .instruction =
                u"memory_get_daily_session {} — today's session (id, day, start, turn count)."_s,
            .needsMemory = true,
            .run = Tool::runner(getDailySession, &retrieval),
        },
        {
            .group = Tool::Group::situation,
            .name = u"memory_get_active_context"_s,
            .description = u"Live situational context: current app, mode, pending items."_s,
            .section = Tool::Section::situation,
            .instruction = u"memory_get_active_context {} — live situational context."_s,
            .needsMemory = true,
            .run = Tool::runner(getActiveContext, &retrieval),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"memory_list_active_goals"_s,
            .description = u"The user's active goals and aspirations from durable memory."_s,
            .section = Tool::Section::user,
            .instruction =
                u"memory_list_active_goals {} — the user's active goals and aspirations."_s,
            .needsMemory = true,
            .run = Tool::runner(listActiveGoals, &retrieval),
        },
    };
}

} // namespace

std::vector<Tool> RetrievalTools::tools(MemoryRetrievalService& retrieval)
{
    auto tools = tableOfContentsAndReference(retrieval);
    std::ranges::move(observationsAndSummaries(retrieval), std::back_inserter(tools));
    std::ranges::move(sessionAndGoals(retrieval), std::back_inserter(tools));
    return tools;
}

} // namespace pobblewig
