#pragma once

#include "foundation/DataDirectory.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"

/// Implements "Delete all memory".
namespace pobblewig::MemoryEraser {

/// Removes the files of these stores that could not be read, which nothing would empty. Called
/// first.
void removeUnreadable(const DataDirectory& directory);

/// Empties the stores; the reference memory keeps its fixed sections.
void emptyStores(MemoryTiers& memory, ChatHistoryStore& history, TimePoint now);

/// Whether a file in the data directory could contain a deleted text: an archived conversation, or
/// a copy of a store's file left by a backup, a failed read, a crash or a download.
bool isCopy(const QString& fileName);

/// Removes these files. A failure is logged, and the remaining files are still removed.
void removeCopies(const QDir& directory);

} // namespace pobblewig::MemoryEraser
