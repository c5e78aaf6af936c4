#include "connections/ConnectionsFeature.h"

#include "connections/CalendarSyncLogic.h"
#include "connections/CanvasSyncLogic.h"
#include "foundation/Text.h"

#include <QStringList>

namespace pobblewig {

namespace {

constexpr int daysAhead = 14;
constexpr int reminderHours = 48;
constexpr int mostItems = 3;
constexpr qsizetype itemCharacters = 160;

QString described(const ReferenceItem& item)
{
    const auto entry = item.summary.isEmpty()
        ? item.title
        : QStringLiteral("%1 — %2").arg(item.title, item.summary);
    return Text::firstCharacters(Text::onOneLine(entry), itemCharacters);
}

/// Adds nothing if there are no items.
void addLine(
    std::vector<QString>& lines, const QString& heading, const std::vector<ReferenceItem>& items)
{
    QStringList entries;
    for (const auto& item : items)
        entries.append(described(item));
    if (!entries.isEmpty())
        lines.push_back(heading + entries.join(QStringLiteral(" | ")));
}

} // namespace

ConnectionsFeature::ConnectionsFeature(const ReferenceMemoryStore& reference, const Moment& moment)
    : m_reference(reference)
    , m_moment(moment)
{
}

std::vector<QString> ConnectionsFeature::situation(TimePoint now) const
{
    const auto& items = m_reference.allItems();
    std::vector<QString> lines;
    addLine(lines, QStringLiteral("Upcoming deadlines (Canvas): "),
        CanvasSyncLogic::upcomingDeadlines(items, now, daysAhead, mostItems));
    addLine(lines, QStringLiteral("Today's events: "),
        CalendarSyncLogic::todaysEvents(items, now, m_moment.calendar()));
    addLine(lines, QStringLiteral("Upcoming events (Calendar): "),
        CalendarSyncLogic::upcomingEvents(items, now, daysAhead, mostItems));
    addLine(lines, QStringLiteral("Due reminders: "),
        CalendarSyncLogic::dueReminders(items, now, reminderHours, mostItems));
    return lines;
}

} // namespace pobblewig
