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
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <QRegularExpression>

extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size);

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

/// With the platform's words in its table of contents.
struct ReferenceMemory : ReferenceMemoryStore {
    explicit ReferenceMemory(const DataDirectory& directory)
        : ReferenceMemoryStore(directory, PlatformWording::linuxDesktop)
    {
    }
};

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
        [](auto& store) { store.addNote({ .text = u"likes cake"_s }, now); });
}

Change openSettings(const DataDirectory& directory)
{
    static FakeKeychain keychain;
    return changing<SettingsStore>(std::make_shared<SettingsStore>(directory, keychain),
        [](auto& store) { store.update([](auto& settings) { settings.mascot += u'x'; }); });
}

const std::map<QString, Open> stores {
    { u"activity"_s, openActivity },
    { u"chat"_s, opening<ChatHistoryStore>([](auto& store) { store.append({}); }) },
    { u"memory"_s, openMemory },
    { u"observations"_s, opening<ObservationStore>([](auto& store) { store.add({}); }) },
    { u"proposals"_s, opening<ProposalManager>([](auto& store) {
         store.registerProposal({ .proposalId = QUuid::createUuid().toString() });
     }) },
    { u"reference"_s, opening<ReferenceMemory>([](auto& store) {
         store.upsertItem({ .path = u"misc"_s, .title = u"t"_s });
     }) },
    { u"rules"_s, opening<RuleStore>([](auto& store) { store.add({}); }) },
    { u"sessions"_s, opening<DailySessionStore>([](auto& store) {
         store.startNewSession(now, std::nullopt, {});
     }) },
    { u"settings"_s, openSettings },
    { u"summaries"_s, opening<PeriodSummaryStore>([](auto& store) { store.add({}); }) },
    { u"transcript"_s, opening<Transcript>([](auto& store) {
         store.edit([](auto& messages) { messages.emplace_back(); });
         store.save();
     }) },
    { u"usage"_s, opening<UsageCounter>([](auto& store) { store.addIntervention(); }) },
};

/// Leaves out the waiting for the disk.
class UnsyncedFileOperations : public FileOperations {
public:
    std::error_code sync(int) const override { return {}; }
    std::error_code syncDirectory(const QString&) const override { return {}; }
};

/// The directory of one store.
struct StoreDirectory {
    QString name;
    QString file = name + u".json"_s;
    ScratchDirectory scratch = {};

    /// Leaves one file, that of the store.
    void put(const QByteArray& contents) const
    {
        for (const auto& old : scratch.names())
            QFile::remove(scratch.path(old));
        scratch.write(file, contents);
    }

    /// The store's file and what was kept of it aside.
    QStringList names() const
    {
        return scratch.path().entryList({ file + u'*' }, QDir::Files | QDir::Hidden);
    }

    Change open(std::shared_ptr<const FileOperations> operations) const
    {
        DataDirectory directory = scratch;
        directory.operations = std::move(operations);
        return stores.at(name)(directory);
    }
};

enum class Outcome { lost, reads, isKeptAside };

/// What becomes of such a file when its store is opened, then changed and opened again.
Outcome outcome(const StoreDirectory& directory, const QByteArray& contents)
{
    const LogLines log;
    directory.put(contents);
    const auto operations = std::make_shared<UnsyncedFileOperations>();
    const auto change = directory.open(operations);
    const auto file = directory.file;
    const auto aside = file + u".corrupt-2026-03-01T08-15-00Z"_s;
    const auto names = directory.names();
    const auto isWhole = names.size() == 1 && directory.scratch.read(names[0]) == contents;
    const auto logged = log.lines();
    change();
    directory.open(operations);
    if (!isWhole || log.lines() != logged || !directory.names().contains(file))
        return Outcome::lost;
    if (logged.isEmpty() && names[0] == file)
        return Outcome::reads;
    const auto start = u"buddy: corrupt store %1 moved to %2: "_s.arg(file, aside);
    const auto isKept = names[0] == aside && logged.size() == 1 && logged[0].startsWith(start);
    return isKept ? Outcome::isKeptAside : Outcome::lost;
}

