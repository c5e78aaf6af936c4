#include "memory/librarian/LibrarianService.h"

#include "foundation/Log.h"
#include "memory/librarian/LibrarianSchemas.h"
#include "prompts/LibrarianPrompts.h"

#include <QStringBuilder>

namespace pobblewig {

LibrarianService::LibrarianService(
    const Stores& stores, const Moment& moment, ModelProviding& models)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_moment(moment)
    , m_model(stores.usage, models)
    , m_cleanup({ m_settings, m_memory.notes, moment, m_model })
{
}

Task<LibrarianExtractionResult> LibrarianService::extractAfterTurn(std::vector<ChatMessage> window,
    QString situation, std::vector<QString> referencePaths, std::set<AssistantRole> roles)
{
    const auto conversation = LibrarianLogic::windowText(window);
    if (conversation.isEmpty())
        co_return LibrarianExtractionResult();
    const auto lastSaidAt = window.back().timestamp;
    const auto now = m_moment.now();
    const auto prompt = Prompts::extraction({
        .residentMemory = m_memory.notes.residentMemory(MemoryStore::hardCapTokens, now),
        .isBelowSoftTarget = m_memory.notes.isBelowSoftThreshold(now),
        .situation = situation,
        .window = conversation,
        .referencePaths = referencePaths,
        .roles = roles,
    });
    const auto answer =
        co_await ask({ prompt, LibrarianSchemas::extraction() }, m_stop.get_token());
    const Origin origin { MemorySource::librarianSynthesis, QStringLiteral("librarian"),
        lastSaidAt };
    co_return co_await take(answer, QStringLiteral("extraction"), origin);
}

Task<LibrarianExtractionResult> LibrarianService::ingestMeetingNotes(MeetingNotes notes)
{
    if (notes.text.trimmed().isEmpty())
        co_return LibrarianExtractionResult();
    const auto now = m_moment.now();
    const auto prompt = Prompts::meetingNotesExtraction({
        .appName = notes.appName,
        .minutes = notes.minutes,
        .notes = notes.text,
        .residentMemory = m_memory.notes.residentMemory(MemoryStore::hardCapTokens, now),
        .isBelowSoftTarget = m_memory.notes.isBelowSoftThreshold(now),
        .referencePaths = m_memory.reference.tableOfContents().paths(),
    });
    const auto answer =
        co_await ask({ prompt, LibrarianSchemas::meetingNotesExtraction() }, m_stop.get_token());
    const Origin origin { MemorySource::meetingNotes, QStringLiteral("meetingNotes"),
        notes.startedAt };
    co_return co_await take(answer, QStringLiteral("meeting-notes ingestion"), origin);
}

Task<DailyCloseout> LibrarianService::closeDailySession(DayToClose day)
{
    const auto stop = m_stop.get_token();
    const auto prompt = Prompts::dailyCloseout({
        .dayKey = day.dayKey,
        .previousIntent = day.previousIntent,
        .observations = LibrarianLogic::observationsText(day.observations),
        .activitySummary = day.activitySummary,
        .conversation = LibrarianLogic::windowText(day.window),
    });
    const auto answer = co_await ask({ prompt, LibrarianSchemas::dailyCloseout(), 2 }, stop);
    if (stop.stop_requested())
        co_return DailyCloseout();
    const auto closeout =
        accepted<DailyCloseout>(answer, u"closeout", LibrarianAnswers::parseCloseout);
    co_return LibrarianLogic::completed(closeout.value_or(DailyCloseout()),
        LibrarianLogic::deterministicCloseout(day.window, day.observations, day.previousIntent));
}

Task<WeeklyRollupResult> LibrarianService::weeklyRollup(std::vector<PeriodSummary> dailies)
{
    const auto stop = m_stop.get_token();
    const auto calendar = m_moment.calendar();
    const auto prompt = Prompts::weeklyRollup(LibrarianLogic::dailiesText(dailies, calendar));
    const auto answer = co_await ask({ prompt, LibrarianSchemas::weeklyRollup(), 2 }, stop);
    if (stop.stop_requested())
        co_return WeeklyRollupResult();
    const auto rollup =
        accepted<WeeklyRollupResult>(answer, u"weekly rollup", LibrarianAnswers::parseWeekly);
    co_return rollup ? *rollup : LibrarianLogic::deterministicWeekly(dailies, calendar);
}

Task<> LibrarianService::cleanupIfNeeded()
{
    return m_cleanup.runIfDue(m_stop.get_token());
}

void LibrarianService::abandonRuns()
{
    m_stop.request_stop();
    m_stop = std::stop_source();
    // A server's message may quote the prompt.
    clearError();
}

template <typename Value>
std::optional<Value> LibrarianService::accepted(const LibrarianModel::Answer& answer,
    QStringView job, const std::function<LibrarianAnswers::Parsed<Value>(const QString&)>& parse)
{
    if (!answer)
        return std::nullopt;
    if (!*answer)
        return fail(job, description(answer->error()), loggable(answer->error()));
    auto parsed = parse(**answer);
    if (!parsed)
        return fail(job, parsed.error(), parsed.error());
    m_lastRunAt = m_moment.now();
    clearError();
    return *std::move(parsed);
}

auto LibrarianService::ask(LibrarianModel::Question question, std::stop_token stop)
    -> Task<LibrarianModel::Answer>
{
    if (!mayRemember())
        co_return std::nullopt;
    co_return co_await m_model.ask(std::move(question), stop);
}

void LibrarianService::clearError()
{
    m_lastError.reset();
    m_lastErrorAt.reset();
    ++m_revision;
}

std::nullopt_t LibrarianService::fail(
    QStringView job, const QString& description, const QString& loggable)
{
    m_lastError = description;
    m_lastErrorAt = m_moment.now();
    ++m_revision;
    Log::line(u"buddy: librarian " % job % u" failed: " % loggable);
    return std::nullopt;
}

Task<LibrarianExtractionResult> LibrarianService::take(
    LibrarianModel::Answer answer, QString job, Origin origin)
{
    const auto now = m_moment.now();
    auto extraction = accepted<ExtractionResult>(answer, job, [&](QString text) {
        return LibrarianAnswers::parseExtraction(text, origin.noteSource, origin.itemSource, now);
    });
    if (!extraction || !mayRemember())
        co_return LibrarianExtractionResult();
    co_return co_await store(*std::move(extraction), std::min(origin.occurredAt, now), now);
}

Task<LibrarianExtractionResult> LibrarianService::store(
    ExtractionResult extraction, TimePoint occurredAt, TimePoint now)
{
    for (auto& observation : extraction.observations) {
        observation.id = QUuid::createUuid();
        observation.occurredAt = occurredAt;
        observation.recordedAt = now;
    }
    for (auto& item : extraction.referenceItems) {
        item.id = QUuid::createUuid();
        item.createdAt = item.updatedAt = now;
    }
    const auto observationCount = int(extraction.observations.size());
    // All of it is in memory before the first co_await, and the files are written side by side.
    const auto notes = m_memory.notes.addNotes(std::move(extraction.notes), now);
    const auto observations = m_memory.record(std::move(extraction.observations));
    const auto reference = m_memory.reference.take(
        { std::move(extraction.referenceItems), std::move(extraction.proposedSections) });
    const auto added = co_await notes;
    co_await observations;
    const auto taken = co_await reference;
    co_return LibrarianExtractionResult { added, observationCount, taken.items, taken.sections };
}

} // namespace pobblewig
