#include "memory/ReferenceMemoryStore.h"

#include "support/Joined.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Details = std::map<QString, JSONValue>;
using IncludeEmpty = MemoryTableOfContents::IncludeEmpty;
using IncludeTimestamps = MemoryTableOfContents::IncludeTimestamps;

TimePoint minute(int number)
{
    return TimePoint(std::chrono::seconds(1772352900)) + std::chrono::minutes(number);
}

ReferenceItem item(const char* path, const char* title, int updated, Details details = {})
{
    return {
        .id = QUuid::createUuid(),
        .path = QString::fromLatin1(path),
        .title = QString::fromLatin1(title),
        .summary = u"Hand it in"_s,
        .details = std::move(details),
        .source = u"test"_s,
        .createdAt = minute(updated),
        .updatedAt = minute(updated),
    };
}

const auto club = u"projects.club"_s;

/// A confirmed section of the user's own, beside the fixed ones, and items in five sections.
ReferenceMemoryStore furnished(const std::optional<DataDirectory>& directory = std::nullopt)
{
    ReferenceMemoryStore store(directory, PlatformWording::linuxDesktop);
    for (const auto& path : { club, u"academicsExtra"_s }) {
        store.proposeSection(path, u"Own"_s, u"The user's."_s);
        store.confirmSection(path);
    }
    const auto due = JSONValue(u"2026-03-01"_s);
    const auto points = JSONValue(12.5);
    store.upsertItem(item("academics.deadlines", "essay 1", 1, { { u"due"_s, due } }));
    store.upsertItem(item("academics.exams", "Physics 2026", 3));
    store.upsertItem(item("academicsExtra", "Essay prize", 3));
    store.upsertItem(item("projects.club", "Chess", 2, { { u"elo"_s, points } }));
    store.upsertItem(item("misc", "Locker", 0));
    return store;
}

QString titles(const auto& items)
{
    return joined(items, [](const auto& each) {
        if constexpr (requires { each.item; })
            return each.item.title;
        else
            return each.title;
    });
}

} // namespace

class ReferenceMemoryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyStoreHasItsFixedSections()
    {
        const auto table =
            ReferenceMemoryStore(std::nullopt, PlatformWording::linuxDesktop).tableOfContents();
        QCOMPARE(table.entries.size(), 25u);
        QVERIFY(std::ranges::is_sorted(table.entries, {}, &TOCEntry::path));
        QCOMPARE(table.compactText(IncludeEmpty::no, IncludeTimestamps::yes),
            u"(reference memory is empty)"_s);
        const auto text = table.compactText(IncludeEmpty::yes, IncludeTimestamps::yes);
        QCOMPARE(text.count(u'\n'), 24);
        QVERIFY(text.endsWith(u"- rules — Rules reference (0 items, updated —): "
                              "Reference notes about rules."_s));
    }

    void theTableOfContentsCountsWhatStandsAtThePathItself()
    {
        auto store = furnished();
        store.upsertItem(item("academics.deadlines", "Essay 2", 9));
        store.upsertItem(item("academics.deadlines", "Essay 3", 4));
        store.proposeSection(u"hidden"_s, {}, {});
        const auto text =
            store.tableOfContents().compactText(IncludeEmpty::no, IncludeTimestamps::yes);
        QCOMPARE(text.count(u'\n'), 4);
        QVERIFY(text.startsWith(u"- academics.deadlines — Deadlines (3 items, updated "
                                "2026-03-01T08:24:00Z): Due dates and submission details.\n"_s));
        QVERIFY(store.tableOfContents()
                    .compactText(IncludeEmpty::no, IncludeTimestamps::no)
                    .endsWith(u"\n- projects.club — Own (1 items): The user's."_s));
    }

    void aSectionIsReadNewestFirst()
    {
        auto store = furnished();
        auto essay = item("academics.deadlines", "Essay %1", 9,
            { { u"to"_s, JSONValue(u"%2"_s) }, { u"points"_s, JSONValue(12.0) } });
        essay.id = QUuid::fromString(u"5F0C7A2E-95B4-4B6E-9A55-0D9D3C6F1F10");
        store.upsertItem(essay);
        const auto section = store.readSection(essay.path);
        QVERIFY(section);
        QCOMPARE(titles(section->items), u"Essay %1|essay 1"_s);
        QVERIFY(section->compactText().startsWith(
            u"Deadlines (academics.deadlines)\nDue dates and submission details.\n"
            "- [id:5f0c7a2e] Essay %1: Hand it in [points=12, to=%2]\n- [id:"_s));
        store.proposeSection(u"hidden"_s, {}, {});
        QVERIFY(!store.readSection(u"hidden"_s));
        QVERIFY(!store.readSection(u"academics"_s));
    }

    void anItemOfTheSameTitleIsReplacedInItsPlace()
    {
        const ScratchDirectory directory;
        auto store = furnished(directory);
        const auto old = store.allItems().front();
        const auto again = item("academics.deadlines", " Essay  1", 7);
        const auto stored = store.upsertItem(again);
        auto expected = again;
        expected.id = old.id;
        expected.createdAt = old.createdAt;
        QCOMPARE(*stored, expected);
        QCOMPARE(ReferenceMemoryStore(directory, PlatformWording::linuxDesktop).allItems(),
            store.allItems());
        QCOMPARE(store.allItems().front(), expected);
    }

    void anItemNeedsAConfirmedSection()
    {
        ReferenceMemoryStore store(std::nullopt, PlatformWording::linuxDesktop);
        QVERIFY(!store.upsertItem(item("academics.deadlines.old", "Essay", 1)));
        QVERIFY(store.proposeSection(club, u"Club"_s, {})->isCustom);
        QVERIFY(!store.proposeSection(club, u"Again"_s, {}));
        QVERIFY(!store.proposeSection(u"misc"_s, {}, {}));
        QCOMPARE(titles(store.proposedSections()), u"Club"_s);
        QVERIFY(!store.upsertItem(item("projects.club", "Chess", 1)));
        store.confirmSection(club);
        QVERIFY(store.upsertItem(item("projects.club", "Chess", 1)));
        QVERIFY(store.proposedSections().empty());
    }

    void whatGoesTakesWhatIsBeneathIt()
    {
        auto store = furnished();
        for (const auto* path : { "", "academic", "misc.x" })
            QCOMPARE(store.deleteItems(QString::fromLatin1(path)), 0);
        store.rejectSection(u"misc"_s);
        QCOMPARE(store.allItems().size(), 5u);
        QCOMPARE(store.deleteItems(u"academics"_s), 2);
        QCOMPARE(titles(store.allItems()), u"Essay prize|Chess|Locker"_s);
        store.rejectSection(club);
        QVERIFY(!store.readSection(club));
        QCOMPARE(titles(store.allItems()), u"Essay prize|Locker"_s);
        store.deleteAll();
        QCOMPARE(store.tableOfContents().entries.size(), 25u);
        QVERIFY(store.allItems().empty());
    }

    void searchFindsItemsThatHoldEveryWord_data()
    {
        columns<QString, QString, QString>("query", "path", "found");
        row("only blanks", " \n", "", "");
        row("a details value", "due 2026", "", "essay 1");
        row("in any case, across fields", "HAND  physics", "", "Physics 2026");
        row("one word missing", "physics due", "", "");
        row("a number as it is shown", "elo 12.5", "", "Chess");
        row("newest first, ties as in the file", "s", "", "Physics 2026|Essay prize|Chess|essay 1");
        row("a whole dotted prefix", "s", "academics", "Physics 2026|essay 1");
        row("half a word", "s", "academic", "");
    }
    void searchFindsItemsThatHoldEveryWord()
    {
        QFETCH(QString, query);
        QFETCH(QString, path);
        QFETCH(QString, found);
        const std::vector<QString> roots(path.isEmpty() ? 0 : 1, path);
        const auto store = furnished();
        QCOMPARE(titles(store.search(query, roots, 9)), found);
        QCOMPARE(titles(store.search(query, roots, 1)), found.section(u'|', 0, 0));
        QVERIFY(store.search(query, { u"misc"_s, u"projects"_s }, -1).empty());
        QCOMPARE(titles(store.search(u"in"_s, { u"misc"_s, u"projects"_s }, 9)), u"Chess|Locker");
    }

    void searchFollowsItemsThatChangeOrMove()
    {
        auto store = furnished();
        QCOMPARE(store.search(u"hand"_s, {}, 9).size(), 5u);
        store.upsertItem(item("academics.deadlines", "essay 1", 7));
        QVERIFY(store.search(u"essay 2026"_s, {}, 9).empty());
        store.deleteItem(store.allItems().front().id);
        const auto found = store.search(u"locker"_s, {}, 9);
        QCOMPARE(titles(found), u"Locker"_s);
        QCOMPARE(found.front().sectionTitle, u"Misc reference"_s);
    }

    void aFileWithoutAFixedSectionGetsIt()
    {
        const ScratchDirectory directory;
        const JSONFileStore file(directory, u"reference.json"_s);
        const ReferenceSectionMeta own { .path = u"misc"_s, .confirmed = false };
        ReferenceMemoryData data { .items = { item("gone", "Orphan", 1) }, .sections = { own } };
        QVERIFY(file.save(data));
        const ReferenceMemoryStore store(directory, PlatformWording::linuxDesktop);
        QCOMPARE(store.tableOfContents().entries.size(), 24u);
        QCOMPARE(store.proposedSections(), std::vector { own });
        const auto found = store.search(u"orphan"_s, {}, 1);
        QCOMPARE(found.front().sectionTitle, u"gone"_s);
        QCOMPARE(file.load<ReferenceMemoryData>(), data);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ReferenceMemoryStoreTest)
#include "ReferenceMemoryStoreTest.moc"
