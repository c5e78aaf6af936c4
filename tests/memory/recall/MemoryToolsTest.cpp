#include "memory/recall/MemoryTools.h"

#include "foundation/IDPrefix.h"
#include "support/Awaited.h"
#include "support/TableRow.h"
#include "support/ToolWorld.h"
#include "tools/MemoryToolExecutor.h"

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

struct World : ToolWorld {
    MemoryToolExecutor executor { everyTool([] { return now; }) };

    void fill()
    {
        memory.reference.proposeSection(u"hobbies"_s, u"Hobbies"_s, u"s"_s);
        memory.reference.upsertItem({ momentID, u"people"_s, u"Ana"_s, u"lab %1 partner"_s,
            { { u"room"_s, 12 } }, u"user"_s, now, now });
        memory.observations.add({ momentID, now, now, u"Lost a chess game"_s,
            { u"was quiet"_s, u"left early"_s }, u"tired"_s, u"maybe ill"_s,
            ObservationSource::systemObserved, { u"Mood"_s }, {}, {} });
        const std::vector days { mondayID, QUuid::createUuid(), tuesdayID };
        addPeriod(PeriodType::day, tuesdayID, now, u"calm"_s, { momentID }, {});
        addPeriod(PeriodType::day, mondayID, now - 24h, u"busy"_s, { momentID }, {});
        addPeriod(PeriodType::week, weekID, now - 24h, u"mixed"_s, {}, days);
        memory.sessions.adoptImportedSession(
            { momentID, u"2026-03-01"_s, now, now, {}, 3, {}, {}, {} });
    }

    void addPeriod(PeriodType type, const QUuid& id, TimePoint start, const QString& text,
        std::vector<QUuid> moments, std::vector<QUuid> days)
    {
        memory.summaries.add({ id, type, start, start + 1h, text, { u"a"_s, u"b"_s }, {},
            std::move(moments), std::move(days), now });
    }

    QUuid note(const QString& text, MemoryCategory category, TimePoint at = now)
    {
        return memory.notes.addNote({ .text = text, .category = category }, at)->id;
    }

    QString run(const QByteArray& text) { return result(text).text; }
    MemoryToolResult result(const QByteArray& text)
    {
        return awaited(executor.execute(call(text)));
    }
};

} // namespace

class MemoryToolsTest : public QObject {
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
        row("memory_search_observations {'from': '2026-03-01', 'to': '2026-03-01'}", "GAME");
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
        row("memory_expand_period {'id': '[id:22222222-0000-4000-8000-000000000002]'}",
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
        row("rules_list", "no rules configured");
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

    void theNewestSummariesAreListedOldestFirst()
    {
        World world;
        for (int day = 0; day < 100; ++day)
            world.addPeriod(PeriodType::day, QUuid::createUuid(), now + day * 24h,
                u"day %1"_s.arg(day), {}, {});
        const auto lines = world.run("memory_list_period_summaries").split(u'\n');
        const auto shown = lines.size() - 1;
        QVERIFY(shown > 40);
        QVERIFY(lines.front().startsWith(u"(%1 earlier summaries"_s.arg(100 - shown)));
        QVERIFY(lines[1].endsWith(u": day %1"_s.arg(100 - shown)));
        QVERIFY(lines.back().endsWith(u": day 99"));
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
            world.memory.observations.add({ .id = QUuid::createUuid() });
        const auto tools = world.everyTool();
        const auto wanted = call(QTest::currentDataTag());
        // Without the executor, which would cut the text.
        const auto tool = std::ranges::find(tools, wanted.name, &Tool::name);
        const auto found = awaited(tool->run(ToolArguments(wanted.args)));
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
        QVERIFY(world.memory.notes.allPatterns().empty());
        QCOMPARE(
            propose("['OVERSLEPT', 'slept late', 'overslept']").text, u"pattern recorded: Late"_s);
        QCOMPARE(world.memory.notes.allPatterns().front().confidence, 0.6);
        QCOMPARE(world.memory.notes.allPatterns().front().sourceNoteIDs.size(), 2u);
    }

    void anObservationBelongsToTheSession()
    {
        World world;
        world.memory.sessions.ensureActiveSession(now, Calendar());
        const auto answer =
            world.run("memory_add_observation {'summary': 'Passed', 'tags': ['exam', 1]}");
        const auto found = world.memory.observations.search({});
        QCOMPARE(found.size(), 1u);
        const auto id = found.front().id;
        const DatedObservation expected { id, now, now, u"Passed"_s, {}, {}, {},
            ObservationSource::librarianSynthesis, { u"exam"_s }, {}, {} };
        QVERIFY(found.front() == expected);
        QCOMPARE(answer, u"recorded observation "_s + IDPrefix::shortID(id));
        QVERIFY(world.memory.sessions.activeSession()->observationIDs == std::vector { id });
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryToolsTest)
#include "MemoryToolsTest.moc"
