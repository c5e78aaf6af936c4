#include "memory/librarian/CleanupLogic.h"

#include "foundation/Text.h"

#include <QSet>

#include <algorithm>

namespace pobblewig {

namespace {

template <typename Entry>
QSet<QString> statements(const std::vector<Entry>& entries)
{
    QSet<QString> statements;
    for (const auto& entry : entries)
        statements.insert(Text::normalized(entry.text));
    return statements;
}

template <typename Entry>
bool areAllIn(const std::vector<Entry>& seen, const std::vector<Entry>& entries)
{
    return std::ranges::all_of(seen, [&](const auto& entry) {
        const auto same = std::ranges::find(entries, entry.id, &Entry::id);
        return same != entries.end() && same->text == entry.text;
    });
}

/// The entries that were not seen and that the rewritten ones do not state.
template <typename Entry>
std::vector<Entry> unseen(
    std::vector<Entry> entries, const std::vector<Entry>& seen, const std::vector<Entry>& rewritten)
{
    QSet<QUuid> ids;
    for (const auto& entry : seen)
        ids.insert(entry.id);
    const auto said = statements(rewritten);
    std::erase_if(entries, [&](const auto& entry) {
        return ids.contains(entry.id) || said.contains(Text::normalized(entry.text));
    });
    return entries;
}

} // namespace

bool CleanupLogic::isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns)
{
    return !areAllIn(seen.notes, notes) || !areAllIn(seen.patterns, patterns);
}

CleanupResult CleanupLogic::withUnseen(CleanupResult rewritten, const CleanupSnapshot& seen,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns)
{
    auto newNotes = unseen(notes, seen.notes, rewritten.notes);
    std::erase_if(newNotes, [](const auto& note) { return note.status != MemoryStatus::active; });
    auto newPatterns = unseen(patterns, seen.patterns, rewritten.patterns);
    std::ranges::move(rewritten.notes, std::back_inserter(newNotes));
    std::ranges::move(newPatterns, std::back_inserter(rewritten.patterns));
    return { std::move(newNotes), std::move(rewritten.patterns) };
}

} // namespace pobblewig
