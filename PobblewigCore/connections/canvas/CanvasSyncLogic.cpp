#include "connections/canvas/CanvasSyncLogic.h"

#include "connections/DatedItems.h"

namespace pobblewig {

namespace {

constexpr QStringView dueKey = u"dueAt";

}

std::optional<TimePoint> CanvasSyncLogic::dueDate(const ReferenceItem& item)
{
    return DatedItems::date(item, dueKey);
}

std::vector<ReferenceItem> CanvasSyncLogic::upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit)
{
    return DatedItems::within(items,
        { .path = deadlinesPath,
            .key = dueKey,
            .from = now,
            .to = now + std::chrono::days(withinDays),
            .limit = limit });
}

} // namespace pobblewig
