#include "memory/librarian/SessionRolloverService.h"

#include "support/Awaited.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

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
struct Launch : ScriptedStores {
    explicit Launch(const DataDirectory& place, ScriptedProvider* model = nullptr)
        : ScriptedStores(place)
        , directory(place)
    {
        models.librarian = model;
        if (model)
            model->onReply = [this] { time += 2s; };
        rollover.finishInterrupted();
        memory.sessions.ensureActiveSession(now - days(1), Calendar());
    }

    void say(const QString& text)
    {
        history.append({ .id = QUuid::createUuid(), .text = text, .timestamp = time });
    }
    void observe(TimePoint at)
    {
        memory.record({ .id = QUuid::createUuid(), .occurredAt = at, .summary = u"slept"_s });
    }
    RolloverOutcome roll(TimePoint at = now)
    {
        time = at;
        return awaited(rollover.forceRollover());
    }
    /// Begins, and returns once the model has been asked that often.
    void beginToRoll(const ScriptedProvider& asked, size_t times)
    {
        spawn([](Launch* launch) -> Task<> { co_await launch->rollover.forceRollover(); }(this));
        QTRY_COMPARE(asked.requests().size(), times);
    }

    DataDirectory directory;
    ScriptedModels models;
    LibrarianService librarian { all, moment, models };
    SessionRolloverService rollover { { moment, memory, history, librarian, directory,
        [](TimePoint, TimePoint) { return u"Writer 9 min"_s; } } };
};

