#include "memory/recall/MemoryTools.h"

#include "foundation/IDPrefix.h"
#include "foundation/Text.h"
#include "memory/MemoryNoteSearch.h"
#include "memory/recall/MemoryToolText.h"
#include "memory/recall/RetrievalTools.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

using MemoryTools::Dependencies;
using Outcome = Tool::Outcome;

constexpr size_t mostNotes = 20;
constexpr double defaultConfidence = 0.6;

tl::unexpected<QString> failed(const ArgError& error)
{
    return tl::unexpected(error.description());
}

Task<Outcome> findNotes(Dependencies on, ToolArguments arguments)
{
    const auto query = arguments.string(u"query"_s).value_or(QString());
    const auto category = arguments.string(u"category"_s).value_or(QString());
    const auto found =
        MemoryNoteSearch::withWords(on.memory.notes.allNotes(MemoryStore::IncludeArchived::no),
            query, EnumNames::fromName<MemoryCategory>(category.toStdString()), mostNotes);
    co_return MemoryToolText::renderNotes(found);
}

/// A turn that is tried again repeats its calls.
std::optional<DatedObservation> inThisSession(const MemoryTiers& memory, const QString& summary)
{
    const auto session = memory.sessions.activeSession();
    if (!session)
        return std::nullopt;
    const auto statement = Text::normalized(summary);
    for (const auto& observation : memory.observations.withIDs(session->observationIDs)) {
        if (Text::normalized(observation.summary) == statement)
            return observation;
    }
    return std::nullopt;
}

Task<Outcome> addObservation(Dependencies on, ToolArguments arguments)
{
    const auto summary = arguments.requiredString(u"summary"_s);
    if (!summary)
        co_return failed(summary.error());
    if (const auto known = inThisSession(on.memory, *summary))
        co_return u"recorded observation "_s + IDPrefix::shortID(known->id);
    const auto now = on.clock();
    const auto observation = on.memory.record({
        .id = QUuid::createUuid(),
        .occurredAt = now,
        .recordedAt = now,
        .summary = *summary,
        .source = ObservationSource::librarianSynthesis,
        .tags = arguments.strings(u"tags"_s),
    });
    co_return u"recorded observation "_s + IDPrefix::shortID(observation.id);
}

Task<Outcome> proposePattern(Dependencies on, ToolArguments arguments)
{
    const auto text = arguments.requiredString(u"text"_s);
    if (!text)
        co_return failed(text.error());
    const auto evidence = arguments.requiredStrings(u"evidenceNoteTexts"_s);
    if (!evidence)
        co_return failed(evidence.error());
    auto& notes = on.memory.notes;
    const NewPattern proposed {
        .text = *text,
        .evidenceNoteIDs =
            MemoryNoteSearch::stating(notes.allNotes(MemoryStore::IncludeArchived::no), *evidence),
        .confidence = arguments.number(u"confidence"_s).value_or(defaultConfidence),
    };
    const auto pattern = notes.synthesizePattern(proposed, on.clock());
    if (!pattern)
        co_return u"not recorded: patterns need evidence from at least two distinct days (or an "
                  "explicit user generalization)"_s;
    co_return u"pattern recorded: "_s + pattern->text;
}

std::vector<Tool> noteTools(const Dependencies& dependencies)
{
    return {
        {
            .group = Tool::Group::alwaysLoaded,
            .name = u"memory_find_notes"_s,
            .description = u"Search the durable personal memory notes (the always-injected prose "
                           "memory) and get their ids — needed to identify a specific note before "
                           "proposing to forget it."_s,
            .schema = uR"json({"type":"object","properties":{
                "query":{"type":"string",
                    "description":"Words to match against note text (all must appear)"},
                "category":{"type":"string","enum":["preferences","currentContext","goals",
                    "aspirations","history","misc","journeys"]}
                },"additionalProperties":false})json"_s,
            .section = Tool::Section::notes,
            .instruction = u"memory_find_notes {query?, category?} — durable memory notes with "
                           "their ids, needed before proposing to forget one; category is "
                           "preferences, currentContext, goals, aspirations, history, misc, or "
                           "journeys."_s,
            .needsMemory = true,
            .run = Tool::runner(findNotes, dependencies),
        },
        {
            .group = Tool::Group::alwaysLoaded,
            .name = u"memory_add_observation"_s,
            .description = u"Record a dated observation of something meaningful the user just "
                           "told you (a mood, an event, a correction)."_s,
            .schema = uR"json({"type":"object","properties":{
                "summary":{"type":"string"},
                "tags":{"type":"array","items":{"type":"string"}}
                },"required":["summary"],"additionalProperties":false})json"_s,
            .section = Tool::Section::user,
            .instruction = u"memory_add_observation {summary, tags?} — record a dated observation "
                           "of something meaningful the user just told you (a mood, an event, a "
                           "correction)."_s,
            .needsMemory = true,
            .run = Tool::runner(addObservation, dependencies),
        },
        {
            .group = Tool::Group::deferred,
            .name = u"memory_propose_pattern"_s,
            .description = u"Propose a descriptive behavioral pattern. Recorded only with "
                           "evidence from at least two distinct days or an explicit user "
                           "generalization."_s,
            .schema = uR"json({"type":"object","properties":{
                "text":{"type":"string"},
                "evidenceNoteTexts":{"type":"array","items":{"type":"string"},
                    "description":"Texts of existing notes that support the pattern"},
                "confidence":{"type":"number"}
                },"required":["text","evidenceNoteTexts"],"additionalProperties":false})json"_s,
            .section = Tool::Section::user,
            .instruction = u"memory_propose_pattern {text, evidenceNoteTexts, confidence?} — "
                           "propose a behavioral pattern, with evidence from at least two "
                           "distinct days or an explicit generalization by the user; "
                           "evidenceNoteTexts is an array of existing notes' texts; confidence is "
                           "0 to 1."_s,
            .needsMemory = true,
            .run = Tool::runner(proposePattern, dependencies),
        },
    };
}

} // namespace

std::vector<Tool> MemoryTools::tools(const Dependencies& dependencies)
{
    auto tools = RetrievalTools::tools(dependencies.retrieval);
    std::ranges::move(noteTools(dependencies), std::back_inserter(tools));
    return tools;
}

} // namespace pobblewig
