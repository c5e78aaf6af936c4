#include "memory/librarian/LibrarianAnswers.h"

#include "foundation/EnumNames.h"
#include "support/Joined.h"
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
        text, MemorySource::librarianSynthesis, u"librarian"_s, now);
}

MemoryNote existing(const QString& text, TimePoint seen = now - days(3))
{
    return { .id = QUuid::createUuid(), .text = text, .createdAt = seen, .lastObservedAt = seen };
}

LibrarianAnswers::Parsed<CleanupSnapshot> cleanup(const QString& text,
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
        columns<QString, QString>("text", "object");
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
        QTEST(LibrarianAnswers::extractJSONObject(text).value_or(u"none"_s), "object");
    }

    void whatIsNoAnswerIsASentenceThatQuotesNothing()
    {
        QCOMPARE(extraction(u"My secret"_s).error(), u"The model's answer holds no JSON object.");
        const auto error = extraction(u"{secret}"_s).error();
        QVERIFY(error.startsWith(u"The model's answer is not valid JSON: "));
        QVERIFY(!error.contains(u"secret"));
        QCOMPARE(extraction(u"{\"secret\": \"%1\"}"_s.arg(QString(1'000'000, u'x'))).error(),
            u"The model's answer is too long.");
    }

    void ofACutAnswerTheWholeEntriesCount_data()
    {
        columns<QString, QString>("answer", "found");
        row("in an entry", "{'notes': [{'text': 'a'}, {'text': 'b'}, {'te", "a|b");
        row("between lists", "{'notes': [{'text': 'a'}], 'observations': [", "a");
        row("in another list", "{'notes': [{'text': 'a'}], 'observations': [{'summary': 'c'}, {",
            "a|c");
        row("signs in a text", "{'notes': [{'text': '}]{ \\\\'}, {'text': '}", "}]{ \\");
        row("in the first entry", "{'notes': [{'text': 'a'", "none");
        row("nothing known", "{'summary': 'a'}", "none");
        row("nothing at all", "{}", "none");
        row("nothing to keep", "{'notes': []}", "");
        row("broken, not cut", "{'notes': [{'text': 'a'}, {'text': }]}", "none");
    }
    void ofACutAnswerTheWholeEntriesCount()
    {
        QFETCH(QString, answer);
        const auto read = extraction(answer.replace(u'\'', u'"'));
        auto found = read ? joined(read->notes, &NewNote::text) : u"none"_s;
        if (read && !read->observations.empty())
            found += u'|' + joined(read->observations, &DatedObservation::summary);
        QTEST(found, "found");
    }

    void aNoteIsReadWithIndulgence_data()
    {
        columns<QString, QString>("fields", "read");
        row("all of it",
            "'category': 'goals', 'source': 'explicitUser', 'confidence': 0.9, "
            "'isTemporary': true, 'expiresInHours': 1.5",
            "goals explicitUser 0.9 temporary 1.5");
        row("unknown names", "'category': 'hobbies', 'source': 'me', 'kind': ''",
            "misc librarianSynthesis -1 lasting 0");
        row("wrong types",
            "'category': 3, 'source': [], 'confidence': '1', 'isTemporary': 1, "
            "'expiresInHours': '2'",
            "misc librarianSynthesis -1 lasting 0");
        row("no end", "'isTemporary': true, 'expiresInHours': 0",
            "misc librarianSynthesis -1 temporary 0");
        row("too sure, and long gone", "'confidence': 9, 'expiresInHours': -5",
            "misc librarianSynthesis 1 lasting 0");
        row("for ever", "'confidence': -1, 'expiresInHours': 1e300",
            "misc librarianSynthesis 0 lasting 8760");
    }
    void aNoteIsReadWithIndulgence()
    {
        QFETCH(QString, fields);
        const auto text =
            quoted("{'notes': [{'text': ' a\\n b ', %1}]}").arg(fields.replace(u'\'', u'"'));
        const auto note = extraction(text)->notes.at(0);
        const auto life = note.expiresAt ? *note.expiresAt - now : 0ms;
        QCOMPARE(note.text, u"a  b");
        const auto read =
            u"%1 %2 %3 %4 %5"_s.arg(EnumNames::text(note.category), EnumNames::text(note.source))
                .arg(note.confidence.value_or(-1))
                .arg(note.isTemporary ? u"temporary"_s : u"lasting"_s)
                .arg(double(life.count()) / 3'600'000);
        QTEST(read, "read");
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
        const DatedObservation observation { .summary = u"s"_s,
            .observedFacts = { u"f"_s },
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
        const auto found =
            extraction(quoted("{'referenceItems': [{'path': 'misc', 'title': '%1', 'details':"
                              "{'deep': %2, 'long': '%1', 'kept': [{'a': 1}]}}]}")
                           .arg(QString(2000, u'y'), QString(500, u'[') + QString(500, u']')));
        const auto item = found->referenceItems.at(0);
        QCOMPARE(item.title.size(), 1000);
        QCOMPARE(item.details.size(), 1u);
        QVERIFY(item.details.contains(u"kept"_s));
    }

    void aDayNeedsASummary()
    {
        using LibrarianAnswers::parseCloseout;
        QVERIFY(!parseCloseout(quoted("{'dailySummary': ' ', 'chronologicalHighlights': []}")));
        const auto day = parseCloseout(
            quoted("{'dailySummary': ' Rested.\\n\\nRead. ', 'chronologicalHighlights': ['a', 4],"
                   "'unfinishedIntent': [{'text': 'b', 'kind': 'chore'}, {'text': ' '},"
                   "{'text': 'c', 'kind': 'waitingState'}]}"));
        QVERIFY(day
            == DailyCloseout({ u"Rested.\n\nRead."_s, { u"a"_s },
                { { u"b"_s, IntentKind::task }, { u"c"_s, IntentKind::waitingState } } }));
        QVERIFY(!LibrarianAnswers::parseWeekly(quoted("{'unresolvedIntent': ['a']}")));
    }

    void aRewrittenNoteKeepsItsHistory()
    {
        auto said = existing(u"Likes\n tea"_s);
        said.source = MemorySource::explicitUser;
        said.kind = MemoryKind::correction;
        said.observationCount = 4;
        auto passing = existing(QString(3000, u'x'));
        passing.isTemporary = true;
        passing.expiresAt = now + days(2);
        const auto answer = quoted("{'notes': [{'text': 'likes tea', 'category': 'preferences'},"
                                   "{'text': 'LIKES TEA'}, {'text': '%1', 'isTemporary': false,"
                                   "'expiresInHours': 0}, {'text': '%2'}]}")
                                .arg(passing.text, QString(1200, u'y'));
        const auto notes = cleanup(answer, { said, passing })->notes;
        QCOMPARE(notes.size(), 3u);
        said.category = MemoryCategory::preferences;
        QVERIFY(notes[0] == said);
        QVERIFY(notes[1] == passing);
        QCOMPARE(notes[2].createdAt, now);
        QCOMPARE(notes[2].text.size(), 500);
    }

    void aCleanupListsSomething()
    {
        QVERIFY(!cleanup(quoted("{'patterns': []}"), {}));
        QVERIFY(!cleanup(quoted("{'notes': 'all fine'}"), {}));
        QVERIFY(!cleanup(quoted("{'notes': ['a', {'note': 'b'}]}"), {}));
        QVERIFY2(!cleanup(quoted("{'notes': [{'text': 'a'}, {'text': 'b'}"), {}), "cut");
    }

    void aPatternNeedsEvidenceOfTwoDays_data()
    {
        columns<QString, QString>("patterns", "kept");
        row("none named", "null", "");
        row("two days", "[{'text': 'New', 'evidenceNoteTexts': ['A', 'old']}]", "New");
        row("one day", "[{'text': 'P', 'evidenceNoteTexts': ['a', 'b']}]", "");
        row("one note", "[{'text': 'P', 'evidenceNoteTexts': ['old', 'old']}]", "");
        row("its own words", "[{'text': 'P', 'evidenceNoteTexts': ['old', 'fresh']}]", "");
        row("an existing one, twice", "[{'text': 'known'}, {'text': 'Known'}]", "Known");
    }
    void aPatternNeedsEvidenceOfTwoDays()
    {
        QFETCH(QString, patterns);
        const std::vector notes { existing(u"a"_s), existing(u"b"_s),
            existing(u"old"_s, now - days(20)) };
        const std::vector<PatternNote> known { { .text = u"Known"_s }, { .text = u"Other"_s } };
        const auto answer = quoted("{'notes': [{'text': 'fresh'}], 'patterns': %1}")
                                .arg(patterns.replace(u'\'', u'"'));
        QTEST(joined(cleanup(answer, notes, known)->patterns, &PatternNote::text), "kept");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianAnswersTest)
#include "LibrarianAnswersTest.moc"
