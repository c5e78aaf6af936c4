#include "memory/history/MemoryMigration.h"

#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/history/ChatHistoryStore.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

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
    void init() { m_scratch.emplace(); }

    void anEarlyFileIsBackedUpOnce()
    {
        const LogLines log;
        put("memory.json", early);
        const auto report = MemoryMigration::run(*m_scratch, now);
        const auto backup = u"memory.v1-backup-2026-03-01T08-15-00Z.json"_s;
        QCOMPARE(report.memoryBackupPath, m_scratch->path(backup));
        QCOMPARE(m_scratch->read(backup), early);
        QCOMPARE(log.lines(), QStringList(u"buddy: migrating memory.json v1..."_s));
        QCOMPARE(report.migrationSummary(),
            u"memory.json v1 → v2: 1 notes, 0 patterns preserved, backup created"_s);

        QVERIFY(MemoryMigration::run(*m_scratch, now + 1h).memoryBackedUp);
        MemoryStore store(*m_scratch, [] { return Calendar(); });
        store.correctNote(store.notes().at(0).id, u"mended"_s, now);
        QCOMPARE(MemoryMigration::run(*m_scratch, now + 2h).migrationSummary(),
            u"no migration needed"_s);
        QCOMPARE(m_scratch->names(), QStringList({ u"memory.json"_s, backup }));
    }

    void otherFilesAreLeftToTheStore()
    {
        const LogLines log;
        for (const auto* text : { R"({"version": 2})", R"({"version": 3})", "{}", "[1]",
                 R"({"version": "1", "notes": 5})", R"({"version": -1e300})" }) {
            put("memory.json", text);
            QVERIFY(!MemoryMigration::run(*m_scratch, now).memoryMigratedFromVersion);
            QCOMPARE(m_scratch->names(), QStringList(u"memory.json"_s));
        }
        put("memory.json", R"({"version": 1, )");
        QVERIFY(!MemoryMigration::run(*m_scratch, now).memoryMigratedFromVersion);
        QVERIFY(m_scratch->names().value(0).contains(u".corrupt-"));
    }

    void aBackupThatFailsStopsNothing()
    {
        const LogLines log;
        put("memory.json", early);
        const auto report = MemoryMigration::run(m_scratch->failing(3), now);
        QCOMPARE(log.lines().value(0),
            u"buddy: migration backup failed (continuing with lenient decode): "
            "No space left on device"_s);
        QVERIFY(!report.memoryBackedUp);
        QCOMPARE(report.notesPreserved, 1);
        QCOMPARE(m_scratch->names(), QStringList(u"memory.json"_s));
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
        MemoryMigration::sweepBackupLitter(*m_scratch, now);
        QCOMPARE(m_scratch->names().join(u' '),
            u".sync-backup-x memory.json "
            "memory.v1-backup-2026-01-30T08-15-00Z.json "
            "my-memory.v1-backup-2026-01-01T00-00-00Z.json"_s);
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
        QCOMPARE(imported.dayKey, u"2026-02-28"_s);
        QCOMPARE(imported.startedAt, first);
        QCOMPARE(imported.lastActivityAt, last);
        QVERIFY(imported.endedAt == last && imported.isImported);
        QVERIFY(history.messages().back().sessionID == imported.id);
    }

private:
    void put(const char* name, const QByteArray& text, int daysSinceChange = 0) const
    {
        m_scratch->write(QString::fromLatin1(name), text);
        QFile file(m_scratch->path(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const auto changed = Calendar().dateTime(now - days(daysSinceChange));
        QVERIFY(file.setFileTime(changed, QFileDevice::FileModificationTime));
    }

    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryMigrationTest)
#include "MemoryMigrationTest.moc"
