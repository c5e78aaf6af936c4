#include "memory/PeriodSummaryStore.h"

#include "memory/DailySessionStore.h"
#include "memory/ObservationStore.h"
#include "support/FaultyFileOperations.h"
#include "support/LogLines.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

namespace pobblewig {

namespace {

using std::chrono::days;

const TimePoint firstDay(std::chrono::seconds(1772352000));

PeriodSummary period(PeriodType type, int from, int length, const QString& summary)
{
    return { .id = QUuid::createUuid(),
        .periodType = type,
        .startDate = firstDay + days(from),
        .endDate = firstDay + days(from + length),
        .summary = summary };
}

QString texts(const std::vector<PeriodSummary>& summaries)
{
    QString texts;
    for (const auto& summary : summaries)
        texts += summary.summary;
    return texts;
}

} // namespace

class PeriodSummaryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aListHoldsWhatOverlapsItsWindow()
    {
        const QTemporaryDir scratch;
        const DataDirectory directory { QDir(scratch.path()) };
        PeriodSummaryStore store(directory);
        const auto third = store.add(period(PeriodType::day, 3, 1, QStringLiteral("3")));
        store.add(period(PeriodType::day, 3, 1, QStringLiteral("4")));
        QVERIFY(!store.latestWeekly());
        store.add(period(PeriodType::week, 0, 7, QStringLiteral("w")));
        store.add(period(PeriodType::day, 1, 1, QStringLiteral("1")));
        const auto list = [&](std::optional<PeriodType> type, int from, int to) {
            return texts(store.list(type, firstDay + days(from), firstDay + days(to)));
        };
        QCOMPARE(list(std::nullopt, 2, 3), QStringLiteral("w134"));
        QCOMPARE(list(PeriodType::day, 4, 9), QStringLiteral("34"));
        QCOMPARE(list(std::nullopt, -2, 0), QStringLiteral("w"));
        QCOMPARE(list(std::nullopt, 8, 9), QString());
        QVERIFY(store.latestDaily() == third);
        QVERIFY(store.withID(third.id) == third);
        QVERIFY(!store.withID(QUuid::createUuid()));
        QVERIFY(PeriodSummaryStore(directory).all() == store.all());
    }

    void sevenDaysThatNoWeekHoldsMakeAWeek()
    {
        PeriodSummaryStore store(std::nullopt);
        auto week = period(PeriodType::week, 1, 7, QStringLiteral("w"));
        for (int day = 7; day > 0; --day) {
            QVERIFY(!store.needsWeeklyRollup());
            const auto daily = period(PeriodType::day, day, 1, QString::number(day));
            week.sourceDailySummaryIDs.push_back(store.add(daily).id);
        }
        QVERIFY(store.needsWeeklyRollup());
        QCOMPARE(texts(store.unsummarizedDailies()), QStringLiteral("1234567"));
        week.sourceDailySummaryIDs.pop_back();
        store.add(week);
        QCOMPARE(texts(store.unsummarizedDailies()), QStringLiteral("1"));
        QVERIFY(!store.needsWeeklyRollup());
    }

    void aFailedSaveNamesItsTier()
    {
        const LogLines log;
        const QTemporaryDir scratch;
        DataDirectory directory { QDir(scratch.path()) };
        const auto failing = [&] {
            directory.operations = std::make_shared<FaultyFileOperations>(1);
            return directory;
        };
        DailySessionStore(failing()).deleteAll();
        ObservationStore(failing()).deleteAll();
        PeriodSummaryStore(failing()).deleteAll();
        const auto line = QStringLiteral("buddy: failed to persist %1: No space left on device");
        const QStringList lines { line.arg(u"sessions"), line.arg(u"observations"),
            line.arg(u"summaries") };
        QCOMPARE(log.lines(), lines);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PeriodSummaryStoreTest)
#include "PeriodSummaryStoreTest.moc"
