#pragma once

#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// Reference items that a date in their details puts on the calendar.
namespace pobblewig::DatedItems {

/// Nothing for an item that has no such date, or none that can be read.
std::optional<TimePoint> date(const ReferenceItem& item, QStringView key);

/// What is chosen, and how many at most.
struct Window {
    QStringView path;
    /// Of the date in the details.
    QStringView key;
    /// The first is not of the window, the last is.
    TimePoint from;
    TimePoint to;
    int limit = 0;
};

/// Soonest first; those of one instant in their order.
std::vector<ReferenceItem> within(const std::vector<ReferenceItem>& items, const Window& window);

} // namespace pobblewig::DatedItems
