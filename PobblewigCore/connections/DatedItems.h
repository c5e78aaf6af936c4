#pragma once

#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// Selects reference items by a date in their details.
namespace pobblewig::DatedItems {

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> date(const ReferenceItem& item, QStringView key);

/// Which items are selected, and how many at most.
struct Window {
    QStringView path;
    /// The key of the date in the details.
    QStringView key;
    /// `from` is excluded, `to` is included.
    TimePoint from;
    TimePoint to;
    int limit = 0;
};

/// Soonest first; items with the same date keep their order.
std::vector<ReferenceItem> within(const std::vector<ReferenceItem>& items, const Window& window);

} // namespace pobblewig::DatedItems
