#include "memory/librarian/LibrarianLogic.h"

#include "memory/CleanupGuard.h"
#include "memory/librarian/CleanupLogic.h"
#include "support/Joined.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;
using std::chrono::days;

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

ChatMessage message(ChatMessage::Role role, const QString& text)
{
    return { .id = QUuid::createUuid(),
        .role = role,
        .text = text,
        .timestamp = now,
        .sessionID = QUuid::createUuid() };
}

PeriodSummary daily(TimePoint start, const QString& summary, std::vector<QString> highlights,
    std::vector<QString> open)
{
    return { .startDate = start,
        .summary = summary,
        .chronologicalHighlights = std::move(highlights),
        .unresolvedIntent = std::move(open) };
}

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

} // namespace

class LibrarianLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWindowHasALineForWhatWasSaid()
    {
        using enum ChatMessage::Role;
        auto offTheRecord = message(user, u"hidden"_s);
        offTheRecord.sessionID.reset();
        const auto text = LibrarianLogic::windowText({ message(user, u"Hi %1\n[x]"_s),
            message(system, u"hidden"_s), offTheRecord, message(assistant, QString(5000, u'a')) });
        QCOMPARE(text,
            u"[2026-03-01T08:15:00Z] user: Hi %1 [x]\n"
            "[2026-03-01T08:15:00Z] assistant: "_s
                + QString(4000, u'a'));
        QCOMPARE(LibrarianLogic::windowText({}), QString());
    }

    void whatCameAfterTheLastOneIsNew()
    {
        const std::vector messages { message({}, {}), message({}, {}), message({}, {}) };
        const auto countAfter = [&](const std::optional<QUuid>& last) {
            return LibrarianLogic::messagesAfter(messages, last).size();
        };
        QCOMPARE(countAfter(messages[1].id), 1u);
        QCOMPARE(countAfter(messages[2].id), 0u);
        QCOMPARE(countAfter(QUuid::createUuid()), 3u);
        QCOMPARE(countAfter(std::nullopt), 3u);
    }

    void aDayWithoutAModelIsToldInNumbers()
    {
        const auto day = [](size_t turns, int observations) {
            std::vector window { message(ChatMessage::Role::system, u"hidden"_s) };
            window.resize(turns + 1, message(ChatMessage::Role::user, {}));
            std::vector<DatedObservation> seen;
            for (int number = 1; number <= observations; ++number)
                seen.push_back({ .occurredAt = now, .summary = u"event %1"_s.arg(number) });
            return LibrarianLogic::deterministicCloseout(window, seen, { u"open"_s });
        };
        QCOMPARE(day(0, 0).summary, u"0 chat turns, 0 observations recorded.");
        QCOMPARE(day(1, 1).summary, u"1 chat turn, 1 observation recorded. First noted: event 1");
        QCOMPARE(day(3, 2).summary, u"3 chat turns, 2 observations recorded. First noted: event 1");
        QCOMPARE(day(3, 2).highlights.size(), 2u);
        QVERIFY(day(0, 0).unfinishedIntent == std::vector<CloseoutIntentItem>({ { u"open"_s } }));
    }

    void aWeekIsGatheredFromItsDays()
    {
        const Calendar tokyo { QTimeZone("Asia/Tokyo"), QLocale::c() };
        const auto a = u"a"_s, b = u"b"_s, c = u"c"_s;
        const std::vector dailies {
            daily(now, u"Wrote %1."_s, { a, b }, { c, a }),
            daily(now + 7h, u"Rested."_s, {}, { u"C"_s, b }),
        };
        QCOMPARE(LibrarianLogic::dailiesText(dailies, tokyo),
            u"2026-03-01\nWrote %1.\nhighlights: a; b\nunresolved: c; a\n\n"
            "2026-03-02\nRested.\nunresolved: C; b"_s);
        const auto week = LibrarianLogic::deterministicWeekly(dailies, tokyo);
        QCOMPARE(week.summary, u"[2026-03-01] Wrote %1.\n[2026-03-02] Rested."_s);
        QCOMPARE(joined(week.highlights), u"a|b"_s);
        QCOMPARE(joined(week.unresolvedIntent), u"c|a|b"_s);
    }

    /// "a=x" is the note a after it was reworded to x.
    void whatTheUserChangedOvertakesTheModel()
    {
        const auto isOvertaken = [](const QString& seen, const QString& current) {
            const auto byNotes = CleanupLogic::isOvertaken({ notes(seen), {} }, notes(current), {});
            const auto byPatterns =
                CleanupLogic::isOvertaken({ {}, patterns(seen) }, {}, patterns(current));
            return byNotes == byPatterns ? std::optional(byNotes) : std::nullopt;
        };
        QVERIFY(isOvertaken(u"a b"_s, u"a b"_s) == false);
        QVERIFY2(isOvertaken(u"a b"_s, u"c a b d*"_s) == false, "something was added");
        QVERIFY2(isOvertaken(u"a b"_s, u"b"_s) == true, "a was deleted");
        QVERIFY2(isOvertaken(u"a b"_s, u"a b=x"_s) == true, "b was corrected");
    }

    void aCleanupChangesOnlyWhatWasSeen()
    {
        const auto cleaned = [](const char* existing, const char* seen, const char* rewritten) {
            const auto words = [](const char* text) { return QString::fromLatin1(text); };
            auto after = CleanupGuard::cleaned(
                notes(words(existing)), notes(words(seen)), notes(words(rewritten)));
            for (auto& note : after)
                note.text += note.status == MemoryStatus::archived ? u"*"_s : QString();
            return joined(after, &MemoryNote::text) + u" & "_s
                + joined(CleanupGuard::cleaned(patterns(words(existing)), patterns(words(seen)),
                             patterns(words(rewritten))),
                    &PatternNote::text);
        };
        QCOMPARE(cleaned("a b", "a b", "ab"), u"ab|a*|b* & ab");
        QCOMPARE(cleaned("d a c b", "a b", "b=B ab"), u"ab|d|a*|c|B & d|c|B|ab");
        QCOMPARE(cleaned("a c", "a", "a c=x"), u"a|c & a|x");
        QCOMPARE(cleaned("a c*", "a", "a c"), u"a|c & a|c");
    }

    void aPortionHoldsWhatItsAnswerHasRoomFor()
    {
        const auto category = [](const char* words, MemoryCategory category) {
            auto group = notes(QString::fromLatin1(words));
            for (auto& note : group)
                note.category = category;
            return group;
        };
        CleanupSnapshot memory;
        for (const auto& group : { category("a b", MemoryCategory::goals),
                 category("c", MemoryCategory::history), category("d e", MemoryCategory::misc),
                 category("f g h i", MemoryCategory::journeys) })
            memory.notes.insert(memory.notes.begin(), group.begin(), group.end());
        memory.notes.front().text = QString(1000, u'x');
        memory.patterns = patterns(u"p q"_s);
        // Each note takes 40.
        const auto texts = [&](int answerTokens) {
            return joined(CleanupLogic::portions(memory, answerTokens), [](const auto& portion) {
                return joined(portion.notes, &MemoryNote::text).remove(u'|')
                    + joined(portion.patterns, &PatternNote::text).toUpper().remove(u'|');
            });
        };
        QCOMPARE(texts(130), u"abc|de|ghi|PQ"_s);
        QCOMPARE(texts(90), u"ab|c|de|gh|i|PQ"_s);
        memory.patterns.pop_back();
        QCOMPARE(texts(1000), u"abcde"_s + QString(1000, u'x') + u"ghi"_s);
    }

    void aPortionShrinksButNotByHalf_data()
    {
        using enum CleanupLogic::Verdict;
        columns<QString, CleanupLogic::Verdict>("rewritten", "verdict");
        row("merged", "a b cd", good);
        row("half is left", "a b", good);
        row("more than half is lost", "a", tooShort);
        row("nothing but crumbs", "a=x b=x c=x d=x", tooShort);
        row("the same", "d c b a", noSmaller);
        row("longer", "a b c ddddddddddddddddd", noSmaller);
    }
    void aPortionShrinksButNotByHalf()
    {
        QFETCH(QString, rewritten);
        using CleanupLogic::verdict;
        const auto words =
            u"a=aaaaaaaaaaaaaaaaa b=bbbbbbbbbbbbbbb c=ccccccccccccccc d=ddddddddddddd"_s;
        const CleanupSnapshot seen { notes(words), {} };
        auto after = notes(rewritten);
        for (auto& note : after) {
            const auto same = std::ranges::find(seen.notes, note.id, &MemoryNote::id);
            if (same != seen.notes.end() && note.text.size() == 1 && note.text != u"x")
                note.text = same->text;
        }
        QTEST(verdict(seen, { after, {} }, now), "verdict");
    }

    void notesAreNotTriedTwiceADay()
    {
        auto old = notes(u"a b*"_s);
        auto passing = notes(u"c"_s);
        passing[0].isTemporary = true;
        passing[0].expiresAt = now + days(1);
        old.push_back(passing[0]);
        const auto count = [&](std::optional<TimePoint> tried) {
            return CleanupLogic::candidates({ old, patterns(u"p"_s) }, tried, now).notes.size();
        };
        QCOMPARE(count(std::nullopt), 1u);
        QCOMPARE(count(now - days(1)), 1u);
        QCOMPARE(count(now - days(1) + 1s), 0u);
        QCOMPARE(count(now + 1s), 1u);
        old[0].createdAt = now;
        QCOMPARE(count(now - 1s), 0u);
        old[0].text = QString(8000, u'x');
        QCOMPARE(count(now - 1s), 1u);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianLogicTest)
#include "LibrarianLogicTest.moc"
