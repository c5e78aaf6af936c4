#include "memory/librarian/LibrarianService.h"

#include "support/Awaited.h"
#include "support/Joined.h"
#include "support/LogLines.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedProvider.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;
using Result = LibrarianExtractionResult;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

/// With quotation marks in place of apostrophes.
QString quoted(const char* text)
{
    return QString::fromUtf8(text).replace(u'\'', u'"');
}

std::vector<ChatMessage> window()
{
    return { { .text = u"I study law"_s, .timestamp = now, .sessionID = QUuid::createUuid() } };
}

/// A model that cleans up portions of notes in its own way.
class RewritingProvider : public ScriptedProvider {
public:
    enum class Act {
        /// Merges the first five notes into two.
        well,
        /// Keeps a third.
        tooShort,
        /// Would keep them all, but ends in the middle.
        cut,
        notAtAll
    };

    explicit RewritingProvider(Act act)
        : m_act(act)
    {
    }

    LLMStream streamChat(LLMRequest request) override
    {
        const auto& prompt = request.messages[0].content;
        ++requests;
        tokens += MemoryStore::estimateTokens(prompt) + request.maxTokens;
        if (m_act == Act::notAtAll)
            enqueue(TransportError { TransportError::Kind::timedOut, {} });
        else
            enqueue(answer(notesIn(prompt)));
        return ScriptedProvider::streamChat(std::move(request));
    }

    int requests = 0;
    int tokens = 0;

private:
    static QStringList notesIn(const QString& prompt)
    {
        QStringList notes;
        for (const auto& line : prompt.split(u'\n')) {
            if (const auto text = line.trimmed(); text.startsWith(u"\"text\": "))
                notes += u"{%1}"_s.arg(text);
        }
        return notes;
    }

    QString answer(QStringList notes) const
    {
        if (m_act == Act::well)
            notes = notes.mid(5) << quoted("{'text': 'One of %1'}").arg(requests)
                                 << quoted("{'text': 'Two of %1'}").arg(requests);
        else if (m_act == Act::tooShort)
            notes = notes.mid(0, notes.size() / 3);
        const auto text = u"{\"notes\": [%1]}"_s.arg(notes.join(u','));
        return m_act == Act::cut ? text.first(text.size() / 2) : text;
    }

    Act m_act;
};

/// What each job but the cleanup came to.
struct Runs {
    Result extraction;
    Result meeting;
    DailyCloseout day;
    WeeklyRollupResult week;
};

} // namespace

class LibrarianServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_model = std::make_unique<ScriptedProvider>();
        m_models.librarian = m_model.get();
        m_models.librarianSettings = { .temperature = 0.3, .maxOutputTokens = 1000 };
        m_stores = std::make_unique<ScriptedStores>();
        m_stores->memory.sessions.ensureActiveSession(now, Calendar());
        m_memory = &m_stores->memory;
        m_service = std::make_unique<LibrarianService>(m_stores->all, m_stores->moment, m_models);
    }

    void whatTheModelFoundIsStored()
    {
        m_memory->notes.addNote({ u"Likes tea"_s }, now - days(1));
        const auto answer = quoted("```json\n{'notes': [{'text': 'Studies law'},"
                                   "{'text': 'likes tea'}, {'text': 'studies LAW'}],"
                                   "'observations': [{'summary': 'Slept badly'}],"
                                   "'referenceItems': [{'path': 'misc', 'title': 't'},"
                                   "{'path': 'academics.nonsense', 'title': 't'}],"
                                   "'proposedSections': [{'path': 'a.b', 'title': 't'},"
                                   "{'path': 'misc', 'title': 't'}]}\n```");
        m_model->enqueue({ { LLMToken { answer }, LLMUsage { 700, 90 } } });
        QVERIFY(extract() == Result({ 1, 1, 1, 1 }));
        QCOMPARE(activeTexts(), u"Studies law|Likes tea"_s);
        QCOMPARE(m_memory->notes.notes()[0].observationCount, 2);
        const auto observed = m_memory->observations.observations({}, {}).at(0);
        QCOMPARE(observed.occurredAt, now);
        QVERIFY(m_memory->sessions.activeSession()->observationIDs == std::vector { observed.id });
        QCOMPARE(m_memory->reference.allItems().at(0).source, u"librarian"_s);
        QCOMPARE(m_service->lastRunAt(), now);
        QCOMPARE(m_stores->usage.snapshot().librarianPromptTokens, 700);
    }

    void whatWasSaidOffTheRecordIsNotSent()
    {
        auto said = window();
        said[0].sessionID.reset();
        QVERIFY(awaited(m_service->extractAfterTurn(said, {}, {}, {})) == Result());
        QVERIFY(m_model->requests().empty());
        m_model->enqueue(quoted("{'notes': []}"));
        const auto day = awaited(m_service->closeDailySession({ .window = said }));
        QVERIFY(!m_model->requests()[0].messages[0].content.contains(u"I study law"));
        QCOMPARE(day.summary, u"1 chat turn, 0 observations recorded."_s);
    }

    void whatWasSaidIsDatedByItsLastMessage()
    {
        m_stores->time = now + days(1);
        m_model->enqueue(quoted("{'observations': [{'summary': 'Slept badly'}]}"));
        extract();
        const auto observed = m_memory->observations.observations({}, {}).at(0);
        QCOMPARE(observed.occurredAt, now);
        QCOMPARE(observed.recordedAt, now + days(1));
    }

    void highlightsAreKeptWithoutASummary()
    {
        m_model->enqueue(quoted("{'chronologicalHighlights': ['Passed the exam']}"));
        const auto day = awaited(
            m_service->closeDailySession({ .window = window(), .previousIntent = { u"open"_s } }));
        const DailyCloseout expected { u"1 chat turn, 0 observations recorded."_s,
            { u"Passed the exam"_s }, { { u"open"_s } } };
        QVERIFY(day == expected);
        const auto required = m_model->requests()[0].responseFormat.schema.at(u"required"_s);
        QCOMPARE(required.displayString(), u"[dailySummary]");
    }

    void nothingFoundIsASuccess()
    {
        const LogLines log;
        m_model->enqueue(u"no"_s);
        m_model->enqueue(quoted("{'notes':[]}"));
        QVERIFY(extract() == Result());
        QVERIFY(m_service->lastError() && !m_service->lastRunAt());
        QVERIFY(extract() == Result());
        QVERIFY(!m_service->lastError() && m_service->lastRunAt());
    }

    void eachJobAsksInItsOwnWay()
    {
        const LogLines log;
        fillNotes();
        m_models.librarianSettings.maxOutputTokens = 1000;
        runAll();
        QStringList asked;
        for (const auto& request : m_model->requests()) {
            QCOMPARE(request.messages.size(), 1u);
            QCOMPARE(request.temperature, 0.3);
            QVERIFY(request.longest == 10min);
            QVERIFY(request.responseFormat.schema.contains(u"properties"_s));
            asked.append(request.responseFormat.name + u" %1"_s.arg(request.maxTokens));
        }
        QCOMPARE(asked.join(u'|'),
            u"librarian_extraction 1000|meeting_notes_extraction 1000|"
            "daily_closeout 2000|weekly_rollup 2000|memory_cleanup 3000"_s);
        QVERIFY(m_model->requests()[0].messages[0].content.contains(
            u"[2026-03-01T08:15:00Z] user: I study law"));
    }

    void onlyARejectedFormIsTriedAgain()
    {
        for (const auto& [status, calls] :
            { std::pair(399, 1), { 400, 2 }, { 499, 2 }, { 500, 1 } }) {
            init();
            const LogLines log;
            const auto refusal = LLMError::http(status, u"{\"echo\": \"I study law\"}"_s);
            for (int call = 0; call < 2; ++call)
                m_model->enqueue(refusal);
            QVERIFY(extract() == Result());
            QCOMPARE(m_service->lastError(), refusal.description());
            const QStringList lines { u"buddy: librarian: json_schema rejected (HTTP %1); retrying "
                                      "with json_object"_s,
                u"buddy: librarian extraction failed: API error %1: "_s };
            const auto logged =
                QStringList(lines.last(calls)).replaceInStrings(u"%1"_s, QString::number(status));
            QCOMPARE(log.lines(), logged);
            QCOMPARE(std::ssize(m_model->requests()), calls);
            QCOMPARE(m_model->requests().back().responseFormat.name.isEmpty(), calls == 2);
        }
    }

    void thoughtsLeaveRoomForTheAnswer()
    {
        const LogLines log;
        const ScriptedProvider::Reply thought { .end = { .isCutOff = true, .hasThought = true } };
        m_model->enqueue(thought);
        m_model->enqueue(quoted("{'notes': [{'text': 'Studies law'}]}"));
        QCOMPARE(extract().notesAdded, 1);
        m_model->enqueue(thought);
        QVERIFY(extract() == Result());
        QVERIFY(m_service->lastError()->contains(u"MAX_OUTPUT_TOKENS"));
        QStringList limits;
        for (const auto& request : m_model->requests())
            limits.append(QString::number(request.maxTokens));
        QCOMPARE(limits.join(u' '), u"1000 4000 4000");
    }

    void noModelCanDoHarm_data()
    {
        using Reply = ScriptedProvider::Reply;
        columns<Reply>("reply");
        const auto saying = [](const QString& text) { return Reply { { LLMToken { text } } }; };
        row("hanging", Reply { {}, TransportError { TransportError::Kind::timedOut, {} } });
        row("refusing", Reply { {}, LLMError::http(400, u"secret"_s) });
        row("breaking", Reply { {}, LLMError::http(500, u"secret"_s) });
        row("silent", Reply());
        row("nonsense", saying(u"<html>secret</html>"_s));
        row("half", saying(quoted("{'notes': [{'text': 'secret")));
        row("ten megabytes", saying(quoted("{'notes': '%1'}").arg(QString(10'000'000, u'x'))));
    }
    void noModelCanDoHarm()
    {
        QFETCH(ScriptedProvider::Reply, reply);
        fillNotes();
        const auto notes = m_memory->notes.notes();
        for (int call = 0; call < 12; ++call)
            m_model->enqueue(reply);
        const LogLines log;
        const auto [extraction, meeting, day, week] = runAll();
        QVERIFY(extraction == Result() && meeting == Result());
        QCOMPARE(day.unfinishedIntent.at(0).text, u"open"_s);
        QCOMPARE(week.summary, u"[2026-03-01] Rested."_s);
        QVERIFY(m_memory->notes.notes() == notes && m_memory->observations.count() == 0);
        QVERIFY(m_service->lastError() && !m_service->lastRunAt() && !m_service->lastCleanupAt());
        const auto lines = log.lines().join(u'\n');
        for (const auto* job :
            { "extraction", "meeting-notes ingestion", "closeout", "weekly rollup", "cleanup" })
            QVERIFY2(
                lines.contains(u"buddy: librarian %1 failed: "_s.arg(QLatin1String(job))), job);
        QVERIFY(!lines.contains(u"secret"));
    }

    void aFloodIsGivenUp()
    {
        const LogLines log;
        const std::vector<std::vector<LLMStreamEvent>> floods {
            std::vector<LLMStreamEvent>(2, LLMToken { QString(100'001, u'x') }),
            std::vector<LLMStreamEvent>(20'001, LLMToken { u"x"_s }),
        };
        for (int given = 0; const auto& flood : floods) {
            m_model->enqueue({ flood, std::nullopt, true });
            QVERIFY(extract() == Result());
            QCOMPARE(m_model->droppedStreams(), ++given);
            QVERIFY(m_service->lastError()->contains(u"the answer is too long"));
        }
    }

    void withoutAModelNothingIsRecorded()
    {
        m_models.librarian = nullptr;
        fillNotes();
        const LogLines log;
        const auto runs = runAll();
        QVERIFY(runs.extraction == Result());
        QCOMPARE(runs.day.summary, u"1 chat turn, 0 observations recorded."_s);
        QVERIFY(!m_service->lastError() && !m_service->lastRunAt() && log.lines().isEmpty());
    }

    void whatAMeetingBringsIsItsOwn()
    {
        QVERIFY(awaited(m_service->ingestMeetingNotes({ .text = u" \n"_s })) == Result());
        QVERIFY(m_model->requests().empty());
        m_model->enqueue(
            quoted("{'notes': [{'text': 'a'}, {'text': 'b', 'source': 'explicitUser'}],"
                   "'observations': [{'summary': 'c'}],"
                   "'referenceItems': [{'path': 'misc', 'title': 'd'}]}"));
        const auto result =
            awaited(m_service->ingestMeetingNotes({ u"Zoom"_s, 45, now - 2h, u"notes"_s }));
        QVERIFY(result == Result({ 2, 1, 1, 0 }));
        QVERIFY(m_memory->notes.notes()[1].source == MemorySource::meetingNotes);
        QVERIFY(m_memory->notes.notes()[0].source == MemorySource::explicitUser);
        QCOMPARE(m_memory->observations.observations({}, {}).at(0).occurredAt, now - 2h);
        QCOMPARE(m_memory->reference.allItems().at(0).source, u"meetingNotes"_s);
    }

    void whatHappensDuringACleanupIsNotLost()
    {
        awaited(m_service->cleanupIfNeeded());
        QVERIFY(m_model->requests().empty());
        fillNotes();
        m_memory->notes.addNote({ u"said"_s, {}, {}, MemorySource::explicitUser }, now);
        m_memory->notes.addNote({ u"old"_s }, now - days(2));
        m_model->enqueueHeld(rewritten({ u"OLD"_s, u"Merged"_s }));
        auto first = m_service->cleanupIfNeeded();
        auto second = m_service->cleanupIfNeeded();
        for (const auto& text : { u"new"_s, u"old"_s })
            m_memory->notes.addNote({ text }, now);
        m_model->release();
        awaited(std::move(first));
        awaited(std::move(second));
        QCOMPARE(m_model->requests().size(), 1u);
        QVERIFY(activeTexts().startsWith(u"Merged|new|old|said|59"));
        QCOMPARE(m_memory->notes.allNotes(MemoryStore::IncludeArchived::no).size(), 4u + 40u);
        QCOMPARE(m_memory->notes.notes()[2].observationCount, 2);
        QVERIFY(m_memory->notes.notes()[2].source != MemorySource::explicitUser);
        QCOMPARE(m_service->lastCleanupAt(), now);
    }

    void theUsersChangesOvertakeACleanup()
    {
        fillNotes();
        m_memory->notes.addNote({ u"wrong"_s }, now);
        m_model->enqueueHeld(rewritten({ u"This is wrong"_s }));
        auto cleanup = m_service->cleanupIfNeeded();
        m_memory->notes.correctNote(m_memory->notes.notes()[0].id, u"right"_s, now);
        const auto notes = m_memory->notes.notes();
        m_model->release();
        awaited(std::move(cleanup));
        QVERIFY(m_memory->notes.notes() == notes);
        QVERIFY(!m_service->lastCleanupAt() && !m_service->lastError());
        m_stores->time += days(1);
        m_model->enqueue(rewritten({}));
        awaited(m_service->cleanupIfNeeded());
        QCOMPARE(m_service->lastCleanupAt(), now + days(1));
    }

    void aCleanupNeverCostsMoreThanItIsWorth_data()
    {
        using Act = RewritingProvider::Act;
        columns<int, Act, int, int, int>("notes", "act", "requests", "thousandTokens", "kept");
        row("300, well", 300, Act::well, 7, 67, 279);
        row("300, short", 300, Act::tooShort, 2, 19, 300);
        row("300, cut", 300, Act::cut, 2, 19, 300);
        row("300, not at all", 300, Act::notAtAll, 1, 9, 300);
        row("600, well", 600, Act::well, 14, 135, 558);
        row("600, short", 600, Act::tooShort, 2, 19, 600);
        row("600, cut", 600, Act::cut, 2, 19, 600);
        row("600, not at all", 600, Act::notAtAll, 1, 11, 600);
        row("2,000, well", 2000, Act::well, 42, 433, 1874);
        row("2,000, short", 2000, Act::tooShort, 2, 22, 2000);
        row("2,000, cut", 2000, Act::cut, 2, 22, 2000);
        row("2,000, not at all", 2000, Act::notAtAll, 1, 11, 2000);
    }
    /// Twenty attempts within a day.
    void aCleanupNeverCostsMoreThanItIsWorth()
    {
        QFETCH(int, notes);
        QFETCH(RewritingProvider::Act, act);
        QFETCH(int, kept);
        const LogLines log;
        RewritingProvider model(act);
        m_models.librarian = &model;
        m_models.librarianSettings = {};
        for (int number = 0; number < notes; ++number)
            m_memory->notes.addNote({ .text = QString::number(number).leftJustified(80, u'x'),
                                        .category = MemoryCategory(number % 7) },
                now);
        for (int attempt = 0; attempt < 20; ++attempt) {
            awaited(m_service->cleanupIfNeeded());
            m_stores->time += 1h;
        }
        QTEST(model.requests, "requests");
        QTEST(model.tokens / 1000, "thousandTokens");
        QCOMPARE(m_memory->notes.allNotes(MemoryStore::IncludeArchived::no).size(), size_t(kept));
        QVERIFY(m_memory->notes.notes().size() >= size_t(notes));
    }

    void nothingForgottenComesBack()
    {
        fillNotes();
        for (int job = 0; job < 3; ++job)
            m_model->enqueueHeld(quoted("{'notes': [{'text': 'secret'}], 'dailySummary': 'secret',"
                                        "'summary': 'secret'}"));
        m_model->enqueueHeld(rewritten({ u"secret"_s }));
        auto extraction = extracting();
        auto day = m_service->closeDailySession({});
        auto week = m_service->weeklyRollup({ { .summary = u"secret"_s } });
        auto cleanup = m_service->cleanupIfNeeded();
        m_memory->notes.deleteAll(now);
        m_service->abandonRuns();
        m_model->release();
        QVERIFY(awaited(std::move(extraction)) == Result());
        QVERIFY(awaited(std::move(day)) == DailyCloseout());
        QVERIFY(awaited(std::move(week)) == WeeklyRollupResult());
        awaited(std::move(cleanup));
        QVERIFY(m_memory->notes.notes().empty());
    }

    void nothingIsStoredOnceTheMemoryIsOff()
    {
        fillNotes();
        const auto revision = m_memory->revision();
        m_model->enqueueHeld(
            quoted("{'notes': [{'text': 'secret'}], 'observations': [{'summary': 's'}]}"));
        m_model->enqueueHeld(rewritten({ u"secret"_s }));
        auto extraction = extracting();
        auto cleanup = m_service->cleanupIfNeeded();
        m_stores->setMemoryEnabled(false);
        m_model->release();
        QVERIFY(awaited(std::move(extraction)) == Result());
        awaited(std::move(cleanup));
        QCOMPARE(m_memory->revision(), revision);
    }

    void nothingForgottenIsSentAgain()
    {
        m_model->enqueue({ {}, LLMError::http(400, u"I study law"_s), true });
        auto extraction = extracting();
        m_service->abandonRuns();
        m_model->release();
        QVERIFY(awaited(std::move(extraction)) == Result());
        QCOMPARE(m_model->requests().size(), 1u);
        QVERIFY(!m_service->lastError());
        m_model->enqueue(quoted("{'notes': [{'text': 'news'}]}"));
        QVERIFY(extract() == Result({ 1, 0, 0, 0 }));
    }

private:
    Task<Result> extracting() { return m_service->extractAfterTurn(window(), {}, {}, {}); }
    Result extract() { return awaited(extracting()); }
    Runs runAll()
    {
        Runs runs;
        runs.extraction = extract();
        runs.meeting = awaited(m_service->ingestMeetingNotes({ .text = u"n"_s }));
        runs.day = awaited(
            m_service->closeDailySession({ .window = window(), .previousIntent = { u"open"_s } }));
        runs.week =
            awaited(m_service->weeklyRollup({ { .startDate = now, .summary = u"Rested."_s } }));
        awaited(m_service->cleanupIfNeeded());
        return runs;
    }
    /// More than the soft target.
    void fillNotes()
    {
        // One portion.
        m_models.librarianSettings.maxOutputTokens = 10'000;
        for (int number = 0; number < 60; ++number)
            m_memory->notes.addNote({ QString::number(number).leftJustified(450, u'x') }, now);
    }
    /// Two thirds of those notes, and others.
    QString rewritten(const QStringList& others) const
    {
        QStringList entries;
        for (const auto& text : others)
            entries += quoted("{'text': '%1', 'source': 'explicitUser'}").arg(text);
        for (int number = 59; number >= 20; --number)
            entries +=
                quoted("{'text': '%1'}").arg(QString::number(number).leftJustified(450, u'x'));
        return quoted("{'notes': [%1]}").arg(entries.join(u','));
    }
    QString activeTexts() const
    {
        return joined(
            m_memory->notes.allNotes(MemoryStore::IncludeArchived::no), &MemoryNote::text);
    }

    std::unique_ptr<ScriptedProvider> m_model;
    ScriptedModels m_models;
    std::unique_ptr<ScriptedStores> m_stores;
    MemoryTiers* m_memory = nullptr;
    std::unique_ptr<LibrarianService> m_service;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianServiceTest)
#include "LibrarianServiceTest.moc"
