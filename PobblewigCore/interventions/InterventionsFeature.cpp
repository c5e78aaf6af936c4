#include "interventions/InterventionsFeature.h"

#include "connections/DeadlineLogic.h"
#include "connections/ItemDetails.h"
#include "connections/ShortDate.h"
#include "foundation/ISO8601.h"
#include "foundation/Log.h"
#include "interventions/BriefingLogic.h"
#include "interventions/InterventionTexts.h"
#include "memory/MemoryTiers.h"
#include "memory/SessionBoundary.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

namespace {

using ProactiveLogic::QuickAnswer;

const auto switchedOff = QStringLiteral("switched off");
const auto briefingTrigger = QStringLiteral("daily_briefing");
constexpr size_t publishedRecords = 5;
/// A model that keeps failing is asked less often, since each attempt may cost money.
constexpr int patience = 3;
constexpr auto restAfterFailures = std::chrono::minutes(5);

QString notSent(const QString& reason)
{
    return QStringLiteral("not sent: %1").arg(reason);
}

DatedObservation observation(const QString& summary, std::vector<QString> facts, TimePoint now)
{
    return {
        .id = QUuid::createUuid(),
        .occurredAt = now,
        .recordedAt = now,
        .summary = summary,
        .observedFacts = std::move(facts),
        .source = ObservationSource::systemObserved,
    };
}

} // namespace

InterventionsFeature::InterventionsFeature(Parts parts)
    : m(std::move(parts))
    , m_settings(m.stores.settings)
    , m_memory(m.stores.memory)
    , m_composer(m.stores, m.moment, m.models)
    , m_service(m.directory)
{
    m_service.setCompose([this](AccountabilityRule rule, double duration) {
        return composeIntervention(std::move(rule), duration);
    });
}

Task<> InterventionsFeature::tick()
{
    m_service.readAgain();
    for (const auto& source : m.sources)
        co_await checkDeadlines(source);
}

std::vector<QString> InterventionsFeature::situation(TimePoint now) const
{
    return InterventionTexts::situation(m_service.records(), now);
}

std::vector<Tool> InterventionsFeature::tools()
{
    return InterventionTexts::tools(m_service, m.moment);
}

void InterventionsFeature::publish(PublishedState& state) const
{
    state.set(InterventionsState { m_service.recentRecords(publishedRecords), verdicts() });
}

Task<> InterventionsFeature::checkDeadlines(DeadlineSource source)
{
    if (!(m_settings.settings().*source.isEnabled))
        co_return keepVerdict(source.triggerType, switchedOff);
    const auto rest = m_notBefore.find(source.triggerType);
    if (rest != m_notBefore.end() && m.moment.now() < rest->second)
        co_return;
    if (!nextReminder(source))
        co_return keepVerdict(source.triggerType, QStringLiteral("nothing to remind of"));
    const auto silent = co_await silence(source.triggerType);
    const auto reminder = nextReminder(source);
    if (silent)
        co_return keepVerdict(source.triggerType, notSent(ProactiveLogic::inWords(*silent)));
    if (reminder)
        co_await remind(source, *reminder);
}

auto InterventionsFeature::silence(QString triggerType)
    -> Task<std::optional<ProactiveLogic::Silence>>
{
    auto occupation = Occupation::none;
    if (m.occupation)
        occupation = co_await m.occupation->occupation();
    const auto now = m.moment.now();
    const auto calendar = m.moment.calendar();
    co_return ProactiveLogic::silence(triggerType,
        { .now = now,
            .calendar = calendar,
            .isPaused = m_settings.isPaused(now),
            .mode = m_settings.settings().mode,
            .occupation = occupation,
            .records = m_service.records() });
}

auto InterventionsFeature::nextReminder(const DeadlineSource& source) const
    -> std::optional<Reminder>
{
    const auto now = m.moment.now();
    const auto calendar = m.moment.calendar();
    const auto& records = m_service.records();
    const auto reminded =
        ProactiveLogic::remindedKeys(source.feature.record().state().remindedKeys, records, now);
    const auto hours = m_settings.settings().*source.windowHours;
    for (const auto& item :
        source.candidates(m_memory.reference.allItems(), now, hours, reminded, calendar)) {
        const auto due = DeadlineLogic::dueDate(item);
        auto key = source.reminderKey(item, now, calendar);
        if (due && !ProactiveLogic::isSettled(records, key, *due, now))
            return Reminder { item, *due, std::move(key) };
    }
    return std::nullopt;
}

