#include "memory/recall/MemoryTools.h"

#include "foundation/IDPrefix.h"
#include "memory/MemoryNoteSearch.h"
#include "memory/recall/MemoryToolText.h"

#include <functional>

namespace pobblewig {

namespace {

constexpr int defaultObservations = 20;
constexpr int mostObservations = 100;
constexpr size_t mostNotes = 20;
constexpr int mostTailLines = 1000;
constexpr double defaultConfidence = 0.6;
constexpr QStringView appDataUnavailable = u"(app data tools unavailable)";

tl::unexpected<MemoryToolFailure> failed(MemoryToolFailure failure)
{
    return tl::unexpected(std::move(failure));
}

Task<MemoryTools::Outcome> provided(MemoryTools::TextProvider provider, QString unavailable)
{
    if (!provider)
        co_return unavailable;
    co_return co_await provider();
}

/// What was retrieved, as the text that `render` makes of it.
template <typename Retrieved, typename Render>
Task<MemoryTools::Outcome> rendered(Task<Retrieved> retrieval, Render render)
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
    const auto from = arguments.date(QStringLiteral("from"));
    if (!from)
        return tl::unexpected(from.error());
    const auto to = arguments.date(QStringLiteral("to"));
    if (!to)
        return tl::unexpected(to.error());
    return TimeWindow { *from, *to };
}

QString wholeText(const MemoryTableOfContents& contents)
{
    using Contents = MemoryTableOfContents;
    return contents.compactText(Contents::IncludeEmpty::yes, Contents::IncludeTimestamps::yes);
}

} // namespace

QString description(const MemoryToolFailure& failure)
{
    return std::visit([](const auto& error) { return error.description(); }, failure);
}

MemoryTools::MemoryTools(Dependencies dependencies, Providers providers)
    : m_retrieval(&dependencies.retrieval)
    , m_observations(dependencies.observations)
    , m_memory(dependencies.memory)
    , m_clock(std::move(dependencies.clock))
    , m_providers(std::move(providers))
{
}

auto MemoryTools::run(MemoryToolCall call) -> Task<Outcome>
{
    const auto tool = handler(call.name);
    if (!tool)
        co_return failed(ArgError::unknownTool(call.name));
    co_return co_await (this->*tool)(ToolArguments(std::move(call.args)));
}

MemoryTools::Handler MemoryTools::handler(const QString& name)
{
    static const QHash<QString, Handler> handlers {
        { QStringLiteral("memory_get_table_of_contents"), &MemoryTools::getTableOfContents },
        { QStringLiteral("memory_read_section"), &MemoryTools::readSection },
        { QStringLiteral("memory_search_reference"), &MemoryTools::searchReference },
        { QStringLiteral("memory_search_observations"), &MemoryTools::searchObservations },
        { QStringLiteral("memory_list_period_summaries"), &MemoryTools::listPeriodSummaries },
        { QStringLiteral("memory_expand_period"), &MemoryTools::expandPeriod },
        { QStringLiteral("memory_get_daily_session"), &MemoryTools::getDailySession },
        { QStringLiteral("memory_get_active_context"), &MemoryTools::getActiveContext },
        { QStringLiteral("memory_list_active_goals"), &MemoryTools::listActiveGoals },
        { QStringLiteral("memory_find_notes"), &MemoryTools::findNotes },
        { QStringLiteral("memory_add_observation"), &MemoryTools::addObservation },
        { QStringLiteral("memory_propose_pattern"), &MemoryTools::proposePattern },
        { QStringLiteral("rules_list"), &MemoryTools::listRules },
        { QStringLiteral("interventions_recent"), &MemoryTools::recentInterventions },
        { QStringLiteral("apps_list_sources"), &MemoryTools::listAppSources },
        { QStringLiteral("apps_list_files"), &MemoryTools::listAppFiles },
        { QStringLiteral("apps_read_file"), &MemoryTools::readAppFile },
    };
    return handlers.value(name);
}

auto MemoryTools::getTableOfContents(ToolArguments) -> Task<Outcome>
{
    co_return co_await rendered(m_retrieval->getTableOfContents(), wholeText);
}

auto MemoryTools::readSection(ToolArguments arguments) -> Task<Outcome>
{
    const auto path = arguments.requiredString(QStringLiteral("path"));
    if (!path)
        co_return failed(path.error());
    co_return co_await rendered(
        m_retrieval->readReferenceSection(*path), std::mem_fn(&ReferenceSection::compactText));
}

auto MemoryTools::searchReference(ToolArguments arguments) -> Task<Outcome>
{
    const auto query = arguments.requiredString(QStringLiteral("query"));
    if (!query)
        co_return failed(query.error());
    auto hits = m_retrieval->searchReference(*query, arguments.strings(QStringLiteral("paths")));
    co_return co_await rendered(std::move(hits), MemoryToolText::renderHits);
}

auto MemoryTools::searchObservations(ToolArguments arguments) -> Task<Outcome>
{
    const auto window = timeWindow(arguments);
    if (!window)
        co_return failed(window.error());
    const auto limit = arguments.integer(QStringLiteral("limit"), 1, mostObservations);
    ObservationStore::Query query {
        .text = arguments.string(QStringLiteral("query")).value_or(QString()),
        .from = window->from,
        .to = window->to,
        .tags = arguments.strings(QStringLiteral("tags")),
        .limit = limit.value_or(defaultObservations),
    };
    co_return co_await rendered(
        m_retrieval->searchObservations(std::move(query)), MemoryToolText::renderObservations);
}

