#include "conversation/proposals/ForgetLogic.h"

#include "conversation/proposals/MemoryForgetter.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Target = ProposedForget::Target;
using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };
constexpr auto noFilter = "which observations? Give me a text, date-range, or tag filter";
constexpr auto noMatch = "no observations match that filter";

QString text(const char* characters)
{
    return QString::fromUtf8(characters);
}

QUuid numbered(const char* start)
{
    return QUuid(text(start) + QStringLiteral("-0000-4000-8000-000000000000"));
}

RuleProposal asking(ProposedForget forget)
{
    return { .proposalId = QStringLiteral("f"),
        .kind = RuleProposal::Kind::forgetMemory,
        .name = QStringLiteral("the model's own words"),
        .createdAt = now,
        .forget = std::move(forget) };
}

void addItem(ReferenceMemoryStore& reference, const char* id, const char* path, const char* title)
{
    reference.upsertItem({ .id = numbered(id), .path = text(path), .title = text(title) });
}

void addObservation(ObservationStore& observations, const char* summary, TimePoint at,
    const std::vector<QString>& tags = {})
{
    observations.add({ .id = QUuid::createUuid(),
        .occurredAt = at,
        .recordedAt = at,
        .summary = text(summary),
        .tags = tags });
}

} // namespace

class ForgetLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_memory = std::make_unique<MemoryTiers>(std::nullopt, [] { return Calendar(); });
        auto& memory = *m_memory;
        const MemoryNote tea { .id = numbered("aaaaaaa1"), .text = text("Likes \"%1\" tea\nhot") };
        auto old = MemoryNote { .id = numbered("aaaaaaa2"), .text = text("Liked coffee") };
        old.status = MemoryStatus::archived;
        memory.notes.applyCleanup({ tea, old }, {}, now);
        addItem(memory.reference, "bbbbbbb1", "academics.courses", "Logic");
        addItem(memory.reference, "bbbbbbb2", "academics.exams", "Final");
        addItem(memory.reference, "ccccccc1", "misc", "Locker");
        addObservation(memory.observations, "exam nerves", now - 48h, { text("Psyc") });
        for (int count = 0; count < 30; ++count)
            addObservation(memory.observations, "exam dates", now - 1h);
        // What is recorded while the question waits.
        addObservation(memory.observations, "exam passed", now + 1h, { text("psyc") });
    }

    void aRequestSaysExactlyWhatWouldGo_data()
    {
        QTest::addColumn<ProposedForget>("forget");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("outcome");
        row("a note", ProposedForget { .target = Target::note, .id = text(" AAAAAAA1 ") },
            text("Delete the memory note \"Likes \"%1\" tea\nhot\""),
            text("Forgot the note \"Likes \"%1\" tea\nhot\""));
        row("an archived note by its whole id",
            ProposedForget { .target = Target::note, .id = json::keyText(numbered("aaaaaaa2")) },
            text("Delete the memory note \"Liked coffee\""),
            text("Forgot the note \"Liked coffee\""));
        row("an item", ProposedForget { .target = Target::referenceItem, .id = text("ccc") },
            text("Delete the reference item \"Locker\""),
            text("Forgot the reference item \"Locker\""));
        row("a branch",
            ProposedForget { .target = Target::referenceSection, .path = text("academics") },
            text("Delete 2 reference items under academics (the section itself stays)"),
            text("Forgot 2 reference items under academics"));
        row("a section",
            ProposedForget { .target = Target::referenceSection, .path = text("misc ") },
            text("Delete 1 reference item under misc (the section itself stays)"),
            text("Forgot 1 reference item under misc"));
        row("more than a search shows",
            ProposedForget { .target = Target::observations, .query = text("EXAM") },
            text("Delete 31 dated observations matching \"EXAM\""), text("Forgot 31 observations"));
        row("by all conditions",
            ProposedForget { .target = Target::observations,
                .query = text("exam"),
                .from = text("2026-02-27"),
                .to = text("2026-02-28T00:00:00.500+01:00"),
                .tags = std::vector { text("psyc"), text("phys") } },
            text("Delete 1 dated observation matching \"exam\" from 2026-02-27 to "
                 "2026-02-28T00:00:00.500+01:00 tagged psyc, phys"),
            text("Forgot 1 observation"));
    }
    void aRequestSaysExactlyWhatWouldGo()
    {
        QFETCH(ProposedForget, forget);
        QFETCH(QString, name);
        QFETCH(QString, outcome);
        const auto resolved = ForgetLogic::resolveForget(asking(forget), *m_memory);
        QCOMPARE(resolved->name, name);
        QCOMPARE(*MemoryForgetter::forget(*resolved, *m_memory, now), outcome);
        const auto again = *MemoryForgetter::forget(*resolved, *m_memory, now);
        QVERIFY2(
            again.endsWith(u"already gone.") || again.endsWith(u"anymore."), qPrintable(again));
        QVERIFY(!ForgetLogic::resolveForget(asking(forget), *m_memory));
    }

    void whatIsNotClearIsRefused_data()
    {
        QTest::addColumn<ProposedForget>("forget");
        QTest::addColumn<QString>("reason");
        row("no note", ProposedForget { .target = Target::note, .id = text(" ") },
            text("which note? I need its [id:xxxxxxxx] from memory_find_notes"));
        row("an unknown note", ProposedForget { .target = Target::note, .id = text("dd") },
            text("no memory note with id dd"));
        row("two notes", ProposedForget { .target = Target::note, .id = text("AAAAAAA") },
            text("AAAAAAA matches more than one note — give me more characters"));
        row("no item", ProposedForget { .target = Target::referenceItem },
            text("which item? I need its [id:xxxxxxxx] from memory_read_section or "
                 "memory_search_reference"));
        row("an unknown item", ProposedForget { .target = Target::referenceItem, .id = text("dd") },
            text("no reference item with id dd"));
        row("two items", ProposedForget { .target = Target::referenceItem, .id = text("bbbb") },
            text("bbbb matches more than one item — give me more characters"));
        row("no section", ProposedForget { .target = Target::referenceSection },
            text("which section? I need its path, e.g. academics.courses"));
        row("half a name",
            ProposedForget { .target = Target::referenceSection, .path = text("academic") },
            text("nothing is stored under academic"));
        row("no filter", ProposedForget { .target = Target::observations }, text(noFilter));
        row("empty filters",
            ProposedForget { .target = Target::observations,
                .query = text(" \n"),
                .from = QString(),
                .to = QString(),
                .tags = std::vector<QString>() },
            text(noFilter));
        row("an empty tag",
            ProposedForget { .target = Target::observations, .tags = std::vector { QString() } },
            text(noMatch));
        row("what came later",
            ProposedForget { .target = Target::observations, .query = text("passed") },
            text(noMatch));
        row("an unreadable bound",
            ProposedForget {
                .target = Target::observations, .query = text("exam"), .to = text("yesterday") },
            text("not an ISO-8601 date: yesterday"));
        row("a blank bound",
            ProposedForget {
                .target = Target::observations, .query = text("exam"), .from = text(" ") },
            text("not an ISO-8601 date:  "));
    }
    void whatIsNotClearIsRefused()
    {
        QFETCH(ProposedForget, forget);
        QFETCH(QString, reason);
        const auto revision = m_memory->revision();
        QCOMPARE(ForgetLogic::resolveForget(asking(forget), *m_memory).error(), reason);
        QCOMPARE(m_memory->revision(), revision);
    }

    void aDamagedProposalForgetsNothing()
    {
        auto proposal = asking({});
        const auto revision = m_memory->revision();
        for (const auto target : { Target::note, Target::referenceItem, Target::referenceSection,
                 Target::observations }) {
            proposal.forget->target = target;
            MemoryForgetter::forget(proposal, *m_memory, now);
        }
        proposal.forget.reset();
        QCOMPARE(MemoryForgetter::forget(proposal, *m_memory, now).error(),
            text("missing forget payload"));
        QCOMPARE(ForgetLogic::resolveForget(proposal, *m_memory).error(),
            text("the forget request was malformed"));
        QCOMPARE(m_memory->revision(), revision);
    }

private:
    std::unique_ptr<MemoryTiers> m_memory;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ForgetLogicTest)
#include "ForgetLogicTest.moc"
