#include "memory/librarian/SessionRolloverService.h"

#include "foundation/JSONFileStore.h"
#include "support/Awaited.h"
#include "support/BorrowedProvider.h"
#include "support/ScriptedProvider.h"

#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

/// The system calls of a process that dies with the given replacement of a file: from then on
/// nothing reaches the disk.
class DyingFileOperations : public FileOperations {
public:
    explicit DyingFileOperations(int lastRename)
        : m_renamesLeft(lastRename)
    {
    }

    std::error_code rename(const QString& from, const QString& to) const override
    {
        return --m_renamesLeft < 0 ? gone : FileOperations::rename(from, to);
    }
    tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const override
    {
        if (isDead())
            return tl::unexpected(gone);
        return FileOperations::create(path, permissions);
    }
    void remove(const QString& path) const override
    {
        if (!isDead())
            FileOperations::remove(path);
    }

    bool isDead() const { return m_renamesLeft < 0; }

private:
    inline static const auto gone = std::make_error_code(std::errc::io_error);
    mutable int m_renamesLeft;
};

/// A launch of the program, as far as sessions go.
struct Launch {
    explicit Launch(DataDirectory directory, LLMProvider* model = nullptr)
        : directory(std::move(directory))
        , model(model)
    {
        rollover.finishInterrupted(now, Calendar());
        memory.sessions.ensureActiveSession(now - days(1), Calendar());
    }

    static Task<LibrarianModelConfig> config() { co_return LibrarianModelConfig(); }

    void say(const QString& text)
    {
        history.append({ .id = QUuid::createUuid(), .text = text, .timestamp = now });
    }

    DataDirectory directory;
    LLMProvider* model;
    MemoryTiers memory { directory, [] { return Calendar(); } };
    ChatHistoryStore history { directory };
    UsageCounter usage { directory };
    LibrarianService librarian { memory, usage,
        { .providerProvider = [this] { return BorrowedProvider::lent(model); },
            .configProvider = config,
            .clock = [] { return now; } } };
    SessionRolloverService rollover { { memory, history, librarian, directory,
        [](TimePoint, TimePoint) { return QStringLiteral("Writer 9 min"); } } };
};

/// The texts of all archives, and then of the conversation that goes on.
QStringList everythingSaid(const QDir& directory)
{
    QStringList texts;
    auto files = directory.entryList({ QStringLiteral("chat-*.json") });
    files.append(QStringLiteral("chat.json"));
    for (const auto& file : files) {
        const auto messages = JSONFileStore(directory, file).load<std::vector<ChatMessage>>();
        for (const auto& message : messages.value_or(std::vector<ChatMessage>()))
            texts.append(message.text);
    }
    return texts;
}

} // namespace

class SessionRolloverServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDayIsClosedAndTheNextBegins()
    {
        const QTemporaryDir scratch;
        Launch launch { DataDirectory(QDir(scratch.path())) };
        const auto session = *launch.memory.sessions.activeSession();
        launch.say(QStringLiteral("good morning"));
        launch.memory.observations.add({ .id = QUuid::createUuid(),
            .occurredAt = now - 1h,
            .recordedAt = now - 1h,
            .summary = QStringLiteral("slept well") });

        const auto outcome = awaited(launch.rollover.rolloverIfNeeded(now, Calendar()));
        QVERIFY(outcome == (RolloverOutcome { true, true }));
        const auto summary = *launch.memory.summaries.latestDaily();
        QCOMPARE(summary.sourceObservationIDs.size(), 1u);
        const auto closed = *launch.memory.sessions.previousSession();
        QCOMPARE(closed.id, session.id);
        QVERIFY(closed.dailySummaryID == summary.id);
        QCOMPARE(closed.activitySummary, QStringLiteral("Writer 9 min"));
        QVERIFY(launch.memory.sessions.activeSession()->previousSessionID == session.id);
        QVERIFY(launch.history.messages().empty());
        QCOMPARE(everythingSaid(QDir(scratch.path())), QStringList(QStringLiteral("good morning")));

        QVERIFY(awaited(launch.rollover.rolloverIfNeeded(now, Calendar())) == RolloverOutcome());
        QVERIFY(awaited(launch.rollover.forceRollover(now, Calendar())).rolledOver);
        QCOMPARE(launch.memory.sessions.activeSession()->dayKey,
            launch.memory.sessions.previousSession()->dayKey);
    }

    void theSeventhDayMakesAWeek()
    {
        Launch launch { DataDirectory(QDir(QTemporaryDir().path())) };
        for (int day = 1; day <= 8; ++day) {
            awaited(launch.rollover.forceRollover(now + days(day), Calendar()));
            QCOMPARE(launch.memory.summaries.latestWeekly().has_value(), day >= 7);
        }
        QCOMPARE(launch.memory.summaries.latestWeekly()->sourceDailySummaryIDs.size(), 7u);
        QCOMPARE(launch.memory.summaries.unsummarizedDailies().size(), 1u);
    }

    void whatIsSaidWhileTheModelThinksBelongsToTheNextSession()
    {
        const QTemporaryDir scratch;
        ScriptedProvider model;
        model.enqueue({ {}, LLMError::http(500, {}), true });
        Launch launch { DataDirectory(QDir(scratch.path())), &model };
        launch.say(QStringLiteral("yesterday"));
        spawn([](Launch* launch) -> Task<> {
            co_await launch->rollover.forceRollover(now, Calendar());
        }(&launch));
        QTRY_COMPARE(model.requests().size(), 1u);
        QVERIFY(awaited(launch.rollover.forceRollover(now, Calendar())) == RolloverOutcome());
        launch.say(QStringLiteral("today"));
        model.release();
        QTRY_VERIFY(!launch.rollover.isUnderWay());
        QCOMPARE(launch.history.messages().size(), 1u);
        QCOMPARE(launch.history.messages().front().text, QStringLiteral("today"));
    }

    void aCrashAtAnyWriteLosesAndRepeatsNothing()
    {
        for (int lastWrite = 0;; ++lastWrite) {
            const QTemporaryDir scratch;
            const QDir path(scratch.path());
            {
                Launch launch { DataDirectory(path) };
                launch.say(QStringLiteral("kept"));
            }
            DataDirectory dying(path);
            const auto operations = std::make_shared<DyingFileOperations>(lastWrite);
            dying.operations = operations;
            {
                Launch launch(dying);
                awaited(launch.rollover.rolloverIfNeeded(now, Calendar()));
            }
            Launch again { DataDirectory(path) };
            awaited(again.rollover.rolloverIfNeeded(now, Calendar()));
            QCOMPARE(again.memory.summaries.all().size(), 1u);
            QCOMPARE(again.memory.sessions.sessions().size(), 2u);
            QVERIFY(again.memory.sessions.activeSession()->previousSessionID.has_value());
            QCOMPARE(everythingSaid(path), QStringList(QStringLiteral("kept")));
            QVERIFY(again.history.messages().empty());
            if (!operations->isDead())
                return;
        }
    }

    void whatCannotBeArchivedStays()
    {
        const QTemporaryDir scratch;
        const QDir path(scratch.path());
        Launch launch { DataDirectory(path) };
        launch.say(QStringLiteral("kept"));
        const auto session = *launch.memory.sessions.activeSession();
        const auto name = QStringLiteral("chat-%1-%2.json")
                              .arg(session.dayKey, json::keyText(session.id).first(8));
        QVERIFY(path.mkdir(name));
        QVERIFY(awaited(launch.rollover.forceRollover(now, Calendar())).rolledOver);
        QCOMPARE(launch.history.messages().size(), 1u);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SessionRolloverServiceTest)
#include "SessionRolloverServiceTest.moc"
