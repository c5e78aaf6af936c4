#include "memory/recall/MemoryToolExecutor.h"

#include "foundation/IDPrefix.h"
#include "foundation/Text.h"
#include "memory/recall/NativeMemoryRetrieval.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr TimePoint now(1772352900s); // 2026-03-01T08:15:00Z
const auto weekID = QUuid::fromString(u"11111111-0000-4000-8000-000000000000");
const auto mondayID = QUuid::fromString(u"22222222-0000-4000-8000-000000000001");
const auto tuesdayID = QUuid::fromString(u"22222222-0000-4000-8000-000000000002");
const auto momentID = QUuid::fromString(u"33333333-0000-4000-8000-000000000000");

/// "name {'key': 'value'}", with single quotes in place of double ones.
MemoryToolCall call(QByteArray text)
{
    const auto name = text.split(' ').first();
    const auto json = QJsonDocument::fromJson(text.mid(name.size()).replace('\'', '"')).object();
    return { QString::fromUtf8(name), *JSONValue::fromJson(json).object() };
}

std::function<Task<QString>()> always(QString text)
{
    return [text] { return [](QString given) -> Task<QString> { co_return given; }(text); };
}

/// Stores in memory with an executor over them.
struct World {
    ReferenceMemoryStore reference { std::nullopt };
    ObservationStore observations { std::nullopt };
    PeriodSummaryStore summaries { std::nullopt };
    DailySessionStore sessions { std::nullopt };
    MemoryStore memory { std::nullopt, [] { return Calendar(); } };
    NativeMemoryRetrieval retrieval { { reference, observations, summaries, sessions, memory },
        always(u"Current app: Kate"_s) };
    MemoryToolExecutor executor { { retrieval, observations, memory, [] { return now; } } };

    void fill()
    {
        reference.proposeSection(u"hobbies"_s, u"Hobbies"_s, u"s"_s);
        reference.upsertItem({ momentID, u"people"_s, u"Ana"_s, u"lab %1 partner"_s,
            { { u"room"_s, 12 } }, u"user"_s, now, now });
        observations.add({ momentID, now, now, u"Lost a chess game"_s,
            { u"was quiet"_s, u"left early"_s }, u"tired"_s, u"maybe ill"_s,
            ObservationSource::systemObserved, { u"Mood"_s }, {}, {} });
        const std::vector days { mondayID, QUuid::createUuid(), tuesdayID };
        addPeriod(PeriodType::day, tuesdayID, now, u"calm"_s, { momentID }, {});
        addPeriod(PeriodType::day, mondayID, now - 24h, u"busy"_s, { momentID }, {});
        addPeriod(PeriodType::week, weekID, now - 24h, u"mixed"_s, {}, days);
        sessions.adoptImportedSession({ momentID, u"2026-03-01"_s, now, now, {}, 3, {}, {}, {} });
        const auto read = [](const QString& source, const QString& path, std::optional<int> lines) {
            return always(source + path + QString::number(lines.value_or(0)))();
        };
        executor.setAppDataProviders({ .readFile = read });
    }

    void addPeriod(PeriodType type, const QUuid& id, TimePoint start, const QString& text,
        std::vector<QUuid> moments, std::vector<QUuid> days)
    {
        summaries.add({ id, type, start, start + 1h, text, { u"a"_s, u"b"_s }, {},
            std::move(moments), std::move(days), now });
    }

    QUuid note(const QString& text, MemoryCategory category, TimePoint at = now)
    {
        return memory.addNote({ .text = text, .category = category }, at)->id;
    }

    QString run(const QByteArray& text) { return result(text).text; }
    MemoryToolResult result(const QByteArray& text)
    {
        return awaited(executor.execute(call(text)));
    }
};

} // namespace

class MemoryToolExecutorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyToolAnswersInWords_data()
    {
        QTest::addColumn<QString>("answer");
        row("memory_read_section {'path': 'people'}",
            "People (people)\nPeople the user mentions and related context.\n"
            "- [id:33333333] Ana: lab %1 partner [room=12]");
        row("memory_read_section {'path': 'hobbies'}",
            "error: No reference section at path: hobbies");
        row("memory_search_reference {'query': 'LAB', 'paths': ['people', 3]}",
            "- [id:33333333] [People] Ana: lab %1 partner [room=12]");
        row("memory_search_reference {'query': 'lab', 'paths': ['routines']}",
            "no reference items matched");
        row("memory_search_reference {'query': 7}", "error: missing required argument: query");
        row("memory_search_observations {'query': 'game', 'tags': ['mood'], 'limit': 'x'}", "GAME");
        row("memory_search_observations {'from': '2026-03-01', 'to': '2026-03-02'}", "GAME");
        row("memory_search_observations {'from': '2026-03-01T08:15:00.001Z'}",
            "no observations matched");
        row("memory_search_observations {'from': 'March 1'}",
            "error: not an ISO-8601 date: March 1");
        row("memory_list_period_summaries {'from': '2026-03-01T08:15:01Z'}",
            "- [id:22222222] day 2026-03-01T08:15:00Z → 2026-03-01T09:15:00Z: calm");
        row("memory_expand_period {'id': '1111'}",
            "week summary 2026-02-28T08:15:00Z → 2026-02-28T09:15:00Z: mixed\n"
            "highlights: a | b\n## day 2026-02-28T08:15:00Z: busy\n"
            "## day 2026-03-01T08:15:00Z: calm\n## raw observations\nGAME");
        row("memory_expand_period {'id': '22222222-0000-4000-8000-000000000002'}",
            "day summary 2026-03-01T08:15:00Z → 2026-03-01T09:15:00Z: calm\n"
            "highlights: a | b\n## raw observations\nGAME");
        row("memory_expand_period {'id': '22222222'}",
            "id 22222222 matches more than one summary — use more characters");
        row("memory_expand_period {'id': 'x'}",
            "no period summary matches id x — call memory_list_period_summaries to see current "
            "ids");
        row("memory_get_daily_session {}",
            "session 33333333-0000-4000-8000-000000000000, day 2026-03-01, started "
            "2026-03-01T08:15:00Z, turns: 3");
        row("memory_get_active_context", "Current app: Kate");
        row("memory_list_active_goals", "no active goals in memory");
        row("memory_find_notes", "no memory notes matched");
        row("memory_add_observation {'summary': ''}", "error: missing required argument: summary");
        row("memory_propose_pattern {'text': 't', 'evidenceNoteTexts': 'a'}",
            "error: missing required argument: evidenceNoteTexts");
        row("apps_list_files {'source': 's'}", "(app data tools unavailable)");
        row("apps_read_file {'source': 's'}", "error: missing required argument: path");
        row("apps_read_file {'source': 's', 'path': 'p'}", "sp0");
        row("apps_read_file {'source': 's', 'path': 'p', 'tailLines': 5000}", "sp1000");
        row("rules_list", "(rules unavailable)");
        row("interventions_recent", "(interventions unavailable)");
        row("Rules_list", "error: unknown tool: Rules_list");
    }
    void everyToolAnswersInWords()
    {
        QFETCH(QString, answer);
        World world;
        world.fill();
        answer.replace(u"GAME"_s,
            u"- [id:33333333] [2026-03-01T08:15:00Z] Lost a chess game (source: systemObserved)\n"
            "  facts: was quiet; left early\n  inference (not established fact): tired\n"
            "  uncertainty: maybe ill"_s);
        const auto result = world.result(QTest::currentDataTag());
        QCOMPARE(result.text, answer);
        QCOMPARE(result.ok, !answer.startsWith(u"error: "));
    }

    void anEmptyMemorySaysSo()
    {
        World world;
        QCOMPARE(world.run("memory_list_period_summaries"), u"no period summaries yet"_s);
        QCOMPARE(world.run("memory_get_daily_session"), u"error: No active daily session"_s);
        const auto contents = world.run("memory_get_table_of_contents");
        QCOMPARE(contents.count(u'\n'), 24);
        QVERIFY(contents.contains(u"- people — People (0 items, updated —): "));
    }

    void theLimitOfASearchIsKeptInBounds_data()
    {
        QTest::addColumn<int>("found");
        row("memory_search_observations {}", 20);
        row("memory_search_observations {'limit': 500}", 100);
        row("memory_search_observations {'limit': -1e300}", 1);
        row("memory_search_observations {'limit': 2.5}", 3);
    }
    void theLimitOfASearchIsKeptInBounds()
    {
        World world;
        for (int number = 0; number < 101; ++number)
            world.observations.add({ .id = QUuid::createUuid() });
        // Without the executor, which would cut the text.
        MemoryTools tools({ world.retrieval, world.observations, world.memory }, {});
        const auto found = awaited(tools.run(call(QTest::currentDataTag())));
        QTEST(int(found->count(u"[id:")), "found");
    }

    void notesAreFoundByWordsAndCategory()
    {
        World world;
        for (int number = 0; number < 25; ++number)
            world.note(u"Likes tea %1"_s.arg(number), MemoryCategory::preferences);
        const auto id = world.note(u"Learn Thai"_s, MemoryCategory::aspirations);
        const auto bullet = u"- [id:%1] "_s.arg(IDPrefix::shortID(id));
        const auto note = bullet + u"(aspirations) Learn Thai"_s;
        QCOMPARE(world.run("memory_list_active_goals"), bullet + u"Learn Thai"_s);
        QCOMPARE(world.run("memory_find_notes {'query': ' tHAI  learn'}"), note);
        QCOMPARE(world.run("memory_find_notes {'category': 'aspirations'}"), note);
        const auto all = world.run("memory_find_notes {'category': 'nonsense'}");
        QVERIFY(all.startsWith(note));
        QCOMPARE(all.count(u'\n'), 19);
        QCOMPARE(world.run("memory_find_notes {'query': 'tea', 'category': 'goals'}"),
            u"no memory notes matched"_s);
    }

    void aPatternNeedsEvidenceOfTwoDays()
    {
        World world;
        world.note(u"Slept  late"_s, MemoryCategory::history, now - 24h);
        world.note(u"woke late"_s, MemoryCategory::history, now - 24h);
        world.note(u"overslept"_s, MemoryCategory::history);
        const auto propose = [&](const QByteArray& evidence) {
            return world.result("memory_propose_pattern {'text': 'Late', 'confidence': '1', "
                                "'evidenceNoteTexts': "
                + evidence + '}');
        };
        const MemoryToolResult refused { u"memory_propose_pattern"_s, true,
            u"not recorded: patterns need evidence from at least two distinct days (or an "
            "explicit user generalization)"_s };
        QCOMPARE(propose("['slept late', 'woke late', 'unknown', 'slept late']"), refused);
        QVERIFY(world.memory.allPatterns().empty());
        QCOMPARE(
            propose("['OVERSLEPT', 'slept late', 'overslept']").text, u"pattern recorded: Late"_s);
        QCOMPARE(world.memory.allPatterns().front().confidence, 0.6);
        QCOMPARE(world.memory.allPatterns().front().sourceNoteIDs.size(), 2u);
    }

    void anObservationIsRecordedAndTold()
    {
        World world;
        std::vector<DatedObservation> told;
        const auto hook = [&](DatedObservation observation) {
            told.push_back(std::move(observation));
            return []() -> Task<> { co_return; }();
        };
        world.executor.setProviders({ .observationHook = hook });
        const auto answer =
            world.run("memory_add_observation {'summary': 'Passed', 'tags': ['exam', 1]}");
        const DatedObservation expected { told.at(0).id, now, now, u"Passed"_s, {}, {}, {},
            ObservationSource::librarianSynthesis, { u"exam"_s }, {}, {} };
        QCOMPARE(answer, u"recorded observation "_s + IDPrefix::shortID(expected.id));
        QVERIFY(told == std::vector { expected });
        QVERIFY(world.observations.search({}) == told);
    }

    void theFifthCallOfABatchIsRefused()
    {
        World world;
        const auto record = call("memory_add_observation {'summary': 'again'}");
        const auto results = awaited(world.executor.executeAll(
            { record, call(""), call("rules_list"), call("memory_add_observation"), record }));
        QCOMPARE(results.size(), 5u);
        QCOMPARE(results[1].text, u"error: unknown tool: "_s);
        QVERIFY(results[2].ok && results[2].name == u"rules_list");
        const MemoryToolResult refused { record.name, false,
            u"refused: max 4 tool calls per request"_s };
        QCOMPARE(results[4], refused);
        QCOMPARE(world.observations.count(), 1);
        QCOMPARE(world.executor.totalCalls(), 5);
        QCOMPARE(world.executor.recentLog(1).front().argsSummary, u"summary=again"_s);
    }

    void whatIsHugeIsCut_data()
    {
        QTest::addColumn<QString>("character");
        QTest::addColumn<int>("times");
        QTest::addColumn<int>("kept");
        row("as much as fits", "e\u0301", 4000, 4000);
        row("one too many", "e\u0301", 4001, 4000);
        row("families", "👩‍👩‍👧‍👦", 5000, 4000);
        row("fifty megabytes", "x", 50'000'000, 4000);
        row("a single character", "\u0301", 5'000'000, 1);
    }
    void whatIsHugeIsCut()
    {
        QFETCH(QString, character);
        QFETCH(int, times);
        const auto huge = character.repeated(times);
        World world;
        world.executor.setProviders({ .rulesProvider = always(huge) });
        const auto result =
            awaited(world.executor.execute({ u"rules_list"_s, { { huge, huge } } }));
        QTEST(int(Text::characterCount(result.text)), "kept");
        QVERIFY(huge.startsWith(result.text) && result.text.size() < 200'000);
        QVERIFY(awaited(world.executor.execute({ huge, {} })).text.size() < 200'000);
        const auto log = world.executor.recentLog(2);
        QCOMPARE(log[0].resultBytes, int(result.text.toUtf8().size()));
        QVERIFY(log[0].argsSummary.size() < 20'000 && log[1].name.size() < 20'000);
    }

    void theLatestTwoHundredCallsAreKept()
    {
        World world;
        for (int number = 0; number < 205; ++number)
            world.run(QByteArray::number(number) + " {'b': [1, null], 'a': {'k': ''}}");
        QCOMPARE(world.executor.totalCalls(), 205);
        QCOMPARE(world.executor.recentLog(-1).size(), 0u);
        const auto log = world.executor.recentLog(1000);
        QCOMPARE(log.size(), 200u);
        QCOMPARE(log[0].name, u"5"_s);
        const MemoryToolLogEntry latest { u"204"_s, u"a={k: }, b=[1, null]"_s, false, 24, now };
        QVERIFY(log.back() == latest);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryToolExecutorTest)
#include "MemoryToolExecutorTest.moc"
