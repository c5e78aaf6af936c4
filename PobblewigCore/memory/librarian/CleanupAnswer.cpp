#include "memory/librarian/CleanupAnswer.h"

#include "foundation/Text.h"
#include "memory/MemoryNoteSearch.h"
#include "memory/PatternLogic.h"

#include <QHash>
#include <QSet>

namespace pobblewig {

namespace {

constexpr double defaultConfidence = 0.6;

/// The notes by their statement. If several have the same statement, an active one is preferred.
QHash<QString, const MemoryNote*> byStatement(const std::vector<MemoryNote>& notes)
{
    QHash<QString, const MemoryNote*> known;
    for (const auto& note : notes) {
        auto& place = known[Text::normalized(note.text)];
        const auto isBetter =
            place && place->status != MemoryStatus::active && note.status == MemoryStatus::active;
        if (!place || isBetter)
            place = &note;
    }
    return known;
}

MemoryNote rewritten(const NewNote& told, MemoryNote note)
{
    note.category = told.category;
    note.kind = told.kind;
    note.source = told.source;
    note.confidence = told.confidence;
    note.status = MemoryStatus::active;
    return note;
}

MemoryNote added(const NewNote& told, TimePoint now)
{
    return rewritten(told,
        {
            .id = QUuid::createUuid(),
            .text = Text::firstCharacters(told.text, MemoryStore::longestText),
            .createdAt = now,
            .lastObservedAt = now,
            .isTemporary = told.isTemporary,
            .expiresAt = told.expiresAt,
        });
}

/// The user's own notes stay marked as such, and no other note becomes one. How long a note lasts
/// stays as well: models repeat what the prompt's example says of it.
MemoryNote kept(const MemoryNote& known, NewNote told)
{
    using enum MemorySource;
    if (known.source == explicitUser || told.source == explicitUser)
        told.source = known.source;
    if (known.kind == MemoryKind::correction)
        told.kind = MemoryKind::correction;
    return rewritten(told, known);
}

std::optional<PatternNote> rewritten(const AnswerFields& fields,
    const std::vector<MemoryNote>& notes, const PatternNote* known, TimePoint now,
    const Calendar& calendar)
{
    const NewPattern told {
        .text =
            Text::firstCharacters(fields.line(QStringLiteral("text")), MemoryStore::longestText),
        .evidenceNoteIDs = MemoryNoteSearch::stating(
            notes, fields.shortLines(QStringLiteral("evidenceNoteTexts"))),
        .confidence = fields.confidence().value_or(defaultConfidence),
    };
    const auto evidence = PatternLogic::evidence(notes, told.evidenceNoteIDs);
    const auto isProved = PatternLogic::canPromotePattern(evidence, calendar);
    if (!known)
        return isProved ? std::optional(PatternLogic::promoted(told, evidence)) : std::nullopt;
    auto pattern = *known;
    if (isProved)
        PatternLogic::merge(pattern, told, evidence, now);
    return pattern;
}

const PatternNote* stating(const std::vector<PatternNote>& patterns, const QString& statement)
{
    const auto found = std::ranges::find(
        patterns, statement, [](const auto& pattern) { return Text::normalized(pattern.text); });
    return found == patterns.end() ? nullptr : &*found;
}

} // namespace

std::vector<MemoryNote> CleanupAnswer::notes(
    const AnswerFields& answer, const std::vector<MemoryNote>& existing, TimePoint now)
{
    const auto known = byStatement(existing);
    QSet<QString> said;
    std::vector<MemoryNote> notes;
    const auto most = existing.size() + AnswerFields::mostEntries;
    for (const auto& fields : answer.objects(QStringLiteral("notes"), most)) {
        const auto told = fields.note(MemorySource::librarianSynthesis, now);
        const auto statement = Text::normalized(told.text);
        if (statement.isEmpty() || said.contains(statement))
            continue;
        said.insert(statement);
        const auto* same = known.value(statement);
        notes.push_back(same ? kept(*same, told) : added(told, now));
    }
    return notes;
}

std::vector<PatternNote> CleanupAnswer::patterns(const AnswerFields& answer,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& existing, TimePoint now,
    const Calendar& calendar)
{
    const auto most = existing.size() + AnswerFields::mostEntries;
    std::vector<PatternNote> patterns;
    for (const auto& fields : answer.objects(QStringLiteral("patterns"), most)) {
        const auto statement = Text::normalized(fields.line(QStringLiteral("text")));
        if (statement.isEmpty() || stating(patterns, statement))
            continue;
        auto pattern = rewritten(fields, notes, stating(existing, statement), now, calendar);
        if (pattern)
            patterns.push_back(*std::move(pattern));
    }
    return patterns;
}

} // namespace pobblewig