Task<> InterventionsFeature::remind(DeadlineSource source, Reminder reminder)
{
    auto& record = source.feature.record();
    if (const auto* before =
            ProactiveLogic::putOff(m_service.records(), reminder.key, m.moment.now())) {
        record.release(reminder.key);
        m_service.endSnooze(before->id);
    }
    // Reserved before composing, so that another poll in the meantime does not send it too.
    if (!record.reserve(reminder.key))
        co_return;
    const auto message = co_await composeDeadlineCheckin(source, reminder);
    const auto now = m.moment.now();
    if (!message) {
        record.release(reminder.key);
        Log::line(QStringLiteral("buddy: %1 deadline check-in compose failed: %2")
                      .arg(source.logName, message.error()));
        if (++m_failures[source.triggerType] >= patience)
            m_notBefore[source.triggerType] = now + restAfterFailures;
        co_return keepVerdict(source.triggerType, notSent(message.error()));
    }
    m_failures.erase(source.triggerType);
    m_notBefore.erase(source.triggerType);
    const auto& title = reminder.item.title;
    fire({ .id = QUuid::createUuid(),
             .triggerType = source.triggerType,
             .firedAt = now,
             .message = *message,
             .reminderKey = reminder.key,
             .dueAt = reminder.dueAt },
        observation(QStringLiteral("%1 deadline reminder: %2").arg(source.recordName, title),
            { QStringLiteral("Deadline approaching: %1").arg(title),
                QStringLiteral("Due %1, unsubmitted").arg(ISO8601::format(reminder.dueAt)) },
            now),
        true);
}

auto InterventionsFeature::composeDeadlineCheckin(DeadlineSource source, Reminder reminder)
    -> Task<InterventionComposer::Text>
{
    const auto left = reminder.dueAt - m.moment.now();
    const InterventionPrompts::Deadline deadline {
        .service = source.service,
        .title = reminder.item.title,
        .course = ItemDetails::text(reminder.item, u"course"),
        .due = shortDateTime(reminder.dueAt, m.moment.calendar()),
        .hours = std::chrono::floor<std::chrono::hours>(left).count(),
        .mode = displayName(m_settings.settings().mode),
    };
    return m_composer.compose(InterventionPrompts::deadline(deadline, m_composer.background()));
}

Task<> InterventionsFeature::deliverDailyBriefingIfDue()
{
    if (const auto reason = reasonAgainstBriefing())
        co_return keepVerdict(briefingTrigger, *reason);
    const auto silent = co_await silence(briefingTrigger);
    if (silent)
        co_return keepVerdict(briefingTrigger, notSent(ProactiveLogic::inWords(*silent)));
    if (reasonAgainstBriefing())
        co_return;
    const auto day = SessionBoundary::dayKey(m.moment.now(), m.moment.calendar());
    keepBriefingDay(day);
    const auto message = co_await composeDailyBriefing();
    if (!message) {
        keepBriefingDay(std::nullopt);
        Log::line(QStringLiteral("buddy: daily briefing compose failed: %1").arg(message.error()));
        co_return keepVerdict(briefingTrigger, notSent(message.error()));
    }
    const auto now = m.moment.now();
    fire({ .id = QUuid::createUuid(),
             .triggerType = briefingTrigger,
             .firedAt = now,
             .message = *message },
        observation(QStringLiteral("Daily briefing: %1").arg(day),
            { QStringLiteral("Daily briefing delivered for %1").arg(day) }, now),
        false);
}

std::optional<QString> InterventionsFeature::reasonAgainstBriefing() const
{
    const auto& settings = m_settings.settings();
    const auto today = SessionBoundary::dayKey(m.moment.now(), m.moment.calendar());
    if (!settings.dailyBriefingEnabled)
        return switchedOff;
    if (settings.lastDailyBriefingDayKey == today)
        return QStringLiteral("today's is done");
    if (!BriefingLogic::hasSource(settings, m_memory.reference.allItems()))
        return notSent(QStringLiteral("nothing is connected that tells of the day"));
    if (ProactiveLogic::waitsForAnswer(m_service.records(), m.moment.now()))
        return notSent(QStringLiteral("another message waits for its answer"));
    return std::nullopt;
}

