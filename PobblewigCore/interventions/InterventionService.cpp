#include "interventions/InterventionService.h"

#include "foundation/Log.h"

#include <algorithm>

namespace pobblewig {

namespace {

QString triggerType(const AccountabilityRule& rule)
{
    return rule.trigger.kind == RuleTrigger::Kind::category ? QStringLiteral("category")
                                                            : QStringLiteral("application");
}

} // namespace

InterventionService::InterventionService(
    const std::optional<DataDirectory>& directory, Compose compose)
    : m_compose(std::move(compose))
    , m_file(directory, QStringLiteral("interventions.json"), QStringLiteral("interventions"))
    , m_data(m_file.load<InterventionsData>())
{
}

const InterventionRecord* InterventionService::record(const QUuid& id) const
{
    const auto found = std::ranges::find(m_data.records, id, &InterventionRecord::id);
    return found == m_data.records.end() ? nullptr : &*found;
}

std::vector<InterventionRecord> InterventionService::recentRecords(size_t limit) const
{
    const auto count = std::min(limit, m_data.records.size());
    return { m_data.records.begin(), m_data.records.begin() + std::ptrdiff_t(count) };
}

auto InterventionService::tick(std::vector<AccountabilityRule> rules, RuleEvaluationContext context)
    -> Task<std::optional<InterventionRecord>>
{
    pruneFiredSessionKeys(
        context.currentSession ? std::optional(context.currentSession->id) : std::nullopt);
    context.lastFiredAt = m_data.lastFiredAt;
    context.firedSessionKeys = m_data.firedSessionKeys;
    const auto fire = RuleEngine::firstFire(rules, context);
    if (!fire || !m_compose)
        co_return std::nullopt;
    const auto message = co_await m_compose(fire->rule, fire->duration);
    if (!message) {
        Log::line(QStringLiteral("buddy: intervention compose failed: %1").arg(message.error()));
        co_return std::nullopt;
    }
    InterventionRecord fired { .id = QUuid::createUuid(),
        .ruleID = fire->rule.id,
        .triggerType = triggerType(fire->rule),
        .firedAt = context.now,
        .message = *message };
    noteFired(fire->rule, context);
    recordFired(fired);
    co_return fired;
}

void InterventionService::recordFired(InterventionRecord record)
{
    const auto before =
        std::ranges::find(m_data.records, record.triggerType, &InterventionRecord::triggerType);
    if (before != m_data.records.end() && !before->outcome)
        before->outcome = InterventionOutcome::ignored;
    m_data.records.insert(m_data.records.begin(), std::move(record));
    m_data.records.resize(std::min(m_data.records.size(), maxRecords));
    m_file.save(m_data);
}

void InterventionService::recordOutcome(const QUuid& recordID, InterventionOutcome outcome,
    std::optional<QString> userResponse, std::optional<TimePoint> suppressUntil)
{
    auto* record = find(recordID);
    if (!record)
        return;
    record->outcome = outcome;
    record->userResponse = std::move(userResponse);
    record->suppressUntil = suppressUntil;
    m_file.save(m_data);
}

void InterventionService::endSnooze(const QUuid& recordID)
{
    auto* record = find(recordID);
    if (!record || !record->suppressUntil)
        return;
    record->suppressUntil.reset();
    m_file.save(m_data);
}

void InterventionService::pruneFiredSessionKeys(std::optional<QUuid> currentSessionID)
{
    const auto ending = currentSessionID ? json::Codec<QUuid>::text(*currentSessionID) : QString();
    const auto isOld = [&](const auto& key) { return ending.isEmpty() || !key.endsWith(ending); };
    if (std::erase_if(m_data.firedSessionKeys, isOld) > 0)
        m_file.save(m_data);
}

void InterventionService::readAgain()
{
    auto kept = m_file.loadAgain<InterventionsData>();
    if (!kept)
        return;
    auto& records = kept->records;
    records.insert(records.begin(), m_data.records.begin(), m_data.records.end());
    records.resize(std::min(records.size(), maxRecords));
    kept->lastFiredAt.merge(m_data.lastFiredAt);
    m_data = *std::move(kept);
    m_file.save(m_data);
}

InterventionRecord* InterventionService::find(const QUuid& id)
{
    const auto found = std::ranges::find(m_data.records, id, &InterventionRecord::id);
    return found == m_data.records.end() ? nullptr : &*found;
}

void InterventionService::noteFired(
    const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    m_data.lastFiredAt.insert_or_assign(rule.id, context.now);
    if (context.currentSession)
        m_data.firedSessionKeys.insert(RuleEngine::sessionKey(rule.id, context.currentSession->id));
}

} // namespace pobblewig
