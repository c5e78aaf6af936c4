#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>
#include <vector>

namespace pobblewig {

struct TOCEntry {
    QString path;
    QString title;
    int itemCount = 0;
    QString summary;
    /// Not set for a section without items.
    std::optional<TimePoint> lastUpdatedAt = std::nullopt;

    bool operator==(const TOCEntry&) const = default;
};

/// The confirmed sections of the reference memory, sorted by path.
struct MemoryTableOfContents {
    enum class IncludeEmpty { no, yes };
    enum class IncludeTimestamps { no, yes };

    std::vector<TOCEntry> entries;

    std::vector<QString> paths() const;

    /// One line for each entry, or a sentence that says there are none.
    QString compactText(IncludeEmpty includeEmpty, IncludeTimestamps includeTimestamps) const;
};

} // namespace pobblewig
