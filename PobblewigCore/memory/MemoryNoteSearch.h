#pragma once

#include "memory/MemoryNote.h"

#include <optional>
#include <vector>

/// Finds notes by their text.
namespace pobblewig::MemoryNoteSearch {

/// The first `limit` notes that contain every word of the query, also inside longer words.
/// Restricted to the category, if there is one.
std::vector<MemoryNote> withWords(const std::vector<MemoryNote>& notes, const QString& query,
    std::optional<MemoryCategory> category, size_t limit);

/// The notes that make one of these statements, ignoring case and spacing, each once and in the
/// order of the statements.
std::vector<QUuid> stating(
    const std::vector<MemoryNote>& notes, const std::vector<QString>& statements);

} // namespace pobblewig::MemoryNoteSearch
