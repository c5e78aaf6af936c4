#pragma once

#include "memory/MemoryTiers.h"

namespace pobblewig::MemoryExport {

/// The contents of the user's "pobblewig-memory.txt": the notes as in the prompt, the table of
/// contents of the reference memory, and the newest 200 observations.
QString text(const MemoryTiers& memory, TimePoint now);

} // namespace pobblewig::MemoryExport
