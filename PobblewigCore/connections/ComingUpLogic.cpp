#include "connections/ComingUpLogic.h"

#include "connections/DatedItems.h"
#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <set>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

using Kind = ComingUpEntry::Kind;
using Progress = ComingUpEntry::Progress;
using Timing = ComingUpEntry::Timing;

constexpr QStringView coursesPath = u"academics.courses";
constexpr size_t colorCount = size_t(AccentChoice::graphite) + 1;

struct Source {
    QStringView path;
    Kind kind;
    QStringView dateKey;
    QStringView groupKey;
};

constexpr std::array sources {
    Source { u"academics.deadlines", Kind::deadline, u"dueAt", u"course" },
    Source { u"calendar.events", Kind::event, u"startAt", u"calendar" },
    Source { u"calendar.reminders", Kind::reminder, u"dueAt", u"list" },
};

const JSONValue& detail(const ReferenceItem& item, QStringView key)
{
    static const JSONValue missing;
    const auto found = item.details.find(key.toString());
    return found == item.details.end() ? missing : found->second;
}

bool isSet(const ReferenceItem& item, QStringView key)
{
    const auto* const value = detail(item, key).boolean();
    return value && *value;
}

Progress progress(const ReferenceItem& item)
{
    const auto state = detail(item, u"submissionState").displayString();
    if (state == u"submitted")
        return Progress::submitted;
    if (state == u"graded")
        return Progress::graded;
    return isSet(item, u"completed") ? Progress::completed : Progress::open;
}

QUrl link(const ReferenceItem& item)
{
    for (const auto key : { u"htmlURL", u"alternateLink" }) {
        const auto* const text = detail(item, key).string();
        auto url = text ? QUrl(*text, QUrl::StrictMode) : QUrl();
        if (url.isValid() && url.scheme() == u"https" && !url.host().isEmpty())
            return url;
    }
    return {};
}

/// The names of the courses by what their deadlines know of them.
class Courses {
public:
    explicit Courses(const std::vector<ReferenceItem>& items)
    {
        for (const auto& item : items) {
            if (item.path == coursesPath && id(item) != ID())
                m_names.insert_or_assign(id(item), item.title);
        }
    }

    QString name(const ReferenceItem& deadline) const
    {
        const auto found = m_names.find(id(deadline));
        return found == m_names.end() ? QString() : found->second;
    }

private:
    /// The services count on their own, so an id belongs to one of them.
    using ID = std::pair<QStringView, QString>;

    static ID id(const ReferenceItem& item)
    {
        for (const QStringView key : { u"canvasCourseID", u"classroomCourseID" }) {
            if (const auto& id = detail(item, key); !id.isNull())
                return { key, id.displayString() };
        }
        return {};
    }

    std::map<ID, QString> m_names;
};

ComingUpEntry entry(const ReferenceItem& item, const Source& source, const Courses& courses)
{
    const auto* const named = detail(item, source.groupKey).string();
    const auto* const points = detail(item, u"pointsPossible").number();
    return { .kind = source.kind,
        .title = Text::foreignLine(item.title),
        .group = Text::foreignLine(named ? *named : courses.name(item)),
        .time = DatedItems::date(item, source.dateKey),
        .timing = isSet(item, u"allDay") ? Timing::none : Timing::at,
        .points = points ? std::optional(*points) : std::nullopt,
        .link = link(item),
        .progress = progress(item) };
}

/// Each group has the colour that its name stands for, unless an earlier name has taken it.
std::map<QString, AccentChoice> colors(const std::set<QString>& groups)
{
    std::map<QString, AccentChoice> colors;
    std::array<bool, colorCount> isTaken {};
    for (const auto& group : groups) {
        const auto wanted = qChecksum(group.toUtf8()) % colorCount;
        auto number = wanted;
        while (isTaken[number] && (number + 1) % colorCount != wanted)
            number = (number + 1) % colorCount;
        number = isTaken[number] ? wanted : number;
        isTaken[number] = true;
        colors.emplace(group, AccentChoice(number));
    }
    return colors;
}

class Agenda {
public:
    Agenda(TimePoint now, const Calendar& calendar)
        : m_now(now)
        , m_calendar(calendar)
        , m_today(calendar.day(now))
        , m_lastDay(m_today.addDays(ComingUpLogic::upcomingDays))
    {
    }

    void addDue(ComingUpEntry entry)
    {
        if (!entry.time) {
            if (entry.kind == Kind::reminder && !entry.isDone())
                m_someTime.push_back(entry);
        } else if (isNear(*entry.time)) {
            if (entry.kind == Kind::reminder && isMidnight(*entry.time))
                entry.timing = Timing::none;
            addDated(entry);
        }
    }

