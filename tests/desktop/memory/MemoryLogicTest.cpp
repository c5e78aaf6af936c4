#include "PobblewigDesktop/memory/DayLogic.h"
#include "PobblewigDesktop/memory/NoteLogic.h"
#include "PobblewigDesktop/memory/ObservationLogic.h"
#include "PobblewigDesktop/memory/ReferenceLogic.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

constexpr TimePoint start { std::chrono::days(20000) };

TimePoint day(int number)
{
    return start + std::chrono::days(number);
}

MemoryNote note(const QString& text, MemoryCategory category, MemoryStatus status)
{
    return { .id = QUuid::createUuid(), .text = text, .category = category, .status = status };
}

} // namespace

class MemoryLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void notesAreFilteredAndStandByCategory_data()
    {
        columns<NoteLogic::Filter, QString>("filter", "expected");
        using enum MemoryCategory;
        using enum MemoryStatus;
        using Filter = NoteLogic::Filter;
        row("all", Filter {}, "Tea at five|Likes tea|Run a marathon|Old goal");
        row("words, case aside", Filter { .words = u" TEA  li "_s }, "Likes tea");
        row("category", Filter { .category = goals }, "Run a marathon|Old goal");
        row("status", Filter { .status = archived }, "Old goal");
        row("all of it", Filter { u"a"_s, goals, active }, "Run a marathon");
        row("no such word", Filter { .words = u"coffee"_s }, "");
    }
    void notesAreFilteredAndStandByCategory()
    {
        QFETCH(NoteLogic::Filter, filter);
        QFETCH(QString, expected);
        using enum MemoryCategory;
        using enum MemoryStatus;
        QStringList texts;
        for (const auto& listed :
            NoteLogic::listed({ note(u"Run a marathon"_s, goals, active),
                                  note(u"Tea at five"_s, preferences, superseded),
                                  note(u"Likes tea"_s, preferences, active),
                                  note(u"Old goal"_s, goals, archived) },
                filter))
            texts.append(listed.text);
        QCOMPARE(texts.join(u'|'), expected);
    }

    void aNoteComesFromTheSessionThatHadBegun_data()
    {
        columns<TimePoint, MemorySource, QString>("created", "source", "expected");
        using enum MemorySource;
        row("before all", day(0), librarianSynthesis, "");
        row("as one begins", day(1), explicitUser, "one");
        row("at the closing of one, before two", day(2), librarianSynthesis, "one");
        row("in the latest", day(9), librarianSynthesis, "two");
        row("of a meeting", day(9), meetingNotes, "");
    }
    void aNoteComesFromTheSessionThatHadBegun()
    {
        QFETCH(TimePoint, created);
        QFETCH(MemorySource, source);
        const auto origin = NoteLogic::origin({ .source = source, .createdAt = created },
            { { .dayKey = u"two"_s, .startedAt = day(3) },
                { .dayKey = u"one"_s, .startedAt = day(1), .endedAt = day(1) } });
        QTEST(origin ? origin->dayKey : QString(), "expected");
    }

    void aWeekStandsBeforeItsDaysAndASummaryWithItsSession()
    {
        const PeriodSummary first { .id = QUuid::createUuid(),
            .startDate = day(1),
            .endDate = day(1),
            .summary = u"First"_s,
            .sourceObservationIDs = { QUuid::createUuid() } };
        const PeriodSummary second { .id = QUuid::createUuid(),
            .startDate = day(2),
            .endDate = day(2),
            .summary = u"Second"_s };
        const PeriodSummary week { .id = QUuid::createUuid(),
            .periodType = PeriodType::week,
            .startDate = day(1),
            .endDate = day(2),
            .summary = u"Week"_s,
            .sourceDailySummaryIDs = { first.id, second.id } };
        const std::vector summaries { first, second, week };
        const std::vector<DailySession> sessions { { .dayKey = u"now"_s, .startedAt = day(3) },
            { .dayKey = u"second"_s, .startedAt = day(2), .dailySummaryID = second.id } };
        const auto names = [&](const QString& words) {
            QStringList names;
            for (const auto& entry : DayLogic::entries(sessions, summaries, words))
                names.append((entry.session ? entry.session->dayKey : QString())
                    + (entry.summary ? entry.summary->summary : QString()));
            return names.join(u'|');
        };
        QCOMPARE(names({}), u"now|Week|secondSecond|First");
        QCOMPARE(names(u"week"_s), u"Week");
        QCOMPARE(
            DayLogic::observationIDs({ .summary = week }, summaries), first.sourceObservationIDs);
    }

    void theTreeKeepsWhatIsSearchedForAndWhatIsAboveIt_data()
    {
        columns<QString, QString>("words", "expected");
        row("all", "", "new:|people:|people.family<people:Anna,Bert|work:");
        row("an item", "ann", "people:|people.family<people:Anna");
        row("what an item says", "piano", "people:|people.family<people:Bert");
        row("a section", "WORK", "work:");
        row("nothing", "coffee", "");
    }
    void theTreeKeepsWhatIsSearchedForAndWhatIsAboveIt()
    {
        QFETCH(QString, words);
        const auto section = [](const QString& path, bool confirmed = true) {
            return ReferenceSectionMeta { .path = path, .title = path, .confirmed = confirmed };
        };
        const auto nodes =
            ReferenceLogic::tree({ section(u"work"_s), section(u"people.family"_s),
                                     section(u"new"_s, false), section(u"people"_s) },
                { { .path = u"people.family"_s,
                      .title = u"Bert"_s,
                      .summary = u"Piano"_s,
                      .updatedAt = day(1) },
                    { .path = u"people.family"_s, .title = u"Anna"_s, .updatedAt = day(2) } },
                words);
        QStringList rows;
        for (const auto& node : nodes) {
            QStringList items;
            for (const auto& item : node.items)
                items.append(item.title);
            rows.append(node.section.path
                + (node.parent ? u'<' + nodes[*node.parent].section.path : QString()) + u':'
                + items.join(u','));
        }
        QTEST(rows.join(u'|'), "expected");
    }

    void theCommonestTagsAreOffered()
    {
        const auto tagged = [](std::vector<QString> tags) {
            return DatedObservation { .tags = std::move(tags) };
        };
        QCOMPARE(ObservationLogic::commonTags(
                     { tagged({ u"Work"_s, u"tea"_s }), tagged({ u"work"_s }),
                         tagged({ u"rare"_s, u"tea"_s }), tagged({ u"art"_s }) },
                     2),
            QStringList({ u"tea"_s, u"work"_s }));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryLogicTest)
#include "MemoryLogicTest.moc"