auto InterventionsFeature::composeDailyBriefing() -> Task<InterventionComposer::Text>
{
    const auto briefing =
        BriefingLogic::briefing(m_memory.reference.allItems(), m.moment.now(), m.moment.calendar());
    return m_composer.compose(InterventionPrompts::briefing(briefing, m_composer.background()));
}

void InterventionsFeature::keepBriefingDay(std::optional<QString> dayKey)
{
    m_settings.update(
        [&](AppSettings& settings) { settings.lastDailyBriefingDayKey = std::move(dayKey); });
}

void InterventionsFeature::answer(QUuid recordID, QuickAnswer answer)
{
    const auto* record = m_service.record(recordID);
    if (!record)
        return;
    if (answer == QuickAnswer::remindLater) {
        const auto until = ProactiveLogic::snoozedUntil(*record, m.moment.now());
        m_service.recordOutcome(
            recordID, InterventionOutcome::snoozed, ProactiveLogic::inWords(answer), until);
        m.say(QStringLiteral("OK, I'll come back to it at %1.")
                  .arg(shortDateTime(until, m.moment.calendar())));
    }
    recordInterventionOutcome(
        recordID, ProactiveLogic::outcome(answer), ProactiveLogic::inWords(answer));
    if (answer == QuickAnswer::thatsWrong)
        m.say(QStringLiteral("Sorry about that. What did I get wrong?"));
}

void InterventionsFeature::recordInterventionOutcome(
    QUuid recordID, InterventionOutcome outcome, std::optional<QString> userResponse)
{
    const auto* record = m_service.record(recordID);
    if (!record)
        return;
    m_service.recordOutcome(recordID, outcome, std::move(userResponse), record->suppressUntil);
    note(observation(
        QStringLiteral("Proactive message %1").arg(EnumNames::text(outcome)), {}, m.moment.now()));
    changed();
}

auto InterventionsFeature::composeIntervention(AccountabilityRule rule, double duration)
    -> Task<InterventionComposer::Text>
{
    const auto app = m.currentApp ? m.currentApp() : QString();
    const auto& records = m_service.records();
    const auto last = std::ranges::find(records, rule.id, &InterventionRecord::ruleID);
    const auto hasOutcome = last != records.end() && last->outcome;
    const InterventionPrompts::RuleCheckin checkin {
        .rule = rule.name,
        .subject = app.isEmpty() ? QStringLiteral("an app") : app,
        .minutes = int(duration / 60),
        .mode = displayName(m_settings.settings().mode),
        .style = InterventionTexts::style(rule.responseStyle),
        .lastOutcome = hasOutcome ? std::optional(EnumNames::text(*last->outcome)) : std::nullopt,
    };
    return m_composer.compose(InterventionPrompts::checkin(checkin, m_composer.background()));
}

void InterventionsFeature::fire(
    InterventionRecord record, DatedObservation observation, bool isAnnounced)
{
    m_service.recordFired(record);
    note(std::move(observation));
    keepVerdict(record.triggerType, QStringLiteral("sent"));
    m.deliver(record, isAnnounced);
}

void InterventionsFeature::note(DatedObservation observation)
{
    if (m_settings.settings().memoryEnabled)
        m_memory.record(std::move(observation));
}

void InterventionsFeature::keepVerdict(const QString& triggerType, const QString& verdict)
{
    auto& [kept, since] = m_verdicts[triggerType];
    if (kept == verdict)
        return;
    kept = verdict;
    since = m.moment.now();
    changed();
}

QStringList InterventionsFeature::verdicts() const
{
    QStringList lines;
    const auto calendar = m.moment.calendar();
    for (const auto& [triggerType, verdict] : m_verdicts)
        lines << QStringLiteral("%1: %2 (since %3)")
                     .arg(InterventionTexts::kind(triggerType), verdict.first,
                         shortDateTime(verdict.second, calendar));
    return lines;
}

} // namespace pobblewig