auto MemoryTools::listPeriodSummaries(ToolArguments arguments) -> Task<Outcome>
{
    const auto window = timeWindow(arguments);
    if (!window)
        co_return failed(window.error());
    co_return co_await rendered(
        m_retrieval->listPeriodSummaries(window->from, window->to), MemoryToolText::renderPeriods);
}

auto MemoryTools::expandPeriod(ToolArguments arguments) -> Task<Outcome>
{
    const auto id = arguments.requiredString(QStringLiteral("id"));
    if (!id)
        co_return failed(id.error());
    const auto summaries = co_await m_retrieval->listPeriodSummaries(std::nullopt, std::nullopt);
    if (!summaries)
        co_return failed(summaries.error());
    const auto named = IDPrefix::resolve(*id, *summaries);
    if (named.isAmbiguous())
        co_return QStringLiteral("id %1 matches more than one summary — use more characters")
            .arg(*id);
    if (!named.found())
        co_return QStringLiteral("no period summary matches id %1 — call "
                                 "memory_list_period_summaries to see current ids")
            .arg(*id);
    co_return co_await rendered(
        m_retrieval->expandPeriod(named.found()->id), MemoryToolText::renderExpanded);
}

auto MemoryTools::getDailySession(ToolArguments) -> Task<Outcome>
{
    co_return co_await rendered(m_retrieval->getDailySession(), MemoryToolText::renderSession);
}

auto MemoryTools::getActiveContext(ToolArguments) -> Task<Outcome>
{
    co_return co_await rendered(m_retrieval->getActiveContext(), std::identity());
}

auto MemoryTools::listActiveGoals(ToolArguments) -> Task<Outcome>
{
    co_return co_await rendered(m_retrieval->listActiveGoals(), MemoryToolText::renderGoals);
}

auto MemoryTools::findNotes(ToolArguments arguments) -> Task<Outcome>
{
    const auto query = arguments.string(QStringLiteral("query")).value_or(QString());
    const auto category = arguments.string(QStringLiteral("category")).value_or(QString());
    const auto found =
        MemoryNoteSearch::withWords(m_memory.allNotes(MemoryStore::IncludeArchived::no), query,
            EnumNames::fromName<MemoryCategory>(category.toStdString()), mostNotes);
    co_return MemoryToolText::renderNotes(found);
}

auto MemoryTools::addObservation(ToolArguments arguments) -> Task<Outcome>
{
    const auto summary = arguments.requiredString(QStringLiteral("summary"));
    if (!summary)
        co_return failed(summary.error());
    const auto now = m_clock();
    const auto observation = m_observations.add({
        .id = QUuid::createUuid(),
        .occurredAt = now,
        .recordedAt = now,
        .summary = *summary,
        .source = ObservationSource::librarianSynthesis,
        .tags = arguments.strings(QStringLiteral("tags")),
    });
    if (const auto hook = m_providers.observationHook)
        co_await hook(observation);
    co_return QStringLiteral("recorded observation ") + IDPrefix::shortID(observation.id);
}

auto MemoryTools::proposePattern(ToolArguments arguments) -> Task<Outcome>
{
    const auto text = arguments.requiredString(QStringLiteral("text"));
    if (!text)
        co_return failed(text.error());
    const auto evidence = arguments.requiredStrings(QStringLiteral("evidenceNoteTexts"));
    if (!evidence)
        co_return failed(evidence.error());
    const NewPattern proposed {
        .text = *text,
        .evidenceNoteIDs = MemoryNoteSearch::stating(
            m_memory.allNotes(MemoryStore::IncludeArchived::no), *evidence),
        .confidence = arguments.number(QStringLiteral("confidence")).value_or(defaultConfidence),
    };
    const auto pattern = m_memory.synthesizePattern(proposed, m_clock());
    if (!pattern)
        co_return QStringLiteral("not recorded: patterns need evidence from at least two distinct "
                                 "days (or an explicit user generalization)");
    co_return QStringLiteral("pattern recorded: ") + pattern->text;
}

auto MemoryTools::listRules(ToolArguments) -> Task<Outcome>
{
    return provided(m_providers.rulesProvider, QStringLiteral("(rules unavailable)"));
}

auto MemoryTools::recentInterventions(ToolArguments) -> Task<Outcome>
{
    return provided(
        m_providers.interventionsProvider, QStringLiteral("(interventions unavailable)"));
}

auto MemoryTools::listAppSources(ToolArguments) -> Task<Outcome>
{
    return provided(m_appData.listSources, appDataUnavailable.toString());
}

auto MemoryTools::listAppFiles(ToolArguments arguments) -> Task<Outcome>
{
    const auto source = arguments.requiredString(QStringLiteral("source"));
    if (!source)
        co_return failed(source.error());
    const auto listFiles = m_appData.listFiles;
    if (!listFiles)
        co_return appDataUnavailable.toString();
    co_return co_await listFiles(*source, arguments.string(QStringLiteral("subpath")));
}

auto MemoryTools::readAppFile(ToolArguments arguments) -> Task<Outcome>
{
    const auto source = arguments.requiredString(QStringLiteral("source"));
    if (!source)
        co_return failed(source.error());
    const auto path = arguments.requiredString(QStringLiteral("path"));
    if (!path)
        co_return failed(path.error());
    const auto readFile = m_appData.readFile;
    if (!readFile)
        co_return appDataUnavailable.toString();
    co_return co_await readFile(
        *source, *path, arguments.integer(QStringLiteral("tailLines"), 1, mostTailLines));
}

} // namespace pobblewig
