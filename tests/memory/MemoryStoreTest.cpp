#include "memory/MemoryStore.h"

#include "memory/CleanupGuard.h"
#include "memory/PatternLogic.h"
#include "memory/ResidentMemoryLogic.h"
#include "support/Awaited.h"
#include "support/Joined.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;
using enum AddNoteResult::Kind;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

MemoryNote note(const char* text, MemoryStatus status = MemoryStatus::active)
{
    MemoryNote note { .id = QUuid::createUuid(), .text = QString::fromUtf8(text) };
    note.createdAt = note.lastObservedAt = now;
    note.status = status;
    return note;
}

MemoryNote temporary(const char* text, MemoryCategory category, std::optional<TimePoint> expiresAt)
{
    auto temporary = note(text);
    temporary.category = category;
    temporary.isTemporary = true;
    temporary.expiresAt = expiresAt;
    return temporary;
}

} // namespace

class MemoryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch.emplace(); }

    void aKnownStatementIsReinforcedAndNeverRevived()
    {
        auto tea = note("likes tea", MemoryStatus::archived);
        auto store = storeWith({ .notes = { note("first"), tea } });
        QVERIFY(add(store, "  Likes   Tea\n") == AddNoteResult({ reinforced, tea.id }));
        tea.observationCount = 2;
        tea.lastObservedAt = now + 1s;
        QVERIFY(store.notes().back() == tea);
        QVERIFY(!store.addNote({ u" \n "_s }, now));
        QCOMPARE(add(store, " Likes tea. ").kind, added);
        QCOMPARE(joined(store.allNotes(MemoryStore::IncludeArchived::no), &MemoryNote::text),
            u"Likes tea.|first"_s);
    }

    void statementsFollowEveryChangeOfTheNotes()
    {
        auto store = storeWith({ .notes = { note("a"), note("b"), note("c") } });
        add(store, "c");
        store.correctNote(store.notes()[1].id, u" mended "_s, now);
        QCOMPARE(add(store, "MENDED").id, store.notes()[1].id);
        QCOMPARE(store.notes()[1].text, u"mended"_s);
        store.deleteNote(store.notes()[0].id, now);
        add(store, "c");
        QCOMPARE(store.notes()[1].observationCount, 3);
        store.applyCleanup({}, { { note("d") }, {} }, now);
        QCOMPARE(add(store, "d").kind, reinforced);
        store.deleteAll(now);
        QCOMPARE(add(store, "d").kind, added);
    }

    void theResidentMemoryReadsWell()
    {
        QLocale::setDefault(QLocale(QLocale::German));
        auto corrected = note("Drinks %1 tea");
        corrected.kind = MemoryKind::correction;
        corrected.observationCount = 2;
        using enum MemoryCategory;
        auto store = storeWith({
            .notes = { corrected, note("archived", MemoryStatus::archived),
                temporary("past", goals, now), temporary("nearly past", currentContext, now + 1s),
                temporary("lasting", currentContext, std::nullopt) },
            .patterns = { { corrected.id, u"Late"_s, 3, now, now, {}, 0.25 } },
        });
        const auto text = u"Current Context\n- nearly past\n- lasting\n\n"
                          "Misc\n- Drinks %1 tea [user correction — overrides older notes]"
                          " (noted 2x)\n\n"
                          "Patterns\n- Late (evidence: 3, confidence: 0.2)"_s;
        QCOMPARE(store.residentMemory(1000, now), text);
        store.pruneExpired(now);
        QCOMPARE(store.notes().size(), 4u);
        const auto head = u"Pobblewig — Memory Export\n\nExported: 2026-03-01T08:15:00Z\n\n"_s;
        QCOMPARE(store.exportText(now), head + text);
        store.deleteAll(now);
        QCOMPARE(store.exportText(now), head + u"No memories yet."_s);
    }

    void theBudgetIsSharedByTheSections()
    {
        const auto text = [](const std::vector<MemoryNote>& notes, int maxTokens) {
            return ResidentMemoryLogic::text(notes, {}, maxTokens, now);
        };
        const auto goal = temporary("x", MemoryCategory::goals, std::nullopt);
        QCOMPARE(text({ note("yyyy"), goal }, 6), u"Goals\n- x\n\nMisc\n- yyyy"_s);
        QCOMPARE(text({ note("yyyyyyy"), note("y"), goal }, 6), u"Goals\n- x\n\nMisc\n- y"_s);
        QCOMPARE(text({ note("much too long"), goal }, 6), u"Goals\n- x"_s);
        const auto family = "👩‍👩‍👧👩‍👩‍👧";
        QCOMPARE(text({ temporary(family, MemoryCategory::goals, std::nullopt), note("long") }, 7),
            u"Goals\n- "_s + QString::fromUtf8(family) + u"\n\nMisc\n- long"_s);
    }

    void aFullMemoryKeepsTheNewestAndTheMostConfirmed()
    {
        std::vector<MemoryNote> notes;
        for (int day = 0; day < 9; ++day) {
            notes.push_back(note("fact"));
            notes.back().text += QString::number(day);
            notes.back().lastObservedAt = now + days(day);
        }
        notes[2].observationCount = 3;
        notes[4].kind = MemoryKind::correction;
        const auto store = storeWith({ .notes = notes });
        QCOMPARE(store.residentMemory(25, now),
            u"Misc\n- fact2 (noted 3x)\n- fact4 [user correction — overrides older notes]"
            "\n- fact6\n- fact7\n- fact8"_s);
        QVERIFY(store.residentTokenEstimate(now) > 25);
    }

    void aPatternNeedsTwoNotesAndTwoDays()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const auto midnight = now + 6h + 45min;
        const auto isPattern = [&](TimePoint seenAgain, TimePoint second) {
            std::vector notes { note("a"), note("b") };
            notes[0].lastObservedAt = seenAgain;
            notes[1].createdAt = notes[1].lastObservedAt = second;
            return PatternLogic::canPromotePattern(notes, tokyo);
        };
        QVERIFY(!isPattern(now, midnight - 1s));
        QVERIFY(isPattern(now, midnight));
        QVERIFY(isPattern(midnight, now));
        auto alone = note("a");
        alone.lastObservedAt += days(5);
        QVERIFY(!PatternLogic::canPromotePattern({ alone }, tokyo));
    }

    void evidenceGathersInAPattern()
    {
        const auto a = note("a");
        auto b = note("b");
        b.observationCount = 4;
        b.createdAt = now - days(3);
        const auto c = note("c");
        auto store = storeWith({ .notes = { a, b, c } });
        const auto synthesize = [&](const char* text, const std::vector<QUuid>& evidence) {
            return store.synthesizePattern({ QString::fromUtf8(text), evidence, 0.5 }, now + 1h);
        };
        QVERIFY(!synthesize("P", { a.id, c.id }));
        QVERIFY(!synthesize(" ", { a.id, b.id }));
        PatternNote pattern { {}, u"Up  late"_s, 5, now - days(3), now, { b.id, QUuid(), a.id },
            0.5 };
        pattern.id = synthesize(" Up  late ", pattern.sourceNoteIDs)->id;
        QVERIFY(store.allPatterns() == std::vector({ pattern }));
        pattern.lastObservedAt = now + 1h;
        QVERIFY(synthesize("up late", { a.id, b.id }) == pattern);
        pattern.evidenceCount = 6;
        pattern.sourceNoteIDs.push_back(c.id);
        QVERIFY(synthesize("up late", { c.id, b.id }) == pattern);
        QVERIFY(store.allPatterns() == std::vector({ pattern }));
    }

    void aCleanupIsDueBySize()
    {
        using CleanupGuard::isDue;
        QVERIFY(!isDue(5999, 0) && isDue(6000, std::nullopt));
        QVERIFY(!isDue(7000, 5001) && isDue(7000, 5000) && isDue(10000, 9999));
    }

    void aCleanupLosesNothingThatItLeavesOut()
    {
        auto said = note("said");
        said.source = MemorySource::explicitUser;
        auto old = note("old");
        old.lastObservedAt = now - days(300);
        auto overdue = note("overdue", MemoryStatus::archived);
        overdue.lastObservedAt = now - days(30) - 1s;
        auto store = storeWith({ .notes = { old, note("unseen"), overdue, said } });
        store.applyCleanup({ { old, said }, {} }, { { note("new") }, {} }, now);
        old.status = MemoryStatus::archived;
        QCOMPARE(joined(store.notes(), &MemoryNote::text), u"new|old|unseen|said"_s);
        QVERIFY(store.notes()[1] == old && store.notes()[3] == said);
        QCOMPARE(saved().lastCleanupAt, now);
        QCOMPARE(saved().lastCleanupTokenCount, store.residentTokenEstimate(now));
    }

    void aBatchIsOneSave()
    {
        auto store = storeWith({ .notes = { note("a") } });
        const auto revision = store.revision();
        const auto added = awaited(
            store.addNotes({ { u"A"_s }, { u" "_s }, { u"b\n- c"_s }, { u"B  - C"_s } }, now));
        QCOMPARE(added, 1);
        QCOMPARE(store.revision(), revision + 1);
        QCOMPARE(joined(saved().notes, &MemoryNote::text), u"b - c|a"_s);
        QCOMPARE(saved().notes[0].observationCount, 2);
    }

    void aLaterSaveIsNotOvertakenByABatch()
    {
        auto store = storeWith({});
        auto batch = store.addNotes(std::vector<NewNote>(1, { QString(500, u'x') }), now);
        store.deleteAll(now);
        awaited(std::move(batch));
        QVERIFY(saved().notes.empty());
    }

    void anEarlyFileIsFilledUpAndSavedOnceItCanBe()
    {
        m_scratch->write(u"memory.json"_s,
            "{\"version\": 1, \"notes\": ["
            "{\"id\": \"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10\", \"text\": \"bare\"},"
            "{\"id\": \"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f11\", \"text\": \"dated\","
            " \"createdAt\": \"2025-03-01T08:15:00Z\"}]}");
        const LogLines log;
        MemoryStore store(m_scratch->failing(), [] { return Calendar(); });
        QCOMPARE(store.notes()[0].createdAt, now);
        QCOMPARE(store.notes()[0].lastObservedAt, now);
        QCOMPARE(store.notes()[1].lastObservedAt, now - days(365));

        store.deleteNote(QUuid::createUuid(), now);
        QVERIFY(log.lines().isEmpty());
        store.deleteNote(store.notes()[1].id, now);
        QCOMPARE(saved().version, 1);
        add(store, "new");
        QVERIFY(saved() == MemoryStoreData({ .notes = store.notes(), .updatedAt = now + 1s }));
    }

private:
    static AddNoteResult add(MemoryStore& store, const char* text)
    {
        return store.addNote({ QString::fromUtf8(text) }, now + 1s).value();
    }
    JSONFileStore file() const { return { *m_scratch, u"memory.json"_s }; }
    MemoryStoreData saved() const { return file().load<MemoryStoreData>().value(); }
    MemoryStore storeWith(const MemoryStoreData& data) const
    {
        if (!file().save(data))
            qFatal("the notes could not be saved");
        return { *m_scratch, [] { return Calendar(); } };
    }

    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryStoreTest)
#include "MemoryStoreTest.moc"
