#pragma once

#include "memory/MemoryNote.h"

namespace pobblewig {

/// What a model sees of the notes that it is to rewrite.
struct CleanupSnapshot {
    std::vector<MemoryNote> notes;
    std::vector<PatternNote> patterns;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("notes", &CleanupSnapshot::notes),
            required("patterns", &CleanupSnapshot::patterns) };
    }
};

} // namespace pobblewig
