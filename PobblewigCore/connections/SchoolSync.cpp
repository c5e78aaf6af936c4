#include "connections/SchoolSync.h"

#include "connections/DatedItems.h"
#include "connections/ItemDetails.h"
#include "connections/SyncSchedule.h"

#include "foundation/ISO8601.h"

#include <span>

namespace pobblewig {

namespace {

constexpr auto longestRest = std::chrono::days(1);
constexpr auto keptWhenUnread = std::chrono::days(30);
constexpr size_t itemsAtOnce = 300;
constexpr auto keptReminders = std::chrono::days(60);

/// A reminder's key ends in its day.
void dropOld(std::set<QString>& reminderKeys, TimePoint now)
{
    const auto day = ISO8601::format(now - keptReminders).first(10);
    std::erase_if(reminderKeys, [&](const auto& key) { return key.right(10) < day; });
}

bool hasSameContent(const ReferenceItem& a, const ReferenceItem& b)
{
    return a.title == b.title && a.summary == b.summary && a.details == b.details
        && a.source == b.source;
}

} // namespace

SchoolSync::SchoolSync(const Parts& parts)
    : m_source(parts.source)
    , m_reference(parts.reference)
    , m_file(parts.directory, parts.fileName, parts.contents)
    , m_state(m_file.load<SchoolSyncState>())
{
}

bool SchoolSync::isDue(TimePoint now, int intervalMinutes) const
{
    if (m_state.retryAt && *m_state.retryAt - now < longestRest)
        return now >= *m_state.retryAt;
    return SyncSchedule::syncDue(m_state.lastSyncAt, now, intervalMinutes);
}

Task<> SchoolSync::take(std::vector<SchoolItem> items, TimePoint now)
{
    std::ranges::move(items, std::back_inserter(m_waiting));
    if (m_waiting.size() >= itemsAtOnce)
        co_await finishTaking(now);
}

Task<> SchoolSync::finishTaking(TimePoint now)
{
    auto items = std::exchange(m_waiting, {});
    ReferenceFindings findings;
    auto& known = titles();
    const auto renamedBefore = known.renamed().size();
    for (auto& found : items) {
        auto item = known.titled(std::move(found));
        const auto* old = m_reference.itemTitled(item.path, item.title);
        if (old && hasSameContent(*old, item))
            continue;
        item.updatedAt = now;
        findings.items.push_back(std::move(item));
    }
    const auto renamed = std::span(known.renamed()).subspan(renamedBefore);
    findings.gone.assign(renamed.begin(), renamed.end());
    if (findings.items.empty())
        co_return;
    auto writing = m_reference.take(std::move(findings));
    m_knownRevision = m_reference.revision();
    co_await writing;
}

Task<> SchoolSync::sweep(Reading reading, TimePoint now)
{
    ReferenceFindings findings;
    for (const auto& item : m_reference.allItems()) {
        if (item.path != deadlinesPath || item.source != m_source.name)
            continue;
        const auto due = DatedItems::date(item, u"dueAt");
        const auto isGone =
            reading.readCourses.contains(ItemDetails::text(item, m_source.courseKey))
            || (due && *due + keptWhenUnread < now);
        if (isGone && !reading.seenWork.contains(ItemDetails::text(item, m_source.workKey)))
            findings.gone.push_back(item.id);
    }
    if (!findings.gone.empty())
        co_await m_reference.take(std::move(findings));
}

void SchoolSync::succeed(const Reading& reading, TimePoint now)
{
    m_state.lastSyncAt = now;
    m_state.lastStatus = QStringLiteral("ok");
    m_state.lastError.reset();
    m_state.retryAt.reset();
    m_state.courseCount = reading.courseCount;
    m_state.deadlineCount = reading.deadlineCount;
    dropOld(m_state.remindedKeys, now);
    m_titles.reset();
    m_file.save(m_state);
}

void SchoolSync::fail(const QString& error, std::optional<TimePoint> retryAt, TimePoint now)
{
    m_state.lastSyncAt = now;
    m_state.lastStatus = QStringLiteral("failed");
    m_state.lastError = error;
    m_state.retryAt = retryAt;
    m_titles.reset();
    m_file.save(m_state);
}

bool SchoolSync::reserve(const QString& reminderKey)
{
    if (!m_state.remindedKeys.insert(reminderKey).second)
        return false;
    m_file.save(m_state);
    return true;
}

void SchoolSync::release(const QString& reminderKey)
{
    if (m_state.remindedKeys.erase(reminderKey) > 0)
        m_file.save(m_state);
}

void SchoolSync::readAgain()
{
    auto kept = m_file.loadAgain<SchoolSyncState>();
    if (!kept)
        return;
    kept->remindedKeys.merge(m_state.remindedKeys);
    m_state = *std::move(kept);
    m_file.save(m_state);
}

SchoolTitles& SchoolSync::titles()
{
    const auto revision = m_reference.revision();
    if (!m_titles || m_knownRevision != revision)
        m_titles.emplace(m_reference.allItems());
    m_knownRevision = revision;
    return *m_titles;
}

} // namespace pobblewig
