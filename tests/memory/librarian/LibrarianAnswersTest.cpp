#include "memory/librarian/LibrarianAnswers.h"

#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

/// With quotation marks in place of apostrophes.
QString quoted(const char* text)
{
    return QString::fromUtf8(text).replace(u'\'', u'"');
}

LibrarianAnswers::Parsed<ExtractionResult> extraction(const QString& text)
{
    return LibrarianAnswers::parseExtraction(
        text, MemorySource::librarianSynthesis, QStringLiteral("librarian"), now);
}

MemoryNote existing(const QString& text, TimePoint seen = now - days(3))
{
    return { .id = QUuid::createUuid(), .text = text, .createdAt = seen, .lastObservedAt = seen };
}

LibrarianAnswers::Parsed<CleanupResult> cleanup(const QString& text,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns = {})
{
    return LibrarianAnswers::parseCleanup(text, notes, patterns, now, Calendar());
}

} // namespace

class LibrarianAnswersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstBalancedObjectIsTheAnswer_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("object");
        row("in a fence", "Sure!\n```json\n{\"a\": {}}\n```\n{\"b\": 2}", "{\"a\": {}}");
        row("an end before it", "} {}", "{}");
        row("a brace in a string counts", "{\"a\": \"}\", \"b\": 1}", "{\"a\": \"}");
        row("cut off", "{\"a\": {\"b\": 1}", "none");
        row("no object", "[1, 2]", "none");
        row("a flood", QString(10'000'000, u'{'), "none");
    }
    void theFirstBalancedObjectIsTheAnswer()
    {
        QFETCH(QString, text);
        QTEST(LibrarianAnswers::extractJSONObject(text).value_or(QStringLiteral("none")), "object");
    }

    void whatIsNoAnswerIsASentenceThatQuotesNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        row("prose", "My secret", "The model's answer holds no JSON object.");
        row("no JSON", "{secret}", "The model's answer is not valid JSON: ");
        row("too long", QStringLiteral("{\"secret\": \"%1\"}").arg(QString(1'000'000, u'x')),
            "The model's answer is too long.");
    }
    void whatIsNoAnswerIsASentenceThatQuotesNothing()
    {
        QFETCH(QString, problem);
        QFETCH(QString, text);
        const auto error = extraction(text).error();
        QVERIFY2(error.startsWith(problem) && !error.contains(u"secret"), qPrintable(error));
    }

    void aNoteIsReadWithIndulgence_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<MemoryCategory>("category");
        QTest::addColumn<MemorySource>("source");
        QTest::addColumn<double>("confidence");
        QTest::addColumn<bool>("isTemporary");
        QTest::addColumn<double>("hours");
        using enum MemoryCategory;
        using enum MemorySource;
        row("all of it",
            "'category': 'goals', 'source': 'explicitUser', 'confidence': 0.9, "
            "'isTemporary': true, 'expiresInHours': 1.5",
            goals, explicitUser, 0.9, true, 1.5);
        row("unknown names", "'category': 'hobbies', 'source': 'me', 'kind': ''", misc,
            librarianSynthesis, -1.0, false, 0.0);
        row("wrong types",
            "'category': 3, 'source': [], 'confidence': '1', 'isTemporary': 1, "
            "'expiresInHours': '2'",
            misc, librarianSynthesis, -1.0, false, 0.0);
        row("no end", "'isTemporary': true, 'expiresInHours': 0", misc, librarianSynthesis, -1.0,
            true, 0.0);
        row("too sure, and long gone", "'confidence': 9, 'expiresInHours': -5", misc,
            librarianSynthesis, 1.0, false, 0.0);
        row("for ever", "'confidence': -1, 'expiresInHours': 1e300", misc, librarianSynthesis, 0.0,
            false, 8760.0);
    }
    void aNoteIsReadWithIndulgence()
    {
        QFETCH(QString, fields);
        QFETCH(double, hours);
        const auto text =
            quoted("{'notes': [{'text': ' a\\n b ', %1}]}").arg(fields.replace(u'\'', u'"'));
        const auto note = extraction(text)->notes.at(0);
        QCOMPARE(note.text, QStringLiteral("a  b"));
        QTEST(note.category, "category");
        QTEST(note.source, "source");
        QTEST(note.confidence.value_or(-1), "confidence");
        QTEST(note.isTemporary, "isTemporary");
        const auto life = note.expiresAt ? *note.expiresAt - now : 0ms;
        QCOMPARE(life.count(), qint64(hours * 3'600'000));
    }

    void entriesThatSayNothingAreDropped()
    {
        const auto found =
            extraction(quoted("{'notes': [{'text': '  '}, {'text': 1}, 'text', null],"
                              "'observations': [{'summary': ''}, {'summary': 's', 'source': 'x',"
                              " 'observedFacts': ['f', 2, ' '], 'inference': 'null'}],"
                              "'referenceItems': [{'path': 'misc'}, {'title': 't'},"
                              " {'path': 'misc', 'title': 't', 'details': [1]}],"
                              "'proposedSections': {'path': 'a.b', 'title': 't'}}"));
        QVERIFY(found->notes.empty() && found->proposedSections.empty());
        const DatedObservation observation { .summary = QStringLiteral("s"),
            .observedFacts = { QStringLiteral("f") },
            .source = ObservationSource::librarianSynthesis };
        QVERIFY(found->observations == std::vector { observation });
        QCOMPARE(found->referenceItems.size(), 1u);
    }

    void anAnswerCannotFloodTheMemory()
    {
        const auto notes = [](int count, int size) {
            const QStringList entries(count, quoted("{'text': '%1'}").arg(QString(size, u'x')));
            return extraction(quoted("{'notes': [%1]}").arg(entries.join(u',')))->notes.size();
        };
        QCOMPARE(notes(150, 1000), 100u);
        QCOMPARE(notes(1, 1001), 0u);
        const auto found =
            extraction(quoted("{'referenceItems': [{'path': 'misc', 'title': '%1', 'details':"
                              "{'deep': %2, 'long': '%1', 'kept': [{'a': 1}]}}]}")
                           .arg(QString(2000, u'y'), QString(500, u'[') + QString(500, u']')));
        const auto item = found->referenceItems.at(0);
        QCOMPARE(item.title.size(), 1000);
        QCOMPARE(item.details.size(), 1u);
        QVERIFY(item.details.contains(QStringLiteral("kept")));
    }

    void aDayNeedsASummary()
    {
        using LibrarianAnswers::parseCloseout;
        QVERIFY(!parseCloseout(quoted("{'dailySummary': ' ', 'chronologicalHighlights': ['a']}")));
        const auto day = parseCloseout(
            quoted("{'dailySummary': ' Rested.\\n\\nRead. ', 'chronologicalHighlights': ['a', 4],"
                   "'unfinishedIntent': [{'text': 'b', 'kind': 'chore'}, {'text': ' '},"
                   "{'text': 'c', 'kind': 'waitingState'}]}"));
        QVERIFY(day
            == DailyCloseout({ QStringLiteral("Rested.\n\nRead."), { QStringLiteral("a") },
                { { QStringLiteral("b"), IntentKind::task },
                    { QStringLiteral("c"), IntentKind::waitingState } } }));
        QVERIFY(!LibrarianAnswers::parseWeekly(quoted("{'unresolvedIntent': ['a']}")));
    }

    void aRewrittenNoteKeepsItsHistory()
    {
        auto said = existing(QStringLiteral("Likes\n tea"));
        said.source = MemorySource::explicitUser;
        said.kind = MemoryKind::correction;
        said.observationCount = 4;
        auto passing = existing(QString(3000, u'x'));
        passing.isTemporary = true;
        passing.expiresAt = now + days(2);
        const auto answer = quoted("{'notes': [{'text': 'likes tea', 'category': 'preferences'},"
                                   "{'text': 'LIKES TEA'}, {'text': '%1'}, {'text': '%2'}]}")
                                .arg(passing.text, QString(1200, u'y'));
        const auto notes = cleanup(answer, { said, passing })->notes;
        QCOMPARE(notes.size(), 3u);
        said.category = MemoryCategory::preferences;
        QVERIFY(notes[0] == said);
        QVERIFY(notes[1] == passing);
        QCOMPARE(notes[2].createdAt, now);
        QCOMPARE(notes[2].text.size(), 1000);
    }

    void aCleanupKeepsNotes()
    {
        QVERIFY(!cleanup(quoted("{'patterns': []}"), {}));
        QVERIFY(!cleanup(quoted("{'notes': 'all fine'}"), {}));
        QVERIFY(!cleanup(quoted("{'notes': ['a', {'note': 'b'}]}"), {}));
        auto archived = existing(QStringLiteral("b"));
        archived.status = MemoryStatus::archived;
        QVERIFY(cleanup(quoted("{'notes': []}"), { archived }));
        QCOMPARE(
            cleanup(quoted("{'notes': []}"), { archived, existing(QStringLiteral("a")) }).error(),
            QStringLiteral("The model's answer keeps no note."));
        const std::vector many(300, existing(QStringLiteral("a")));
        QStringList entries;
        for (size_t number = 0; number < many.size(); ++number)
            entries.append(quoted("{'text': '%1'}").arg(number));
        QCOMPARE(
            cleanup(quoted("{'notes': [%1]}").arg(entries.join(u',')), many)->notes.size(), 300u);
    }

    void aPatternNeedsEvidenceOfTwoDays_data()
    {
        QTest::addColumn<QString>("patterns");
        QTest::addColumn<QString>("kept");
        row("none named", "null", "Known|Other");
        row("an empty list", "[]", "Known|Other");
        row("two days", "[{'text': 'New', 'evidenceNoteTexts': ['A', 'old']}]", "New");
        row("one day", "[{'text': 'P', 'evidenceNoteTexts': ['a', 'b']}]", "");
        row("one note", "[{'text': 'P', 'evidenceNoteTexts': ['old', 'old']}]", "");
        row("its own words", "[{'text': 'P', 'evidenceNoteTexts': ['old', 'fresh']}]", "");
        row("an existing one, twice", "[{'text': 'known'}, {'text': 'Known'}]", "Known");
    }
    void aPatternNeedsEvidenceOfTwoDays()
    {
        QFETCH(QString, patterns);
        const std::vector notes { existing(QStringLiteral("a")), existing(QStringLiteral("b")),
            existing(QStringLiteral("old"), now - days(20)) };
        const std::vector<PatternNote> known { { .text = QStringLiteral("Known") },
            { .text = QStringLiteral("Other") } };
        const auto answer = quoted("{'notes': [{'text': 'fresh'}], 'patterns': %1}")
                                .arg(patterns.replace(u'\'', u'"'));
        QStringList kept;
        const auto result = cleanup(answer, notes, known);
        for (const auto& entry : result->patterns)
            kept.append(entry.text);
        QTEST(kept.join(u'|'), "kept");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianAnswersTest)
#include "LibrarianAnswersTest.moc"
