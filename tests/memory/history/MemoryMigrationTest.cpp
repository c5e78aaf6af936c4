#include "memory/history/MemoryMigration.h"

#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/history/ChatHistoryStore.h"
#include "support/FaultyFileOperations.h"
#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

const QByteArray early = "{\"version\": 1, \"patterns\": [], \"notes\": ["
                         "{\"id\": \"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10\", \"text\": \"t\"}]}";

} // namespace

class MemoryMigrationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<QTemporaryDir>(); }

    void anEarlyFileIsBackedUpOnce()
    {
        const LogLines log;
        put("memory.json", early);
        const auto report = MemoryMigration::run(directory(), now);
        const auto backup = QStringLiteral("memory.v1-backup-2026-03-01T08-15-00Z.json");
        QCOMPARE(report.memoryBackupPath, m_scratch->filePath(backup));
        QFile copy(*report.memoryBackupPath);
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), early);
        QCOMPARE(log.lines(), QStringList(QStringLiteral("buddy: migrating memory.json v1...")));
        QCOMPARE(report.migrationSummary(),
            QStringLiteral("memory.json v1 → v2: 1 notes, 0 patterns preserved, backup created"));

        QVERIFY(MemoryMigration::run(directory(), now + 1h).memoryBackedUp);
        MemoryStore store(directory(), [] { return Calendar(); });
        store.correctNote(store.notes().at(0).id, QStringLiteral("mended"), now);
        QCOMPARE(MemoryMigration::run(directory(), now + 2h).migrationSummary(),
            QStringLiteral("no migration needed"));
        QCOMPARE(names(), QStringList({ QStringLiteral("memory.json"), backup }));
    }

    void otherFilesAreLeftToTheStore()
    {
        const LogLines log;
        for (const auto* text : { R"({"version": 2})", R"({"version": 3})", "{}", "[1]",
                 R"({"version": "1", "notes": 5})", R"({"version": -1e300})" }) {
            put("memory.json", text);
            QVERIFY(!MemoryMigration::run(directory(), now).memoryMigratedFromVersion);
            QCOMPARE(names(), QStringList(QStringLiteral("memory.json")));
        }
        put("memory.json", R"({"version": 1, )");
        QVERIFY(!MemoryMigration::run(directory(), now).memoryMigratedFromVersion);
        QVERIFY(names().value(0).contains(u".corrupt-"));
    }

    void aBackupThatFailsStopsNothing()
    {
        const LogLines log;
        put("memory.json", early);
        auto failing = directory();
        failing.operations = std::make_shared<FaultyFileOperations>(3);
        const auto report = MemoryMigration::run(failing, now);
        QCOMPARE(log.lines().value(0),
            QStringLiteral("buddy: migration backup failed (continuing with lenient decode): "
                           "No space left on device"));
        QVERIFY(!report.memoryBackedUp);
        QCOMPARE(report.notesPreserved, 1);
        QCOMPARE(names(), QStringList(QStringLiteral("memory.json")));
    }

    void backupsGoAfterThirtyDays()
    {
        put("memory.v1-backup-2026-01-30T08-15-00Z.json", {}, 99);
        put("memory.v1-backup-2026-01-30T08-14-59Z.json", {}, 0);
        put("rules.json.corrupt-2026-01-30T08-14-59Z", {}, 0);
        put(".sync-backup-memory-2026-01-30T08-14-59Z.json", {}, 0);
        put(".sync-backup-memory-elsewhen.json", {}, 31);
        put(".sync-backup-x", {}, 29);
        put("memory.json", {}, 99);
        put("my-memory.v1-backup-2026-01-01T00-00-00Z.json", {}, 99);
        MemoryMigration::sweepBackupLitter(directory(), now);
        QCOMPARE(names().join(u' '),
            QStringLiteral(".sync-backup-x memory.json "
                           "memory.v1-backup-2026-01-30T08-15-00Z.json "
                           "my-memory.v1-backup-2026-01-01T00-00-00Z.json"));
    }

    void aConversationBeforeSessionsIsAdoptedOnce()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const auto first = now - days(2) + 7h;
        const auto last = now - days(1);
        DailySessionStore sessions(std::nullopt);
        ChatHistoryStore history(std::nullopt);
        const auto adopt = [&] {
            return MemoryMigration::adoptLegacyChatIfNeeded(sessions, history, now, tokyo);
        };
        QVERIFY(!adopt());
        for (const auto time : { first, last })
            history.append({ .id = QUuid::createUuid(), .text = {}, .timestamp = time });
        QVERIFY(adopt());
        QVERIFY(!adopt());
        QCOMPARE(sessions.sessions().size(), 2u);
        QCOMPARE(sessions.activeSession()->startedAt, now);
        const auto& imported = sessions.sessions().back();
        QCOMPARE(imported.dayKey, QStringLiteral("2026-02-28"));
        QCOMPARE(imported.startedAt, first);
        QCOMPARE(imported.lastActivityAt, last);
        QVERIFY(imported.endedAt == last && imported.isImported);
        QVERIFY(history.messages().back().sessionID == imported.id);
    }

private:
    DataDirectory directory() const { return QDir(m_scratch->path()); }
    QStringList names() const
    {
        return QDir(m_scratch->path()).entryList(QDir::Files | QDir::Hidden);
    }
    void put(const char* name, const QByteArray& text, int daysSinceChange = 0) const
    {
        QFile file(m_scratch->filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush());
        const auto changed = Calendar().dateTime(now - days(daysSinceChange));
        QVERIFY(file.setFileTime(changed, QFileDevice::FileModificationTime));
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryMigrationTest)
#include "MemoryMigrationTest.moc"