/// The texts of all archives, and then of the conversation that goes on.
QStringList everythingSaid(const QDir& directory)
{
    QStringList texts;
    auto files = directory.entryList({ u"chat-*.json"_s });
    files.append(u"transcript.json"_s);
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
        const ScratchDirectory scratch;
        Launch launch(scratch);
        const auto session = *launch.memory.sessions.activeSession();
        launch.say(u"good morning"_s);
        launch.observe(now - 1h);
        // Of a batch that was answered late.
        launch.observe(now - days(2));

        const auto outcome = awaited(launch.rollover.rolloverIfNeeded());
        QVERIFY(outcome == (RolloverOutcome { true, true }));
        const auto summary = *launch.memory.summaries.latestDaily(now);
        QCOMPARE(summary.sourceObservationIDs.size(), 2u);
        const auto closed = *launch.memory.sessions.previousSession();
        QCOMPARE(closed.id, session.id);
        QVERIFY(closed.dailySummaryID == summary.id);
        QCOMPARE(closed.activitySummary, u"Writer 9 min"_s);
        QVERIFY(launch.memory.sessions.activeSession()->previousSessionID == session.id);
        QVERIFY(launch.history.messages().empty());
        QCOMPARE(everythingSaid(scratch.path()), QStringList(u"good morning"_s));

        QVERIFY(awaited(launch.rollover.rolloverIfNeeded()) == RolloverOutcome());
    }

    void aDayOfSilenceHasNoSummaryAndNoRequest()
    {
        const ScratchDirectory scratch;
        ScriptedProvider model;
        Launch launch(scratch, &model);
        launch.history.append({ .role = ChatMessage::Role::assistant, .timestamp = now });
        for (int day = 0; day < 21; ++day)
            QVERIFY(launch.roll(now + days(day)) == (RolloverOutcome { true, false }));
        QVERIFY(model.requests().empty() && launch.memory.summaries.all().empty());
        QVERIFY(launch.history.messages().empty());
        QCOMPARE(launch.memory.sessions.activeSession()->startedAt, now + days(20));
    }

    void aDayThatAWrongClockBeganBeginsAtItsEnd()
    {
        Launch launch { ScratchDirectory() };
        launch.say(u"hello"_s);
        launch.roll(now - days(400));
        const auto& summary = launch.memory.summaries.all().front();
        QCOMPARE(summary.startDate, now - days(400));
        QCOMPARE(summary.endDate, summary.startDate);
    }

    void theSeventhDayMakesAWeek()
    {
        Launch launch { ScratchDirectory() };
        for (int day = 1; day <= 8; ++day) {
            launch.say(u"hello"_s);
            launch.roll(now + days(day));
            QCOMPARE(launch.memory.summaries.latestWeekly(launch.time).has_value(), day >= 7);
        }
        QCOMPARE(
            launch.memory.summaries.latestWeekly(launch.time)->sourceDailySummaryIDs.size(), 7u);
        QCOMPARE(launch.memory.summaries.unsummarizedDailies().size(), 1u);
    }

    void aWeekIsNotToldOnceItsDaysAreDeleted()
    {
        const ScratchDirectory scratch;
        Launch launch(scratch);
        for (int day = -6; day < 0; ++day) {
            launch.say(u"hello"_s);
            launch.roll(now + days(day));
        }
        launch.say(u"hello"_s);
        ScriptedProvider model;
        model.enqueue(u"{\"dailySummary\": \"Rested.\"}"_s);
        model.enqueueHeld(u"{\"summary\": \"secret\"}"_s);
        launch.models.librarian = &model;
        launch.beginToRoll(model, 2);
        launch.memory.summaries.deleteAll();
        model.release();
        QTRY_VERIFY(!launch.rollover.isUnderWay());
        QVERIFY(launch.memory.summaries.all().empty());
    }

    void whatIsOpenIsStillOpenTheNextDay()
    {
        const ScratchDirectory scratch;
        ScriptedProvider model;
        model.enqueue(
            u"{\"dailySummary\": \"Read.\", \"unfinishedIntent\": [{\"text\": \"Call Ana\"}]}"_s);
        Launch launch(scratch, &model);
        launch.say(u"hello"_s);
        launch.roll();
        launch.say(u"hello"_s);
        model.enqueue(LLMError::http(500, {}));
        launch.roll(now + days(1));
        QVERIFY(model.requests().back().messages[0].content.contains(u"Call Ana"));
        const auto open = std::vector { u"Call Ana"_s };
        QCOMPARE(launch.memory.summaries.latestDaily(launch.time)->unresolvedIntent, open);
    }

    void whatIsSaidWhileTheModelThinksBelongsToTheNextSession()
    {
        const ScratchDirectory scratch;
        ScriptedProvider model;
        model.enqueue({ {}, LLMError::http(500, {}), true });
        Launch launch(scratch, &model);
        launch.say(u"yesterday"_s);
        launch.beginToRoll(model, 1);
        QVERIFY(launch.roll() == RolloverOutcome());
        launch.time += 1s;
        launch.observe(launch.time);
        launch.say(u"today"_s);
        model.release();
        QTRY_VERIFY(!launch.rollover.isUnderWay());
        QCOMPARE(launch.memory.summaries.all()[0].endDate, now);
        QCOMPARE(launch.memory.sessions.previousSession()->endedAt, now);
        QCOMPARE(launch.memory.sessions.activeSession()->startedAt, now + 1s);
        QCOMPARE(launch.history.messages().size(), 1u);
        QCOMPARE(launch.history.messages().front().text, u"today");
        launch.roll(now + 1h);
        QCOMPARE(launch.memory.summaries.all()[1].sourceObservationIDs.size(), 1u);
    }

    void aCrashAtAnyWriteLosesAndRepeatsNothing()
    {
        for (int lastWrite = 0;; ++lastWrite) {
            const ScratchDirectory scratch;
            QStringList said;
            {
                Launch launch(scratch);
                for (int number = 0; number < 40; ++number)
                    launch.say(said.emplace_back(QString::number(number)));
            }
            DataDirectory dying = scratch;
            const auto operations = std::make_shared<DyingFileOperations>(lastWrite);
            dying.operations = operations;
            {
                Launch launch(dying);
                awaited(launch.rollover.rolloverIfNeeded());
            }
            Launch again(scratch);
            awaited(again.rollover.rolloverIfNeeded());
            QCOMPARE(again.memory.summaries.all().size(), 1u);
            QCOMPARE(again.memory.sessions.sessions().size(), 2u);
            QVERIFY(again.memory.sessions.activeSession()->previousSessionID.has_value());
            QCOMPARE(everythingSaid(scratch.path()), said);
            QVERIFY(again.history.messages().empty());
            if (!operations->isDead())
                return;
        }
    }

    void whatCannotBeArchivedStays()
    {
        const ScratchDirectory scratch;
        Launch launch(scratch);
        launch.say(u"kept"_s);
        const auto session = *launch.memory.sessions.activeSession();
        const auto name =
            u"chat-%1-%2.json"_s.arg(session.dayKey, json::keyText(session.id).first(8));
        QVERIFY(scratch.path().mkdir(name));
        QVERIFY(launch.roll().rolledOver);
        QCOMPARE(launch.history.messages().size(), 1u);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SessionRolloverServiceTest)
#include "SessionRolloverServiceTest.moc"
