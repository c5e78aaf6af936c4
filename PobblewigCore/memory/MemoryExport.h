#pragma once

#include "memory/MemoryTiers.h"

namespace pobblewig::MemoryExport {

/// What the user keeps as "pobblewig-memory.txt": the notes as the prompt has them, the table of
/// contents of the reference memory and the newest 200 observations.
QString text(const MemoryTiers& memory, TimePoint now);

} // namespace pobblewig::MemoryExport
