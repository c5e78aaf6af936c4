#include "memory/MemoryStore.h"

#include "foundation/ISO8601.h"
#include "foundation/Text.h"
#include "memory/CleanupGuard.h"
#include "memory/PatternLogic.h"
#include "memory/ResidentMemoryLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

void fillAbsentDates(std::vector<MemoryNote>& notes, TimePoint now)
{
    for (auto& note : notes) {
        if (note.createdAt == TimePoint())
            note.createdAt = now;
        if (note.lastObservedAt == TimePoint())
            note.lastObservedAt = note.createdAt;
    }
}

QString limited(const QString& text)
{
    return Text::firstCharacters(Text::onOneLine(text).trimmed(), MemoryStore::longestText);
}

MemoryNote made(const NewNote& note, const QString& text, TimePoint now)
{
    return {
        .id = QUuid::createUuid(),
        .text = text,
        .category = note.category,
        .kind = note.kind,
        .source = note.source,
        .confidence = note.confidence,
        .createdAt = now,
        .lastObservedAt = now,
        .isTemporary = note.isTemporary,
        .expiresAt = note.expiresAt,
    };
}

} // namespace

MemoryStore::MemoryStore(
    const std::optional<DataDirectory>& directory, std::function<Calendar()> calendar)
    : m_file(directory, QStringLiteral("memory.json"), QStringLiteral("memory"))
    , m_calendar(std::move(calendar))
    , m_data(m_file.load<MemoryStoreData>())
{
    m_data.version = MemoryStoreData::currentVersion;
    if (directory)
        fillAbsentDates(m_data.notes, directory->clock());
}

std::vector<MemoryNote> MemoryStore::allNotes(IncludeArchived includeArchived) const
{
    auto notes = m_data.notes;
    if (includeArchived == IncludeArchived::no)
        std::erase_if(notes, [](const auto& note) { return note.status != MemoryStatus::active; });
    return notes;
}

QString MemoryStore::residentMemory(int maxTokens, TimePoint now) const
{
    return ResidentMemoryLogic::text(m_data.notes, m_data.patterns, maxTokens, now);
}

int MemoryStore::residentTokenEstimate(TimePoint now) const
{
    return ResidentMemoryLogic::tokens(m_data.notes, m_data.patterns, now);
}

bool MemoryStore::isBelowSoftThreshold(TimePoint now) const
{
    return residentTokenEstimate(now) < softTargetTokens;
}

bool MemoryStore::shouldRunCleanup(TimePoint now) const
{
    return CleanupGuard::isDue(residentTokenEstimate(now), m_data.lastCleanupTokenCount);
}

QString MemoryStore::exportText(TimePoint now) const
{
    const auto memory = residentMemory(hardCapTokens, now);
    return QStringLiteral("Pobblewig — Memory Export\n\nExported: %1\n\n%2")
        .arg(ISO8601::format(now), memory.isEmpty() ? QStringLiteral("No memories yet.") : memory);
}

std::optional<AddNoteResult> MemoryStore::addNote(const NewNote& note, TimePoint now)
{
    const auto result = put(note, now);
    if (result)
        save(now);
    return result;
}

Task<int> MemoryStore::addNotes(std::vector<NewNote> notes, TimePoint now)
{
    if (notes.empty())
        co_return 0;
    int added = 0;
    for (const auto& note : notes) {
        const auto result = put(note, now);
        added += result && result->kind == AddNoteResult::Kind::added;
    }
    m_data.updatedAt = now;
    co_await m_file.saveBeside(m_data);
    co_return added;
}

void MemoryStore::correctNote(const QUuid& id, const QString& newText, TimePoint now)
{
    const auto note = std::ranges::find(m_data.notes, id, &MemoryNote::id);
    const auto text = Text::onOneLine(newText).trimmed();
    if (note == m_data.notes.end() || text.isEmpty())
        return;
    note->text = text;
    note->kind = MemoryKind::correction;
    note->source = MemorySource::explicitUser;
    note->lastObservedAt = now;
    m_statements.reset();
    save(now);
}

void MemoryStore::deleteNote(const QUuid& id, TimePoint now)
{
    const auto hasID = [&](const auto& entry) { return entry.id == id; };
    const auto count = eraseNotes(hasID) + std::erase_if(m_data.patterns, hasID);
    if (count > 0)
        save(now);
}

void MemoryStore::revive(const QUuid& id, TimePoint now)
{
    const auto note = std::ranges::find(m_data.notes, id, &MemoryNote::id);
    if (note == m_data.notes.end() || note->status == MemoryStatus::active)
        return;
    note->status = MemoryStatus::active;
    save(now);
}

void MemoryStore::putBack(const MemoryNote& note, TimePoint now)
{
    auto& notes = m_data.notes;
    const auto known = std::ranges::find(notes, note.id, &MemoryNote::id);
    if (known != notes.end())
        *known = note;
    else
        notes.insert(std::ranges::find_if(notes,
                         [&](const auto& other) { return other.createdAt <= note.createdAt; }),
            note);
    m_statements.reset();
    save(now);
}