constexpr std::array strangeValues { "null", "true", "0", "-0.0", "0.1", "1e308", "1e999",
    "2147483648", "9007199254740993", "9223372036854775808", "[]", "{}", "[[]]", "\"\"",
    "{\"\":{\"a\":[null]}}", "{\"\\ud800\":true,\"\\udc00\":true}", "\"\\ud800\\u0000\"",
    "\"9999-12-31T23:59:59Z\"", "\"00000000-0000-0000-0000-000000000000\"" };

void fuzz(const QByteArray& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const uchar*>(input.data()), size_t(input.size()));
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
        const StoreDirectory directory { name };
        QCOMPARE(outcome(directory, good), Outcome::reads);
        for (qsizetype length = 0; length < good.size(); ++length)
            QVERIFY2(
                outcome(directory, good.first(length)) == Outcome::isKeptAside, good.first(length));
        // An odd step comes by every bit of a byte.
        for (qsizetype bit = 0; bit < 8 * good.size(); bit += 19) {
            const auto flipped = withFlipped(good, bit);
            QVERIFY2(outcome(directory, flipped) != Outcome::lost, flipped);
        }
    }

    void aFailedSaveLeavesTheOldFileOrTheNew_data() { addStores(); }
    void aFailedSaveLeavesTheOldFileOrTheNew()
    {
        QFETCH(QString, name);
        if (name == u"chat")
            QSKIP("The conversation's other file is written at the same time.");
        QFETCH(QByteArray, good);
        const auto counting = std::make_shared<FaultyFileOperations>();
        const StoreDirectory directory { name };
        const auto isOld = [&] { return directory.scratch.read(directory.file) == good; };
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
            QCOMPARE(isOld(), failing < counting->calls());
            // The counter of tokens is a convenience, and silent.
            const auto logged = log.lines();
            QCOMPARE(logged.size(), name == u"usage" ? 0 : 1);
            QVERIFY(
                logged.isEmpty() || logged[0].startsWith(u"buddy: failed to persist "_s + name));
            QVERIFY(logged.isEmpty() || logged[0].endsWith(u": No space left on device"));
            change();
            directory.open(operations);
            QCOMPARE(log.lines(), logged);
            QVERIFY(!isOld());
            QCOMPARE(directory.scratch.names().size(), 1);
        }
    }

    /// What the fuzzing program demands of the codec, for the seeds and all that lies next to them.
    void whatIsReadIsWhatIsWritten_data()
    {
        columns<QByteArray>("seed");
        const auto directory = seeds();
        for (const auto& name : directory.entryList(QDir::Files)) {
            QFile file(directory.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            row(qPrintable(name), file.readAll());
        }
    }
    void whatIsReadIsWhatIsWritten()
    {
        QFETCH(QByteArray, seed);
        fuzz(seed);
        static const QRegularExpression value(u"(?<=[:,[])(\"[^\"]*\"|[\\w.+-]+)"_s);
        auto values = value.globalMatch(QString::fromLatin1(seed));
        while (values.hasNext()) {
            const auto found = values.next();
            for (const auto* strange : strangeValues)
                fuzz(QByteArray(seed).replace(
                    found.capturedStart(), found.capturedLength(), strange));
        }
        for (qsizetype bit = 0; bit < 8 * seed.size(); ++bit)
            fuzz(withFlipped(seed, bit));
    }

private:
    static QByteArray withFlipped(QByteArray bytes, qsizetype bit)
    {
        bytes[bit / 8] = char(bytes[bit / 8] ^ (1 << bit % 8));
        return bytes;
    }

    /// Not those that a run of the fuzzing program has left beside the tests.
    static QDir seeds()
    {
        const QFileInfo program(QFINDTESTDATA("../../fuzz/CodecFuzz.cpp"));
        return program.dir().filePath(u"corpus/CodecFuzz"_s);
    }

    static void addStores()
    {
        columns<QString, QByteArray>("name", "good");
        for (const auto& [name, open] : stores) {
            // The fuzzing program's seeds: a letter, then the file.
            QFile seed(seeds().filePath(name));
            QVERIFY(seed.open(QIODevice::ReadOnly));
            row(qPrintable(name), name, seed.readAll().sliced(1).trimmed());
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::StoreFilesTest)
#include "StoreFilesTest.moc"
