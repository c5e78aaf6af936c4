#include "memory/ReferenceMemoryStore.h"

#include "support/TableRow.h"

#include <QTemporaryDir>

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
        .summary = QStringLiteral("Hand it in"),
        .details = std::move(details),
        .source = QStringLiteral("test"),
        .createdAt = minute(updated),
        .updatedAt = minute(updated),
    };
}

const auto club = QStringLiteral("projects.club");

/// A confirmed section of the user's own, beside the fixed ones, and items in five sections.
ReferenceMemoryStore furnished(const std::optional<DataDirectory>& directory = std::nullopt)
{
    ReferenceMemoryStore store(directory);
    for (const auto& path : { club, QStringLiteral("academicsExtra") }) {
        store.proposeSection(path, QStringLiteral("Own"), QStringLiteral("The user's."));
        store.confirmSection(path);
    }
    const auto due = JSONValue(QStringLiteral("2026-03-01"));
    const auto points = JSONValue(12.5);
    store.upsertItem(item("academics.deadlines", "essay 1", 1, { { QStringLiteral("due"), due } }));
    store.upsertItem(item("academics.exams", "Physics 2026", 3));
    store.upsertItem(item("academicsExtra", "Essay prize", 3));
    store.upsertItem(item("projects.club", "Chess", 2, { { QStringLiteral("elo"), points } }));
    store.upsertItem(item("misc", "Locker", 0));
    return store;
}

QString titles(const auto& items)
{
    QStringList texts;
    for (const auto& each : items) {
        if constexpr (requires { each.item; })
            texts.append(each.item.title);
        else
            texts.append(each.title);
    }
    return texts.join(u'|');
}

} // namespace

class ReferenceMemoryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyStoreHasItsFixedSections()
    {
        const auto table = ReferenceMemoryStore(std::nullopt).tableOfContents();
        QCOMPARE(table.entries.size(), 25u);
        QVERIFY(std::ranges::is_sorted(table.entries, {}, &TOCEntry::path));
        QCOMPARE(table.compactText(IncludeEmpty::no, IncludeTimestamps::yes),
            QStringLiteral("(reference memory is empty)"));
        const auto text = table.compactText(IncludeEmpty::yes, IncludeTimestamps::yes);
        QCOMPARE(text.count(u'\n'), 24);
        QVERIFY(text.endsWith(QStringLiteral("- rules — Rules reference (0 items, updated —): "
                                             "Reference notes about rules.")));
    }

    void theTableOfContentsCountsWhatStandsAtThePathItself()
    {
        auto store = furnished();
        store.upsertItem(item("academics.deadlines", "Essay 2", 9));
        store.upsertItem(item("academics.deadlines", "Essay 3", 4));
        store.proposeSection(QStringLiteral("hidden"), {}, {});
        const auto text =
            store.tableOfContents().compactText(IncludeEmpty::no, IncludeTimestamps::yes);
        QCOMPARE(text.count(u'\n'), 4);
        QVERIFY(text.startsWith(
            QStringLiteral("- academics.deadlines — Deadlines (3 items, updated "
                           "2026-03-01T08:24:00Z): Due dates and submission details.\n")));
        QVERIFY(store.tableOfContents()
                    .compactText(IncludeEmpty::no, IncludeTimestamps::no)
                    .endsWith(QStringLiteral("\n- projects.club — Own (1 items): The user's.")));
    }

    void aSectionIsReadNewestFirst()
    {
        auto store = furnished();
        auto essay = item("academics.deadlines", "Essay %1", 9,
            { { QStringLiteral("to"), JSONValue(QStringLiteral("%2")) },
                { QStringLiteral("points"), JSONValue(12.0) } });
        essay.id = QUuid::fromString(u"5F0C7A2E-95B4-4B6E-9A55-0D9D3C6F1F10");
        store.upsertItem(essay);
        const auto section = store.readSection(essay.path);
        QVERIFY(section);
        QCOMPARE(titles(section->items), QStringLiteral("Essay %1|essay 1"));
        QVERIFY(section->compactText().startsWith(
            QStringLiteral("Deadlines (academics.deadlines)\nDue dates and submission details.\n"
                           "- [id:5f0c7a2e] Essay %1: Hand it in [points=12, to=%2]\n- [id:")));
        store.proposeSection(QStringLiteral("hidden"), {}, {});
        QVERIFY(!store.readSection(QStringLiteral("hidden")));
        QVERIFY(!store.readSection(QStringLiteral("academics")));
    }

    void anItemOfTheSameTitleIsReplacedInItsPlace()
    {
        const QTemporaryDir scratch;
        auto store = furnished(DataDirectory(scratch.path()));
        const auto old = store.allItems().front();
        const auto again = item("academics.deadlines", " Essay  1", 7);
        const auto stored = store.upsertItem(again);
        QVERIFY(stored);
        auto expected = again;
        expected.id = old.id;
        expected.createdAt = old.createdAt;
        QCOMPARE(*stored, expected);
        QCOMPARE(ReferenceMemoryStore(DataDirectory(scratch.path())).allItems(), store.allItems());
        QCOMPARE(store.allItems().front(), expected);
        QCOMPARE(store.allItems().size(), 5u);
    }

    void anItemNeedsAConfirmedSection()
    {
        ReferenceMemoryStore store(std::nullopt);
        QVERIFY(!store.upsertItem(item("academics.deadlines.old", "Essay", 1)));
        QVERIFY(store.proposeSection(club, QStringLiteral("Club"), {})->isCustom);
        QVERIFY(!store.proposeSection(club, QStringLiteral("Again"), {}));
        QVERIFY(!store.proposeSection(QStringLiteral("misc"), {}, {}));
        QCOMPARE(titles(store.proposedSections()), QStringLiteral("Club"));
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
        store.rejectSection(QStringLiteral("misc"));
        QCOMPARE(store.allItems().size(), 5u);
        QCOMPARE(store.deleteItems(QStringLiteral("academics")), 2);
        QCOMPARE(titles(store.allItems()), QStringLiteral("Essay prize|Chess|Locker"));
        store.rejectSection(club);
        QVERIFY(!store.readSection(club));
        QCOMPARE(titles(store.allItems()), QStringLiteral("Essay prize|Locker"));
        store.deleteAll();
        QCOMPARE(store.tableOfContents().entries.size(), 25u);
        QVERIFY(store.allItems().empty());
    }

    void searchFindsItemsThatHoldEveryWord_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("paths");
        QTest::addColumn<QString>("found");
        row("only blanks", " \n", "", "");
        row("a details value", "due 2026", "", "essay 1");
        row("in any case, across fields", "HAND  physics", "", "Physics 2026");
        row("one word missing", "physics due", "", "");
        row("a number as it is shown", "elo 12.5", "", "Chess");
        row("newest first, ties as in the file", "s", "", "Physics 2026|Essay prize|Chess|essay 1");
        row("a whole dotted prefix", "s", "academics", "Physics 2026|essay 1");
        row("half a word", "s", "academic", "");
        row("several paths", "in", "misc|projects", "Chess|Locker");
    }
    void searchFindsItemsThatHoldEveryWord()
    {
        QFETCH(QString, query);
        QFETCH(QString, paths);
        QFETCH(QString, found);
        const auto parts = paths.split(u'|', Qt::SkipEmptyParts);
        const std::vector<QString> roots(parts.begin(), parts.end());
        const auto store = furnished();
        QCOMPARE(titles(store.search(query, roots, 9)), found);
        QCOMPARE(titles(store.search(query, roots, 1)), found.section(u'|', 0, 0));
        QVERIFY(store.search(query, roots, -1).empty());
    }

    void searchFollowsItemsThatChangeOrMove()
    {
        auto store = furnished();
        QCOMPARE(store.search(QStringLiteral("hand"), {}, 9).size(), 5u);
        store.upsertItem(item("academics.deadlines", "essay 1", 7));
        QVERIFY(store.search(QStringLiteral("essay 2026"), {}, 9).empty());
        store.deleteItem(store.allItems().front().id);
        const auto found = store.search(QStringLiteral("locker"), {}, 9);
        QCOMPARE(titles(found), QStringLiteral("Locker"));
        QCOMPARE(found.front().sectionTitle, QStringLiteral("Misc reference"));
    }

    void aFileWithoutAFixedSectionGetsIt()
    {
        const QTemporaryDir scratch;
        const JSONFileStore file(DataDirectory(scratch.path()), QStringLiteral("reference.json"));
        const ReferenceSectionMeta own { .path = QStringLiteral("misc"), .confirmed = false };
        ReferenceMemoryData data { .items = { item("gone", "Orphan", 1) }, .sections = { own } };
        QVERIFY(file.save(data));
        const ReferenceMemoryStore store { DataDirectory(scratch.path()) };
        QCOMPARE(store.tableOfContents().entries.size(), 24u);
        QCOMPARE(store.proposedSections(), std::vector { own });
        const auto found = store.search(QStringLiteral("orphan"), {}, 1);
        QCOMPARE(found.front().sectionTitle, QStringLiteral("gone"));
        QCOMPARE(file.load<ReferenceMemoryData>(), data);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ReferenceMemoryStoreTest)
#include "ReferenceMemoryStoreTest.moc"
