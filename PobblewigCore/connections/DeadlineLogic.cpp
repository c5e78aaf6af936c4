#include "connections/DeadlineLogic.h"

#include "connections/DatedItems.h"
#include "connections/ItemDetails.h"
#include "connections/ShortDate.h"
#include "memory/SessionBoundary.h"

#include <limits>

namespace pobblewig {

namespace {

constexpr QStringView dueKey = u"dueAt";

bool isUnsubmitted(const ReferenceItem& item)
{
    const auto state = ItemDetails::text(item, u"submissionState");
    return state.isEmpty() || state == u"unsubmitted";
}

} // namespace

QString DeadlineLogic::summary(const Facts& facts, const Calendar& calendar)
{
    QStringList parts { QStringLiteral("Due %1").arg(shortDateTime(facts.due, calendar)) };
    parts << facts.course;
    if (facts.points)
        parts << QStringLiteral("%1 pts").arg(formatPoints(*facts.points));
    parts << facts.state;
    return parts.join(QStringLiteral(" · "));
}

QString DeadlineLogic::formatPoints(double points)
{
    return JSONValue(points).displayString();
}

std::optional<TimePoint> DeadlineLogic::dueDate(const ReferenceItem& item)
{
    return DatedItems::date(item, dueKey);
}

std::vector<ReferenceItem> DeadlineLogic::upcoming(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit)
{
    return DatedItems::within(items,
        { .path = deadlinesPath,
            .key = dueKey,
            .from = now,
            .to = now + std::chrono::days(withinDays),
            .limit = limit });
}

std::vector<ReferenceItem> DeadlineLogic::unsubmitted(const std::vector<ReferenceItem>& items,
    TimePoint now, int windowHours, const std::function<bool(const ReferenceItem&)>& isWanted)
{
    auto found = DatedItems::within(items,
        { .path = deadlinesPath,
            .key = dueKey,
            .from = now,
            .to = now + std::chrono::hours(windowHours),
            .limit = std::numeric_limits<int>::max() });
    std::erase_if(found, [&](const auto& item) { return !isUnsubmitted(item) || !isWanted(item); });
    return found;
}

QString DeadlineLogic::reminderKey(
    QStringView prefix, QStringView workKey, const ReferenceItem& item, const Day& day)
{
    const auto given = ItemDetails::text(item, workKey);
    const auto id = given.isEmpty() ? json::Codec<QUuid>::text(item.id) : given;
    return QStringLiteral("%1-%2-%3")
        .arg(prefix, id, SessionBoundary::dayKey(day.now, day.calendar));
}

} // namespace pobblewig
