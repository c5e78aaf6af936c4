#include "activity/RuleStore.h"

#include "activity/RuleTexts.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

class RuleStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rulesComeBackAsTheyWereChanged()
    {
        const QTemporaryDir scratch;
        const DataDirectory directory { QDir(scratch.path()) };
        const TimePoint now(1772352900s);
        RuleStore store(directory);
        QCOMPARE(RuleTexts::rulesText(store.rules()), QStringLiteral("no rules configured"));
        auto rule = AccountabilityRule::youtubeTemplate(now);
        rule.activeTimeWindow = TimeWindow { 22, 6 };
        rule.trigger.category = AppCategory::entertainment;
        store.add(rule);
        store.add(AccountabilityRule::youtubeTemplate(now));
        rule.name = QStringLiteral("%1 games");
        store.update(rule, now + 1s);
        store.setEnabled(rule.id, true, now + 2s);
        store.update(AccountabilityRule::youtubeTemplate(now), now + 3s);
        rule.enabled = true;
        rule.updatedAt = now + 2s;
        QCOMPARE(store.rules().size(), 2u);
        QVERIFY(store.rules().front() == rule);
        QVERIFY(RuleStore(directory).rules() == store.rules());
        QCOMPARE(RuleTexts::rulesText(store.rules()),
            QStringLiteral("- %1 games: enabled, threshold 90 min, cooldown 120 min\n"
                           "- Extended YouTube check-in (template): disabled, "
                           "threshold 90 min, cooldown 120 min"));
        store.remove(rule.id);
        QVERIFY(RuleStore(directory).rules() == store.rules());
        QCOMPARE(store.rules().size(), 1u);
        QFile file(scratch.filePath(QStringLiteral("rules.json")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto text = file.readAll().simplified();
        QVERIFY(text.contains("\"excludedModes\": [ \"exercising\", \"relaxing\" ]"));
        QVERIFY(text.contains("\"kind\": \"application\""));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::RuleStoreTest)
#include "RuleStoreTest.moc"
