#include "interventions/ProactiveLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

using ProactiveLogic::Circumstances;
using ProactiveLogic::QuickAnswer;
using ProactiveLogic::Silence;

constexpr auto shyFor = std::chrono::days(7);
/// Half as often as every day.
constexpr int shyDays = 2;
constexpr auto snooze = std::chrono::hours(2);
constexpr auto answeringTime = std::chrono::hours(1);
/// "-2026-03-01".
constexpr qsizetype dayLength = 11;

bool isToday(const InterventionRecord& record, const Circumstances& circumstances)
{
    const auto& calendar = circumstances.calendar;
    return calendar.day(record.firedAt) == calendar.day(circumstances.now);
}

std::vector<InterventionRecord> ofKind(
    const std::vector<InterventionRecord>& records, const QString& triggerType)
{
    std::vector<InterventionRecord> found;
    std::ranges::copy_if(records, std::back_inserter(found),
        [&](const auto& record) { return record.triggerType == triggerType; });
    return found;
}

/// Whether the user has turned down two in a row within a week, and the latest one is too new for
/// half the usual pace.
bool isUnwelcome(const QString& triggerType, const Circumstances& circumstances)
{
    const auto records = ofKind(circumstances.records, triggerType);
    const auto wasTurnedDown = [&](const auto& a, const auto& b) {
        return a.outcome == InterventionOutcome::dismissed && b.outcome == a.outcome
            && circumstances.now - a.firedAt < shyFor;
    };
    if (std::ranges::adjacent_find(records, wasTurnedDown) == records.end())
        return false;
    const auto& calendar = circumstances.calendar;
    return calendar.day(records.front().firedAt).daysTo(calendar.day(circumstances.now)) < shyDays;
}

/// The key of a reminder without its day.
QString subject(const QString& reminderKey)
{
    return reminderKey.chopped(std::min(dayLength, reminderKey.size()));
}

bool isPutOff(const InterventionRecord& record)
{
    return record.outcome == InterventionOutcome::snoozed && record.suppressUntil
        && record.reminderKey;
}

} // namespace

auto ProactiveLogic::silence(const QString& triggerType, const Circumstances& circumstances)
    -> std::optional<Silence>
{
    if (circumstances.isPaused)
        return Silence::paused;
    if (circumstances.mode == CoachMode::doNotDisturb)
        return Silence::doNotDisturb;
    if (circumstances.occupation == Occupation::fullScreen)
        return Silence::fullScreen;
    if (circumstances.occupation == Occupation::call)
        return Silence::call;
    const auto today = std::ranges::count_if(
        circumstances.records, [&](const auto& record) { return isToday(record, circumstances); });
    if (today >= mostMessagesPerDay)
        return Silence::enoughForToday;
    return isUnwelcome(triggerType, circumstances) ? std::optional(Silence::unwelcome)
                                                   : std::nullopt;
}

bool ProactiveLogic::waitsForAnswer(const std::vector<InterventionRecord>& records, TimePoint now)
{
    return !records.empty() && !records.front().outcome
        && now - records.front().firedAt < answeringTime;
}

QString ProactiveLogic::inWords(Silence silence)
{
    switch (silence) {
    case Silence::paused:
        return QStringLiteral("observation is paused");
    case Silence::doNotDisturb:
        return QStringLiteral("the mode is “Do not disturb”");
    case Silence::fullScreen:
        return QStringLiteral("a full-screen window is in front");
    case Silence::call:
        return QStringLiteral("the user is in a call");
    case Silence::enoughForToday:
        return QStringLiteral("%1 messages were sent today").arg(mostMessagesPerDay);
    case Silence::unwelcome:
        return QStringLiteral("the last two were answered “Not now”, so it is half as often for a "
                              "week");
    }
    Q_UNREACHABLE();
}

InterventionOutcome ProactiveLogic::outcome(QuickAnswer answer)
{
    switch (answer) {
    case QuickAnswer::gotIt:
        return InterventionOutcome::accepted;
    case QuickAnswer::notNow:
        return InterventionOutcome::dismissed;
    case QuickAnswer::thatsWrong:
        return InterventionOutcome::contextCorrected;
    case QuickAnswer::remindLater:
        return InterventionOutcome::snoozed;
    }
    Q_UNREACHABLE();
}

QString ProactiveLogic::inWords(QuickAnswer answer)
{
    switch (answer) {
    case QuickAnswer::gotIt:
        return QStringLiteral("Got it");
    case QuickAnswer::notNow:
        return QStringLiteral("Not now");
    case QuickAnswer::thatsWrong:
        return QStringLiteral("That's wrong");
    case QuickAnswer::remindLater:
        return QStringLiteral("Remind me later");
    }
    Q_UNREACHABLE();
}

TimePoint ProactiveLogic::snoozedUntil(const InterventionRecord& record, TimePoint now)
{
    const TimePoint usual = now + snooze;
    return record.dueAt && *record.dueAt > now ? std::min(usual, now + (*record.dueAt - now) / 2)
                                               : usual;
}

std::set<QString> ProactiveLogic::remindedKeys(
    const std::set<QString>& keys, const std::vector<InterventionRecord>& records, TimePoint now)
{
    auto counting = keys;
    for (const auto& record : records) {
        if (isPutOff(record) && *record.suppressUntil <= now)
            counting.erase(*record.reminderKey);
    }
    return counting;
}

const InterventionRecord* ProactiveLogic::putOff(
    const std::vector<InterventionRecord>& records, const QString& reminderKey, TimePoint now)
{
    const auto found = std::ranges::find_if(records, [&](const auto& record) {
        return isPutOff(record) && subject(*record.reminderKey) == subject(reminderKey)
            && *record.suppressUntil <= now;
    });
    return found == records.end() ? nullptr : &*found;
}

bool ProactiveLogic::isSettled(const std::vector<InterventionRecord>& records,
    const QString& reminderKey, TimePoint dueAt, TimePoint now)
{
    return std::ranges::any_of(records, [&](const auto& record) {
        if (!record.reminderKey || subject(*record.reminderKey) != subject(reminderKey))
            return false;
        const auto isDone = record.outcome == InterventionOutcome::accepted
            || record.outcome == InterventionOutcome::contextCorrected;
        return (isDone && record.dueAt == dueAt)
            || (isPutOff(record) && *record.suppressUntil > now);
    });
}

} // namespace pobblewig
