#include "memory/history/UsageCounter.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

class UsageCounterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void totalsGrowPerLaneFromWhatTheFileHas()
    {
        const QTemporaryDir scratch;
        QFile file(scratch.filePath(QStringLiteral("usage.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"chatCalls\": 7}");
        file.close();
        const DataDirectory directory { QDir(scratch.path()) };
        UsageCounter counter(directory);
        counter.addMainUsage(10, 1);
        counter.addMainUsage(20, 2);
        counter.addLibrarianUsage(31, 3);
        counter.addVisionUsage(40, 4);
        counter.addIntervention();
        const UsageCounter::Snapshot expected {
            .mainPromptTokens = 30,
            .mainCompletionTokens = 3,
            .librarianPromptTokens = 31,
            .librarianCompletionTokens = 3,
            .visionPromptTokens = 40,
            .visionCompletionTokens = 4,
            .chatCalls = 9,
            .librarianCalls = 1,
            .visionCalls = 1,
            .interventions = 1,
        };
        QVERIFY(UsageCounter(directory).snapshot() == expected);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::UsageCounterTest)
#include "UsageCounterTest.moc"