    void addEvent(ComingUpEntry entry, std::optional<TimePoint> end)
    {
        if (!entry.time)
            return;
        const auto start = *entry.time;
        const auto until = std::max(end.value_or(start), start);
        const auto isAllDay = entry.timing == Timing::none;
        if (start > m_now + horizon || until < m_now - (isAllDay ? margin : 0ms))
            return;
        const auto first = m_calendar.day(start);
        // The end of an all-day event is the beginning of its last day.
        const auto last = m_calendar.day(until > start && !isAllDay ? until - 1ms : until);
        for (auto day = std::max(first, m_today); day <= std::min(last, m_lastDay);
             day = day.addDays(1)) {
            if (!isAllDay && day != first) {
                entry.timing = day == last ? Timing::until : Timing::none;
                entry.time = day == last ? until : start;
            }
            m_days[day].push_back(entry);
        }
    }

    std::vector<ComingUpSection> sections() &&
    {
        std::vector<ComingUpSection> sections;
        const auto add = [&](ComingUpSection section) {
            std::ranges::stable_sort(section.entries, {}, order);
            if (!section.entries.empty())
                sections.push_back(std::move(section));
        };
        add({ .kind = ComingUpSection::Kind::overdue, .entries = std::move(m_overdue) });
        for (auto& [day, entries] : m_days)
            add({ .day = day, .entries = std::move(entries) });
        add({ .kind = ComingUpSection::Kind::someTime, .entries = std::move(m_someTime) });
        return sections;
    }

private:
    static constexpr std::chrono::milliseconds margin = std::chrono::days(2);
    static constexpr auto horizon = std::chrono::days(ComingUpLogic::upcomingDays) + margin;

    static std::pair<bool, std::optional<TimePoint>> order(const ComingUpEntry& entry)
    {
        const auto hasTime = entry.timing != Timing::none;
        return { hasTime, hasTime ? entry.time : std::nullopt };
    }

    /// Spares most of a long history the question on which day it was.
    bool isNear(TimePoint time) const
    {
        return time > m_now - std::chrono::days(ComingUpLogic::overdueDays) - margin
            && time < m_now + horizon;
    }

    /// A reminder for a day as a whole is due when the day begins.
    bool isMidnight(TimePoint time) const
    {
        const auto moment = m_calendar.dateTime(time);
        return moment == moment.date().startOfDay(m_calendar.timeZone);
    }

    void addDated(const ComingUpEntry& entry)
    {
        const auto day = m_calendar.day(*entry.time);
        const auto isPast = entry.timing == Timing::none ? day < m_today : *entry.time < m_now;
        if (isPast && !entry.isDone()) {
            if (day >= m_today.addDays(-ComingUpLogic::overdueDays))
                m_overdue.push_back(entry);
        } else if (day >= m_today && day <= m_lastDay) {
            m_days[day].push_back(entry);
        }
    }

    TimePoint m_now;
    const Calendar& m_calendar;
    QDate m_today;
    QDate m_lastDay;
    std::vector<ComingUpEntry> m_overdue;
    std::map<QDate, std::vector<ComingUpEntry>> m_days;
    std::vector<ComingUpEntry> m_someTime;
};

} // namespace

std::vector<ComingUpSection> ComingUpLogic::sections(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar)
{
    const Courses courses(items);
    Agenda agenda(now, calendar);
    std::set<QString> groups;
    for (const auto& item : items) {
        const auto* const source = std::ranges::find(sources, item.path, &Source::path);
        if (source == sources.end())
            continue;
        const auto entry = pobblewig::entry(item, *source, courses);
        if (!entry.group.isEmpty())
            groups.insert(entry.group);
        if (entry.kind == Kind::event)
            agenda.addEvent(entry, DatedItems::date(item, u"endAt"));
        else
            agenda.addDue(entry);
    }
    auto sections = std::move(agenda).sections();
    const auto colors = pobblewig::colors(groups);
    for (auto& section : sections) {
        for (auto& entry : section.entries) {
            if (const auto color = colors.find(entry.group); color != colors.end())
                entry.color = color->second;
        }
    }
    return sections;
}

bool ComingUpLogic::isAskedFor(const QString& message)
{
    auto words = Text::normalized(message).remove(u'\'').remove(u'’');
    while (words.endsWith(u'?') || words.endsWith(u' '))
        words.chop(1);
    return words == u"whats due" || words == u"what is due";
}

} // namespace pobblewig
