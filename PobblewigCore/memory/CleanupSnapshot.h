#pragma once

#include "memory/MemoryNote.h"

namespace pobblewig {

/// The notes and patterns that a model is asked to rewrite.
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
