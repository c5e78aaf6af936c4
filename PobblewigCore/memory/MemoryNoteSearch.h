#pragma once

#include "memory/MemoryNote.h"

#include <optional>
#include <vector>

/// Finds notes by what they say.
namespace pobblewig::MemoryNoteSearch {

/// The first notes, at most `limit`, of the category, if there is one, that hold every word of the
/// query, also inside a longer word.
std::vector<MemoryNote> withWords(const std::vector<MemoryNote>& notes, const QString& query,
    std::optional<MemoryCategory> category, size_t limit);

/// The notes that make one of these statements, case and spacing aside, each once and in the order
/// of the statements.
std::vector<QUuid> stating(
    const std::vector<MemoryNote>& notes, const std::vector<QString>& statements);

} // namespace pobblewig::MemoryNoteSearch
