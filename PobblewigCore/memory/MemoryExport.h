#pragma once

#include "memory/MemoryTiers.h"

namespace pobblewig::MemoryExport {

/// The contents of the user's "pobblewig-memory.txt": the notes as in the prompt, the table of
/// contents of the reference memory, and the newest 200 observations.
QString text(const MemoryTiers& memory, TimePoint now);

/// All that is remembered, under headings, with days in the user's words.
QByteArray markdown(const MemoryTiers& memory, const Calendar& calendar);

/// The same with every field, in the form of the stores' files.
QByteArray json(const MemoryTiers& memory);

} // namespace pobblewig::MemoryExport
