#include "memory/ObservationStore.h"

#include "support/Joined.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using Query = ObservationStore::Query;

namespace {

TimePoint at(int hour)
{
    return TimePoint(std::chrono::hours(492320 + hour));
}

QUuid idOf(QChar label)
{
    return QUuid::createUuidV5(QUuid(), QString(label));
}

std::vector<QString> split(const char* tags)
{
    const auto parts = QString::fromLatin1(tags).split(u' ', Qt::SkipEmptyParts);
    return { parts.begin(), parts.end() };
}

/// Known by the first letter of its summary.
DatedObservation observation(int hour, const char* summary, const char* tags = "")
{
    const auto text = QString::fromUtf8(summary);
    return { .id = idOf(text.front()),
        .occurredAt = at(hour),
        .recordedAt = at(hour),
        .summary = text,
        .observedFacts = { u"seen at %1"_s.arg(hour) },
        .tags = split(tags) };
}

QString labels(const std::vector<DatedObservation>& observations)
{
    return joined(observations, [](const auto& found) {
        return found.summary.first(1);
    }).remove(u'|');
}

void fill(ObservationStore& store)
{
    auto worried = observation(1, "a: essays on Canvases");
    worried.inference = u"Worried"_s;
    worried.uncertainty = u"a zebra?"_s;
    store.add(worried);
    store.add(observation(3, "b: essay\non \t ÄRGER İ", "Exam"));
    store.add(observation(3, "c: ESSAY", "Physics Exam"));
    store.add(observation(2, "d: lunch", "food"));
}

Query words(const char* text)
{
    return { .text = QString::fromUtf8(text) };
}

Query tagged(const char* tags, const char* text = "")
{
    return { .text = QString::fromUtf8(text), .tags = split(tags) };
}

} // namespace

class ObservationStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSearchFindsWhatHoldsAllWordsAndAnyTag_data()
    {
        columns<Query, QString>("query", "found");
        row("nothing asked", Query(), "bcda");
        row("limit between equals", Query { .limit = 1 }, "b");
        row("no limit", Query { .limit = 0 }, "b");
        row("bounds", Query { .from = at(1), .to = at(2) }, "da");
        row("within bounds", Query { .from = at(1) + 1ms, .to = at(3) - 1ms }, "d");
        row("inside a longer word", words("canvas"), "a");
        row("all words", words("essay exam"), "bc");
        row("not only one word", words("lunch essay"), "");
        row("every field", words("zebra WORRIED 1"), "a");
        row("case and white space", words(" On\u00a0Ärger\n i\u0307"), "b");
        row("any tag", tagged("physics FOOD"), "cd");
        row("whole tags", tagged("phys"), "");
        row("tag and word", tagged("exam", "physics"), "c");
    }
    void aSearchFindsWhatHoldsAllWordsAndAnyTag()
    {
        QFETCH(Query, query);
        ObservationStore store(std::nullopt);
        fill(store);
        QTEST(labels(store.search(query)), "found");
        QTEST(labels(store.search(query)), "found");
    }

    void aSearchFollowsEveryChange()
    {
        const ScratchDirectory directory;
        ObservationStore store(directory);
        fill(store);
        const auto found = [&](const char* text) { return labels(store.search(words(text))); };
        QCOMPARE(found("essay"), u"bca"_s);
        store.remove(idOf(u'a'));
        QCOMPARE(found("essay"), u"bc"_s);
        QCOMPARE(found("lunch"), u"d"_s);
        store.add(observation(9, "e: essay"));
        QCOMPARE(found("essay"), u"ebc"_s);
        QCOMPARE(labels(store.observations(at(2), at(3))), u"dbc"_s);
        QCOMPARE(labels(store.withIDs({ idOf(u'c'), idOf(u'x'), idOf(u'd') })), u"dc"_s);

        store.markArchived({ idOf(u'b'), idOf(u'x'), idOf(u'e') }, idOf(u'p'));
        QCOMPARE(ObservationStore(directory).withIDs({ idOf(u'e') })[0].archivedIntoPeriodID,
            idOf(u'p'));
        QCOMPARE(store.pruneArchived(30, at(3) + 30 * 24h), 0);
        QCOMPARE(store.pruneArchived(30, at(3) + 30 * 24h + 1ms), 1);
        QCOMPARE(found("essay"), u"ec"_s);
        const auto left = store.observations(std::nullopt, std::nullopt);
        QCOMPARE(labels(left), u"dce"_s);
        QCOMPARE(left.back().archivedIntoPeriodID, idOf(u'p'));
        QVERIFY(ObservationStore(directory).observations(std::nullopt, std::nullopt) == left);
        store.deleteAll();
        QCOMPARE(ObservationStore(directory).count(), 0);
        store.add(observation(1, "f: dinner"));
        QCOMPARE(found("lunch"), QString());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ObservationStoreTest)
#include "ObservationStoreTest.moc"
