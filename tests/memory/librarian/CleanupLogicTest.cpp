#include "memory/librarian/CleanupLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

namespace {

/// "a b*": of each word a note with an id of its own; a star marks an archived one.
std::vector<MemoryNote> notes(const QString& words)
{
    std::vector<MemoryNote> notes;
    for (const auto& word : words.split(u' ', Qt::SkipEmptyParts)) {
        const auto text = QString(word).remove(u'*');
        notes.push_back({
            .id = QUuid::createUuidV5(QUuid(), text.section(u'=', 0, 0)),
            .text = text.section(u'=', -1),
            .status = word.endsWith(u'*') ? MemoryStatus::archived : MemoryStatus::active,
        });
    }
    return notes;
}

std::vector<PatternNote> patterns(const QString& words)
{
    std::vector<PatternNote> patterns;
    for (const auto& note : notes(words))
        patterns.push_back({ .id = note.id, .text = note.text });
    return patterns;
}

template <typename Entry>
QString texts(const std::vector<Entry>& entries)
{
    QStringList texts;
    for (const auto& entry : entries)
        texts.append(entry.text);
    return texts.join(u' ');
}

} // namespace

class CleanupLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// "a=x" is the note a after it was reworded to x.
    void whatTheUserChangedOvertakesTheModel_data()
    {
        QTest::addColumn<QString>("seen");
        QTest::addColumn<QString>("now");
        QTest::addColumn<bool>("isOvertaken");
        row("unchanged", "a b", "a b", false);
        row("added", "a b", "c a b d*", false);
        row("deleted", "a b", "b", true);
        row("corrected", "a b", "a b=x", true);
    }
    void whatTheUserChangedOvertakesTheModel()
    {
        QFETCH(QString, seen);
        QFETCH(QString, now);
        using CleanupLogic::isOvertaken;
        QTEST(isOvertaken({ notes(seen), {} }, notes(now), {}), "isOvertaken");
        QTEST(isOvertaken({ {}, patterns(seen) }, {}, patterns(now)), "isOvertaken");
    }

    void whatTheModelDidNotSeeStays_data()
    {
        QTest::addColumn<QString>("seen");
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("rewritten");
        QTest::addColumn<QString>("notes");
        QTest::addColumn<QString>("patterns");
        row("nothing new", "a b", "a b", "ab", "ab", "ab");
        row("two new ones", "a b", "d c a b", "ab", "d c ab", "ab d c");
        row("the model says it as well", "a", "c b a", "x=B", "c B", "B c");
        row("an archived one", "a", "a c*", "a", "a", "a c");
    }
    void whatTheModelDidNotSeeStays()
    {
        QFETCH(QString, seen);
        QFETCH(QString, now);
        QFETCH(QString, rewritten);
        const auto result = CleanupLogic::withUnseen({ notes(rewritten), patterns(rewritten) },
            { notes(seen), patterns(seen) }, notes(now), patterns(now));
        QTEST(texts(result.notes), "notes");
        QTEST(texts(result.patterns), "patterns");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CleanupLogicTest)
#include "CleanupLogicTest.moc"
