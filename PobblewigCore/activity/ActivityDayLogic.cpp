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

bool isInUse(const ActivitySpan& span)
{
    return !span.isIdle;
}

/// Adds the part of a span between two times, if it has any.
void add(std::vector<ActivitySpan>& spans, ActivitySpan span, TimePoint from, TimePoint to)
{
    span.from = std::max(span.from, from);
    span.to = std::min(span.to, to);
    if (span.from < span.to)
        spans.push_back(std::move(span));
}

std::optional<std::vector<ActivityIdle>> cut(
    const std::optional<std::vector<ActivityIdle>>& idle, TimePoint from, TimePoint to)
{
    std::vector<ActivityIdle> kept;
    for (const auto& span : idle.value_or(std::vector<ActivityIdle>())) {
        if (span.from < to && span.to > from)
            kept.push_back({ std::max(span.from, from), std::min(span.to, to) });
    }
    return kept.empty() ? std::nullopt : std::optional(std::move(kept));
}

/// The part of a session between two times, which it must meet.
ActivitySession cut(ActivitySession session, TimePoint from, TimePoint to)
{
    const auto end = std::min(endOf(session), to);
    session.startedAt = std::max(session.startedAt, from);
    session.endedAt = end;
    session.idle = cut(session.idle, session.startedAt, end);
    session.durationSeconds = std::chrono::duration<double>(end - session.startedAt).count();
    return session;
}

} // namespace

std::vector<ActivitySpan> ActivityDayLogic::between(
    const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to)
{
    std::vector<ActivitySpan> spans;
    for (const auto& session : sessions) {
        ActivitySpan span { .application = session.applicationName,
            .category = classify(session.bundleIdentifier, session.windowTitle),
            .from = session.startedAt };
        const auto ends = endOf(session);
        for (const auto& idle : session.idle.value_or(std::vector<ActivityIdle>())) {
            span.to = std::min(idle.from, ends);
            add(spans, span, from, to);
            add(spans,
                { span.application, span.category, idle.from, std::min(idle.to, ends), true }, from,
                to);
            span.from = idle.to;
        }
        span.to = ends;
        add(spans, span, from, to);
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
        for (const auto& span : day.spans | std::views::filter(isInUse))
            seconds[span.category] += span.seconds();
    }
    return seconds;
}

std::vector<ApplicationTime> ActivityDayLogic::applications(const std::vector<ActivityDay>& days)
{
    std::map<QString, ApplicationTime> byName;
    for (const auto& day : days) {
        for (const auto& span : day.spans | std::views::filter(isInUse)) {
            auto& time = byName[span.application];
            time = { span.application, span.category, time.seconds + span.seconds() };
        }
    }
    std::vector<ApplicationTime> times;
    std::ranges::copy(std::views::values(byName), std::back_inserter(times));
    std::ranges::stable_sort(times, std::ranges::greater(), &ApplicationTime::seconds);
    return times;
}

double ActivityDayLogic::idle(const std::vector<ActivityDay>& days)
{
    double seconds = 0;
    for (const auto& day : days) {
        for (const auto& span : day.spans)
            seconds += span.isIdle ? span.seconds() : 0;
    }
    return seconds;
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
