#include "activity/ActivityTracker.h"
#include "activity/RuleStore.h"
#include "activity/ScriptedFrontmostApp.h"
#include "conversation/proposals/ProposalManager.h"
#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/ObservationStore.h"
#include "memory/PeriodSummaryStore.h"
#include "memory/ReferenceMemoryStore.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/UsageCounter.h"
#include "settings/SettingsStore.h"
#include "support/FakeKeychain.h"
#include "support/FaultyFileOperations.h"
#include "support/LogLines.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

/// An opened store: each call makes a change, which is saved.
using Change = std::function<void()>;
using Open = std::function<Change(const DataDirectory&)>;

template <typename Store>
Change changing(std::shared_ptr<Store> store, std::function<void(Store&)> change)
{
    return [=] { change(*store); };
}

template <typename Store>
Open opening(std::function<void(Store&)> change)
{
    return [=](const DataDirectory& directory) {
        return changing(std::make_shared<Store>(directory), change);
    };
}

Change openActivity(const DataDirectory& directory)
{
    static ScriptedFrontmostApp front;
    return changing<ActivityTracker>(
        std::make_shared<ActivityTracker>(front, directory), [](auto& store) {
            for (const auto name : { u'a', u'b' }) {
                front.show(QString(name), QString(name));
                store.poll(now);
            }
        });
}

Change openMemory(const DataDirectory& directory)
{
    const auto calendar = [] { return Calendar(); };
    return changing<MemoryStore>(std::make_shared<MemoryStore>(directory, calendar),
        [](auto& store) { store.addNote({ .text = QStringLiteral("likes cake") }, now); });
}

Change openSettings(const DataDirectory& directory)
{
    static FakeKeychain keychain;
    return changing<SettingsStore>(std::make_shared<SettingsStore>(directory, keychain),
        [](auto& store) { store.update([](auto& settings) { settings.mascot += u'x'; }); });
}

const std::map<QString, Open> stores {
    { QStringLiteral("activity"), openActivity },
    { QStringLiteral("chat"), opening<ChatHistoryStore>([](auto& store) { store.append({}); }) },
    { QStringLiteral("memory"), openMemory },
    { QStringLiteral("observations"),
        opening<ObservationStore>([](auto& store) { store.add({}); }) },
    { QStringLiteral("proposals"), opening<ProposalManager>([](auto& store) {
         store.registerProposal({ .proposalId = QUuid::createUuid().toString() });
     }) },
    { QStringLiteral("reference"), opening<ReferenceMemoryStore>([](auto& store) {
         store.upsertItem({ .path = QStringLiteral("misc"), .title = QStringLiteral("t") });
     }) },
    { QStringLiteral("rules"), opening<RuleStore>([](auto& store) { store.add({}); }) },
    { QStringLiteral("sessions"), opening<DailySessionStore>([](auto& store) {
         store.startNewSession(now, std::nullopt, {});
     }) },
    { QStringLiteral("settings"), openSettings },
    { QStringLiteral("summaries"),
        opening<PeriodSummaryStore>([](auto& store) { store.add({}); }) },
    { QStringLiteral("usage"),
        opening<UsageCounter>([](auto& store) { store.addIntervention(); }) },
};

/// Leaves out the waiting for the disk.
class UnsyncedFileOperations : public FileOperations {
public:
    std::error_code sync(int) const override { return {}; }
    std::error_code syncDirectory(const QString&) const override { return {}; }
};

/// The directory of one store.
class StoreDirectory {
public:
    explicit StoreDirectory(const QString& name)
        : m_fileName(name + QStringLiteral(".json"))
        , m_open(stores.at(name))
    {
    }

    /// Leaves one file, that of the store.
    void put(const QByteArray& contents) const
    {
        for (const auto& [name, old] : files())
            QFile::remove(m_scratch.filePath(name));
        QFile file(m_scratch.filePath(m_fileName));
        if (file.open(QIODevice::WriteOnly))
            file.write(contents);
    }

    Change open(std::shared_ptr<const FileOperations> operations) const
    {
        DataDirectory directory { QDir(m_scratch.path()) };
        directory.clock = [] { return now; };
        directory.operations = std::move(operations);
        return m_open(directory);
    }

