#include "interventions/InterventionService.h"

#include "support/Awaited.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };

AccountabilityRule rule()
{
    auto rule = AccountabilityRule::youtubeTemplate(now);
    rule.enabled = true;
    return rule;
}

/// In which the rule fires.
RuleEvaluationContext context(const AccountabilityRule& fires)
{
    RuleEvaluationContext context { .now = now };
    context.currentSession = ActivitySession { .id = QUuid::createUuid() };
    context.currentSession->bundleIdentifier = fires.trigger.bundleIdentifiers.front();
    context.currentSession->durationSeconds = 60.0 * fires.trigger.thresholdMinutes;
    context.currentSession->isActive = true;
    return context;
}

Task<tl::expected<QString, QString>> composedText(int attempt)
{
    if (attempt == 1)
        co_return tl::unexpected(u"no model"_s);
    co_return u"Still at it?"_s;
}

} // namespace

class InterventionServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRuleSpeaksOnceInASession()
    {
        const ScratchDirectory scratch;
        const DataDirectory directory = scratch;
        int composed = 0;
        InterventionService service(directory);
        service.setCompose([&](auto, double) { return composedText(++composed); });
        const auto youtube = rule();
        auto inSession = context(youtube);
        QVERIFY(!awaited(service.tick({ youtube }, inSession)));
        QVERIFY2(service.records().empty(), "what could not be composed is not recorded");
        const auto fired = awaited(service.tick({ youtube }, inSession));
        QCOMPARE(fired->message, u"Still at it?");
        QCOMPARE(fired->ruleID, youtube.id);
        inSession.now += std::chrono::hours(24);
        QVERIFY(!awaited(service.tick({ youtube }, inSession)));
        QCOMPARE(composed, 2);

        InterventionService again(
            std::optional<DataDirectory>(scratch), [](auto, double) { return composedText(2); });
        QVERIFY(again.records() == service.records());
        QVERIFY(!awaited(again.tick({ youtube }, inSession)));
        inSession.currentSession->id = QUuid::createUuid();
        QCOMPARE(awaited(again.tick({ youtube }, inSession))->message, u"Still at it?");
    }

    void theRecordIsBoundedAndKeepsOutcomes()
    {
        const ScratchDirectory scratch;
        const DataDirectory directory = scratch;
        InterventionService service(directory);
        for (int number = 0; number < 101; ++number)
            service.recordFired({ .id = QUuid::createUuid(),
                .triggerType = u"daily_briefing"_s,
                .firedAt = now + number * 1s,
                .message = QString::number(number) });
        QCOMPARE(service.records().size(), 100u);
        QCOMPARE(service.records().back().message, u"1");
        const auto newest = service.records().front().id;
        service.recordOutcome(newest, InterventionOutcome::accepted, u"Got it"_s);
        service.recordOutcome(QUuid::createUuid(), InterventionOutcome::dismissed, {});
        const InterventionService again(directory);
        QVERIFY(again.record(newest)->outcome == InterventionOutcome::accepted);
        QVERIFY(again.records()[1].outcome == InterventionOutcome::ignored);
        QCOMPARE(again.recentRecords(5).size(), 5u);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::InterventionServiceTest)
#include "InterventionServiceTest.moc"