void MemoryStore::putBack(const PatternNote& pattern, TimePoint now)
{
    auto& patterns = m_data.patterns;
    const auto known = std::ranges::find(patterns, pattern.id, &PatternNote::id);
    if (known != patterns.end())
        *known = pattern;
    else
        patterns.push_back(pattern);
    save(now);
}

void MemoryStore::pruneExpired(TimePoint now)
{
    if (eraseNotes([&](const auto& note) { return isExpired(note, now); }) > 0)
        save(now);
}

std::optional<PatternNote> MemoryStore::synthesizePattern(NewPattern pattern, TimePoint now)
{
    pattern.text = limited(pattern.text);
    const auto evidence = PatternLogic::evidence(m_data.notes, pattern.evidenceNoteIDs);
    const auto statement = Text::normalized(pattern.text);
    if (statement.isEmpty() || !PatternLogic::canPromotePattern(evidence, m_calendar()))
        return std::nullopt;
    auto& patterns = m_data.patterns;
    auto known = std::ranges::find(
        patterns, statement, [](const auto& entry) { return Text::normalized(entry.text); });
    if (known != patterns.end())
        PatternLogic::merge(*known, pattern, evidence, now);
    else
        known = patterns.insert(known, PatternLogic::promoted(pattern, evidence));
    save(now);
    return *known;
}

void MemoryStore::markCleanupTried(TimePoint now)
{
    m_data.lastCleanupTriedAt = now;
    save(now);
}

void MemoryStore::applyCleanup(
    const CleanupSnapshot& seen, const CleanupSnapshot& rewritten, TimePoint now)
{
    // Comes first, so that notes missing from the rewritten list are kept, however old they are.
    purgeArchivedNotes(archivedNoteRetentionDays, now);
    m_data.notes = CleanupGuard::cleaned(std::move(m_data.notes), seen.notes, rewritten.notes);
    m_data.patterns =
        CleanupGuard::cleaned(std::move(m_data.patterns), seen.patterns, rewritten.patterns);
    m_statements.reset();
    m_data.lastCleanupAt = now;
    m_data.lastCleanupTokenCount = residentTokenEstimate(now);
    save(now);
}

int MemoryStore::purgeArchivedNotes(int olderThan, TimePoint now)
{
    const auto cutoff = now - std::chrono::days(olderThan);
    const auto count = eraseNotes([&](const auto& note) {
        return note.status == MemoryStatus::archived && note.lastObservedAt < cutoff;
    });
    if (count > 0)
        save(now);
    return int(count);
}

void MemoryStore::deleteAll(TimePoint now)
{
    m_data = {};
    m_statements.reset();
    save(now);
}

void MemoryStore::readAgain(TimePoint now)
{
    auto kept = m_file.loadAgain<MemoryStoreData>();
    if (!kept)
        return;
    fillAbsentDates(kept->notes, now);
    const auto meanwhile = std::exchange(m_data, *std::move(kept));
    m_data.version = MemoryStoreData::currentVersion;
    m_data.notes.insert(m_data.notes.begin(), meanwhile.notes.begin(), meanwhile.notes.end());
    std::ranges::copy(meanwhile.patterns, std::back_inserter(m_data.patterns));
    m_statements.reset();
    save(now);
}

int MemoryStore::estimateTokens(const QString& text)
{
    return ResidentMemoryLogic::estimateTokens(text);
}

std::optional<AddNoteResult> MemoryStore::put(const NewNote& note, TimePoint now)
{
    const auto text = limited(note.text);
    if (text.isEmpty())
        return std::nullopt;
    const auto statement = Text::normalized(text);
    auto& known = statements();
    if (const auto same = std::ranges::find(known, statement); same != known.end()) {
        auto& reinforced = m_data.notes[size_t(same - known.begin())];
        ++reinforced.observationCount;
        reinforced.lastObservedAt = now;
        return AddNoteResult { AddNoteResult::Kind::reinforced, reinforced.id };
    }
    m_data.notes.insert(m_data.notes.begin(), made(note, text, now));
    known.insert(known.begin(), statement);
    return AddNoteResult { AddNoteResult::Kind::added, m_data.notes.front().id };
}

std::vector<QString>& MemoryStore::statements()
{
    if (!m_statements) {
        m_statements.emplace();
        m_statements->reserve(m_data.notes.size());
        for (const auto& note : m_data.notes)
            m_statements->push_back(Text::normalized(note.text));
    }
    return *m_statements;
}

size_t MemoryStore::eraseNotes(const std::function<bool(const MemoryNote&)>& isUnwanted)
{
    const auto count = std::erase_if(m_data.notes, isUnwanted);
    if (count > 0)
        m_statements.reset();
    return count;
}

void MemoryStore::save(TimePoint now)
{
    m_data.updatedAt = now;
    m_file.save(m_data);
}

} // namespace pobblewig
