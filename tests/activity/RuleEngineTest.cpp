#include "activity/RuleEngine.h"

#include "activity/RuleStore.h"
#include "activity/RuleTexts.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

const TimePoint noon(1772366400s);

/// A rule on everything from one minute on, and a context in which it fires.
struct Case {
    AccountabilityRule rule {
        .id = QUuid::createUuid(),
        .name = u"Videos"_s,
        .trigger = { .bundleIdentifiers = { u"App"_s }, .thresholdMinutes = 1 },
        .activeTimeWindow = TimeWindow { 12, 13 },
        .cooldownMinutes = 10,
    };
    RuleEvaluationContext context {
        .now = noon,
        .currentMode = CoachMode::focus,
        .currentSession = ActivitySession { .id = QUuid::createUuid(),
            .applicationName = u"Name"_s,
            .bundleIdentifier = u"the.app"_s,
            .durationSeconds = 60 },
    };

    RuleOutcome outcome() const { return RuleEngine::evaluate(rule, context); }
    QString verdict() const { return RuleTexts::verdicts({ rule }, context)[0]; }
};

struct Condition {
    SuppressionReason reason;
    void (*hold)(Case&);
};

/// In the order in which they are to be reported.
const std::array conditions {
    Condition { SuppressionReason::observationPaused,
        [](Case& it) { it.context.observationPaused = true; } },
    Condition { SuppressionReason::doNotDisturbMode,
        [](Case& it) { it.context.currentMode = CoachMode::doNotDisturb; } },
    Condition { SuppressionReason::ruleDisabled, [](Case& it) { it.rule.enabled = false; } },
    Condition { SuppressionReason::modeExcluded,
        [](Case& it) { it.rule.excludedModes = { it.context.currentMode }; } },
    Condition { SuppressionReason::outsideTimeWindow,
        [](Case& it) { it.context.calendar.timeZone = QTimeZone("Asia/Tokyo"); } },
    Condition { SuppressionReason::noMatch,
        [](Case& it) { it.context.currentSession->bundleIdentifier = u"none"_s; } },
    Condition { SuppressionReason::belowThreshold,
        [](Case& it) { it.context.currentSession->durationSeconds = 59.9; } },
    Condition { SuppressionReason::withinCooldown,
        [](Case& it) { it.context.lastFiredAt[it.rule.id] = noon - 10min + 1ms; } },
    Condition { SuppressionReason::alreadyFiredThisSession,
        [](Case& it) {
            it.context.firedSessionKeys.insert(
                RuleEngine::sessionKey(it.rule.id, it.context.currentSession->id));
        } },
};

} // namespace

class RuleEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ofAllConditionsThatHoldTheFirstIsReported()
    {
        QVERIFY(Case().outcome() == RuleOutcome(RuleFire { 60 }));
        for (unsigned held = 1; held < 1u << conditions.size(); ++held) {
            Case it;
            std::optional<SuppressionReason> first;
            for (std::size_t index = 0; index < conditions.size(); ++index) {
                if ((held >> index & 1) == 0)
                    continue;
                conditions[index].hold(it);
                first = first.value_or(conditions[index].reason);
            }
            QVERIFY2(it.outcome() == RuleOutcome(*first), QByteArray::number(held, 2));
        }
    }

    void aWindowEndsBeforeItsLastHour()
    {
        const auto hours = [](TimeWindow window) {
            std::vector<int> inside;
            for (int hour = 0; hour < 24; ++hour) {
                if (window.contains(hour))
                    inside.push_back(hour);
            }
            return inside;
        };
        QCOMPARE(hours({ 9, 12 }), (std::vector { 9, 10, 11 }));
        QCOMPARE(hours({ 22, 3 }), (std::vector { 0, 1, 2, 22, 23 }));
        QCOMPARE(hours({ 9, 9 }), std::vector<int>());
    }

    void anApplicationMatchesByParts()
    {
        Case it;
        it.rule.trigger = { .applicationNames = { u"You"_s },
            .bundleIdentifiers = { u"com.google.Chrome"_s },
            .domains = { u"tube.ORG"_s } };
        const auto matches = [&](const char* name, const char* identifier, const char* title) {
            it.context.currentSession->applicationName = QString::fromLatin1(name);
            it.context.currentSession->bundleIdentifier = QString::fromLatin1(identifier);
            it.context.currentSession->windowTitle = QString::fromLatin1(title);
            return RuleEngine::matchedDuration(it.rule, it.context) == 60.0;
        };
        QVERIFY(matches("YouTube Music", "x", "x"));
        QVERIFY(matches("Web", "x", "Cats - YouTube"));
        QVERIFY(matches("Web", "com.google.chrome.beta", "x"));
        QVERIFY(matches("Web", "x", "HTTPS://Tube.org/1"));
        QVERIFY(!matches("Web", "com.youtube", "com.google.Chrome"));
        QVERIFY(!matches("tube.org", "tube.org", "x"));
    }

    void aCategoryNeedsNoSession()
    {
        Case it;
        it.context.currentSession.reset();
        it.rule.trigger = { .kind = RuleTrigger::Kind::category, .thresholdMinutes = 0 };
        it.context.categoryDurations[AppCategory::social] = 0;
        QVERIFY(it.outcome() == RuleOutcome(SuppressionReason::noMatch));
        it.rule.trigger.category = AppCategory::browsing;
        QVERIFY(it.outcome() == RuleOutcome(SuppressionReason::noMatch));
        it.rule.trigger.category = AppCategory::social;
        QVERIFY(it.outcome() == RuleOutcome(RuleFire { 0 }));
    }

    void theFirstThatFiresIsTakenNotTheLongest()
    {
        Case it;
        auto silent = it.rule;
        silent.enabled = false;
        auto longer = it.rule;
        longer.trigger = { .kind = RuleTrigger::Kind::category, .category = AppCategory::social };
        it.context.categoryDurations[AppCategory::social] = 9000;
        QVERIFY(!RuleEngine::firstFire({ silent }, it.context));
        const auto fire = RuleEngine::firstFire({ silent, it.rule, longer }, it.context);
        QVERIFY(fire && fire->rule == it.rule && fire->duration == 60);
    }

    void aRuleFiresAgainOnceItsCooldownIsOver()
    {
        Case it;
        it.context.lastFiredAt[it.rule.id] = noon - 10min;
        QCOMPARE(it.verdict(), u"Videos: WOULD FIRE"_s);
        it.context.now -= 61s;
        QCOMPARE(it.verdict(), u"Videos: silent, outside its hours (cooldown: 2 min left)"_s);
        const auto key = RuleEngine::sessionKey(
            QUuid::fromString(u"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10"), QUuid());
        QCOMPARE(key,
            u"5F0C7A2E-95B4-4B6E-9A55-0D9D3C6F1F10:"
            "00000000-0000-0000-0000-000000000000"_s);
    }

    void rulesComeBackAsTheyWereChanged()
    {
        const ScratchDirectory directory;
        RuleStore store(directory);
        QCOMPARE(RuleTexts::rulesText(store.rules()), u"no rules configured");
        auto rule = AccountabilityRule::youtubeTemplate(noon);
        rule.activeTimeWindow = TimeWindow { 22, 6 };
        rule.trigger.category = AppCategory::entertainment;
        store.add(rule);
        store.add(AccountabilityRule::youtubeTemplate(noon));
        rule.name = u"%1 games"_s;
        store.update(rule, noon + 1s);
        store.setEnabled(rule.id, true, noon + 2s);
        store.update(AccountabilityRule::youtubeTemplate(noon), noon + 3s);
        rule.enabled = true;
        rule.updatedAt = noon + 2s;
        QVERIFY(store.rules().front() == rule);
        QVERIFY(RuleStore(directory).rules() == store.rules());
        QCOMPARE(RuleTexts::rulesText(store.rules()),
            u"- %1 games: enabled, threshold 90 min, cooldown 120 min\n- Extended YouTube check-in "
            "(template): disabled, threshold 90 min, cooldown 120 min");
        store.remove(rule.id);
        QCOMPARE(RuleStore(directory).rules().size(), 1u);
        const auto text = directory.read(u"rules.json"_s).simplified();
        QVERIFY(text.contains("\"excludedModes\": [ \"exercising\", \"relaxing\" ]"));
        QVERIFY(text.contains("\"kind\": \"application\""));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::RuleEngineTest)
#include "RuleEngineTest.moc"