    /// Names and contents.
    std::map<QString, QByteArray> files() const
    {
        std::map<QString, QByteArray> result;
        for (const auto& name : QDir(m_scratch.path()).entryList(QDir::Files | QDir::Hidden)) {
            QFile file(m_scratch.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                result.emplace(name, file.readAll());
        }
        return result;
    }

    const QString& fileName() const { return m_fileName; }

private:
    QTemporaryDir m_scratch;
    QString m_fileName;
    Open m_open;
};

enum class Outcome { lost, reads, isKeptAside };

/// What becomes of such a file when its store is opened, then changed and opened again.
Outcome outcome(const StoreDirectory& directory, const QByteArray& contents)
{
    const LogLines log;
    directory.put(contents);
    const auto operations = std::make_shared<UnsyncedFileOperations>();
    const auto change = directory.open(operations);
    const auto file = directory.fileName();
    const auto aside = file + QStringLiteral(".corrupt-2026-03-01T08-15-00Z");
    const auto files = directory.files();
    const auto logged = log.lines();
    change();
    directory.open(operations);
    if (log.lines() != logged || !directory.files().contains(file))
        return Outcome::lost;
    if (logged.isEmpty() && files == std::map { std::pair(file, contents) })
        return Outcome::reads;
    const auto start = QStringLiteral("buddy: corrupt store %1 moved to %2: ").arg(file, aside);
    const auto isKept = logged.size() == 1 && logged.front().startsWith(start)
        && files == std::map { std::pair(aside, contents) };
    return isKept ? Outcome::isKeptAside : Outcome::lost;
}

} // namespace

/// Nothing is lost, whatever befalls a file, in whichever store.
class StoreFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDamagedFileIsKeptAside_data() { addStores(); }
    void aDamagedFileIsKeptAside()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, good);
        const StoreDirectory directory(name);
        QCOMPARE(outcome(directory, good), Outcome::reads);
        for (qsizetype length = 0; length < good.size(); ++length)
            QVERIFY2(
                outcome(directory, good.first(length)) == Outcome::isKeptAside, good.first(length));
        // An odd step comes by every bit of a byte.
        for (qsizetype bit = 0; bit < 8 * good.size(); bit += 19) {
            auto flipped = good;
            flipped[bit / 8] = char(flipped[bit / 8] ^ (1 << bit % 8));
            QVERIFY2(outcome(directory, flipped) != Outcome::lost, flipped);
        }
    }

    void aFailedSaveLeavesTheOldFileOrTheNew_data() { addStores(); }
    void aFailedSaveLeavesTheOldFileOrTheNew()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, good);
        const auto counting = std::make_shared<FaultyFileOperations>();
        const StoreDirectory directory(name);
        directory.put(good);
        directory.open(counting)();
        QVERIFY(counting->calls() > 5);
        for (int failing = 1; failing <= counting->calls(); ++failing) {
            const LogLines log;
            directory.put(good);
            const auto operations = std::make_shared<FaultyFileOperations>(failing);
            const auto change = directory.open(operations);
            change();
            // Only the last call comes after the new file has taken the old one's place.
            QCOMPARE(directory.files().size(), 1u);
            QCOMPARE(directory.files().begin()->second == good, failing < counting->calls());
            // The counter of tokens is a convenience, and silent.
            const auto logged = log.lines();
            QCOMPARE(logged.size(), name == u"usage" ? 0 : 1);
            QVERIFY(logged.isEmpty() || logged.front().contains(u"No space left on device"));
            change();
            directory.open(operations);
            QCOMPARE(log.lines(), logged);
            QVERIFY(directory.files().begin()->second != good);
            QCOMPARE(directory.files().size(), 1u);
        }
    }

private:
    static void addStores()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("good");
        for (const auto& [name, open] : stores) {
            // The fuzzing program's seeds: a letter, then the file.
            QFile seed(QFINDTESTDATA("../../fuzz/corpus/CodecFuzz/") + name);
            QVERIFY(seed.open(QIODevice::ReadOnly));
            row(qPrintable(name), name, seed.readAll().sliced(1).trimmed());
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::StoreFilesTest)
#include "StoreFilesTest.moc"
