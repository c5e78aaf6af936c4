#include "activity/ActivityDayLogic.h"

#include <algorithm>
#include <ranges>

namespace pobblewig {

namespace {

constexpr int daysOfWeek = 7;

TimePoint startOfDay(QDate day, const Calendar& calendar)
{
    const auto start = day.startOfDay(calendar.timeZone);
    return TimePoint(std::chrono::milliseconds(start.toMSecsSinceEpoch()));
}

TimePoint endOf(const ActivitySession& session)
{
    const auto lasted = std::chrono::milliseconds(qint64(session.durationSeconds * 1000));
    return std::max(session.startedAt, session.endedAt.value_or(session.startedAt + lasted));
}

/// The part of a session between two times, which it must meet.
ActivitySession cut(ActivitySession session, TimePoint from, TimePoint to)
{
    const auto end = std::min(endOf(session), to);
    session.startedAt = std::max(session.startedAt, from);
    session.endedAt = end;
    session.durationSeconds = std::chrono::duration<double>(end - session.startedAt).count();
    return session;
}

} // namespace

std::vector<ActivitySpan> ActivityDayLogic::between(
    const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to)
{
    std::vector<ActivitySpan> spans;
    for (const auto& session : sessions) {
        const auto begins = std::max(session.startedAt, from);
        const auto ends = std::min(endOf(session), to);
        if (begins < ends)
            spans.push_back({ session.applicationName,
                classify(session.bundleIdentifier, session.windowTitle), begins, ends });
    }
    std::ranges::stable_sort(spans, {}, &ActivitySpan::from);
    return spans;
}

ActivityDay ActivityDayLogic::day(
    const std::vector<ActivitySession>& sessions, QDate day, const Calendar& calendar)
{
    const auto start = startOfDay(day, calendar);
    const auto end = startOfDay(day.addDays(1), calendar);
    return { .day = day, .start = start, .end = end, .spans = between(sessions, start, end) };
}

std::vector<ActivityDay> ActivityDayLogic::week(
    const std::vector<ActivitySession>& sessions, QDate day, const Calendar& calendar)
{
    const auto sinceFirst =
        (day.dayOfWeek() - int(calendar.locale.firstDayOfWeek()) + daysOfWeek) % daysOfWeek;
    const auto first = day.addDays(-sinceFirst);
    std::vector<ActivityDay> days;
    days.reserve(daysOfWeek);
    for (int number = 0; number < daysOfWeek; ++number)
        days.push_back(ActivityDayLogic::day(sessions, first.addDays(number), calendar));
    return days;
}

std::map<AppCategory, double> ActivityDayLogic::categories(const std::vector<ActivityDay>& days)
{
    std::map<AppCategory, double> seconds;
    for (const auto& day : days) {
        for (const auto& span : day.spans)
            seconds[span.category] += span.seconds();
    }
    return seconds;
}

std::vector<ApplicationTime> ActivityDayLogic::applications(const std::vector<ActivityDay>& days)
{
    std::map<QString, ApplicationTime> byName;
    for (const auto& day : days) {
        for (const auto& span : day.spans) {
            auto& time = byName[span.application];
            time = { span.application, span.category, time.seconds + span.seconds() };
        }
    }
    std::vector<ApplicationTime> times;
    std::ranges::copy(std::views::values(byName), std::back_inserter(times));
    std::ranges::stable_sort(times, std::ranges::greater(), &ApplicationTime::seconds);
    return times;
}

std::vector<ActivitySession> ActivityDayLogic::without(
    std::vector<ActivitySession> sessions, TimePoint from, TimePoint to)
{
    std::vector<ActivitySession> kept;
    kept.reserve(sessions.size());
    for (auto& session : sessions) {
        const auto begins = session.startedAt;
        const auto ends = endOf(session);
        if (ends <= from || begins >= to) {
            kept.push_back(std::move(session));
            continue;
        }
        if (ends > to)
            kept.push_back(cut(session, to, ends));
        if (begins < from) {
            auto before = cut(session, begins, from);
            before.id = ends > to ? QUuid::createUuid() : before.id;
            kept.push_back(std::move(before));
        }
    }
    return kept;
}

} // namespace pobblewig
