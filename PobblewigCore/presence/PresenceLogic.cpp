#include "presence/PresenceLogic.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

using Activity = PresenceState::Activity;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PresenceLogic)
};

QString activityInWords(Activity activity)
{
    switch (activity) {
    case Activity::resting:
        return {};
    case Activity::working:
        return Texts::tr("thinking…");
    case Activity::reminding:
        return Texts::tr("has a reminder for you");
    case Activity::asleep:
        return Texts::tr("asleep");
    }
    Q_UNREACHABLE();
}

QString pauseInWords(const PresenceState& state, TimePoint now, const Calendar& calendar)
{
    if (!state.isPaused)
        return {};
    if (!state.pausedUntil)
        return Texts::tr("observation paused");
    return Texts::tr("observation paused until %1")
        .arg(PresenceLogic::timeInWords(*state.pausedUntil, now, calendar));
}

} // namespace

PresenceBadge PresenceLogic::badge(const PresenceState& state)
{
    if (state.activity == Activity::reminding)
        return PresenceBadge::reminder;
    if (state.activity == Activity::working)
        return PresenceBadge::working;
    if (state.isPaused)
        return PresenceBadge::paused;
    return state.activity == Activity::asleep ? PresenceBadge::asleep : PresenceBadge::none;
}

QString PresenceLogic::timeInWords(TimePoint time, TimePoint now, const Calendar& calendar)
{
    const auto moment = calendar.dateTime(time);
    const auto days = calendar.day(now).daysTo(moment.date());
    auto clock = calendar.locale.toString(moment.time(), QLocale::ShortFormat);
    if (days == 0)
        return clock;
    if (time == startOfTomorrow(now, calendar))
        return Texts::tr("tomorrow");
    const auto day = days == 1 ? Texts::tr("tomorrow")
        : days > 1 && days < 7 ? calendar.locale.standaloneDayName(moment.date().dayOfWeek())
                               : calendar.locale.toString(moment.date(), QLocale::LongFormat);
    return Texts::tr("%1, %2").arg(day, clock);
}

QString PresenceLogic::modeInWords(
    const PresenceState& state, TimePoint now, const Calendar& calendar)
{
    auto name = displayName(state.mode);
    if (!state.modeRevertAt)
        return name;
    return Texts::tr("%1 until %2").arg(name, timeInWords(*state.modeRevertAt, now, calendar));
}

QString PresenceLogic::inWords(const PresenceState& state, TimePoint now, const Calendar& calendar)
{
    QStringList parts { QStringLiteral("Pobblewig"), modeInWords(state, now, calendar),
        pauseInWords(state, now, calendar), activityInWords(state.activity) };
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

TimePoint PresenceLogic::startOfTomorrow(TimePoint now, const Calendar& calendar)
{
    const auto start = calendar.day(now).addDays(1).startOfDay(calendar.timeZone);
    return TimePoint(std::chrono::milliseconds(start.toMSecsSinceEpoch()));
}

std::optional<TimePoint> PresenceLogic::endOfPause(const AppSettings& settings, bool isPaused)
{
    const auto hasEnd = isPaused && !settings.pausedIndefinitely;
    return hasEnd ? settings.pausedUntil : std::nullopt;
}

std::optional<TimePoint> PresenceLogic::pauseEnd(
    PauseLength length, TimePoint now, const Calendar& calendar)
{
    switch (length) {
    case PauseLength::halfAnHour:
        return now + std::chrono::minutes(30);
    case PauseLength::untilTomorrow:
        return startOfTomorrow(now, calendar);
    case PauseLength::untilResumed:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
