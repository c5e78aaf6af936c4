#include "conversation/proposals/ForgetLogic.h"

#include "conversation/proposals/MemoryForgetter.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Target = ProposedForget::Target;
using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };
QUuid numbered(const char* start)
{
    return QUuid(QString::fromLatin1(start) + u"-0000-4000-8000-000000000000"_s);
}

RuleProposal asking(ProposedForget forget)
{
    return { .proposalId = u"f"_s,
        .kind = RuleProposal::Kind::forgetMemory,
        .name = u"the model's own words"_s,
        .createdAt = now,
        .forget = std::move(forget) };
}

ProposedForget note(const QString& id)
{
    return { .target = Target::note, .id = id };
}

ProposedForget item(const QString& id)
{
    return { .target = Target::referenceItem, .id = id };
}

ProposedForget section(const QString& path)
{
    return { .target = Target::referenceSection, .path = path };
}

ProposedForget observations(const QString& query, const QString& from = {}, const QString& to = {},
    const std::vector<QString>& tags = {})
{
    return { .target = Target::observations, .query = query, .from = from, .to = to, .tags = tags };
}

} // namespace

class ForgetLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_memory = std::make_unique<MemoryTiers>(
            std::nullopt, [] { return Calendar(); }, PlatformWording::linuxDesktop);
        const MemoryNote tea { .id = numbered("aaaaaaa1"), .text = u"Likes \"%1\" tea\nhot"_s };
        MemoryNote old { .id = numbered("aaaaaaa2"), .text = u"Liked coffee"_s };
        old.status = MemoryStatus::archived;
        m_memory->notes.applyCleanup({}, { { tea, old }, {} }, now);
        const auto add = [&](const char* id, const QString& path, const QString& title) {
            m_memory->reference.upsertItem({ .id = numbered(id), .path = path, .title = title });
        };
        add("bbbbbbb1", u"academics.courses"_s, u"Logic"_s);
        add("bbbbbbb2", u"academics.exams"_s, u"Final"_s);
        add("ccccccc1", u"misc"_s, u"Locker"_s);
        const auto see = [&](const QString& summary, TimePoint at, const QString& tag,
                             TimePoint recordedAt = now) {
            m_memory->observations.add({ .id = QUuid::createUuid(),
                .occurredAt = at,
                .recordedAt = recordedAt,
                .summary = summary,
                .tags = { tag } });
        };
        see(u"exam nerves"_s, now - 48h, u"Psyc"_s);
        for (int count = 0; count < 30; ++count)
            see(u"exam dates"_s, now - 1h, u"dates"_s);
        // What is recorded while the question waits.
        see(u"exam passed"_s, now - 1min, u"psyc"_s, now + 1h);
    }

    void aRequestSaysExactlyWhatWouldGo_data()
    {
        columns<ProposedForget, QString, QString>("forget", "name", "outcome");
        row("a note", note(u" AAAAAAA1 "_s), "Delete the memory note \"Likes \"%1\" tea\nhot\"",
            "Forgot the note \"Likes \"%1\" tea\nhot\"");
        row("an archived note by its whole id", note(json::keyText(numbered("aaaaaaa2"))),
            "Delete the memory note \"Liked coffee\"", "Forgot the note \"Liked coffee\"");
        row("an item", item(u"ccc"_s), "Delete the reference item \"Locker\"",
            "Forgot the reference item \"Locker\"");
        row("a branch", section(u"academics"_s),
            "Delete 2 reference items under academics (the section itself stays)",
            "Forgot 2 reference items under academics");
        row("a section", section(u"misc "_s),
            "Delete 1 reference item under misc (the section itself stays)",
            "Forgot 1 reference item under misc");
        row("more than a search shows", observations(u"EXAM"_s),
            "Delete 31 dated observations matching \"EXAM\"", "Forgot 31 observations");
        row("by all conditions",
            observations(u"exam"_s, u"2026-02-27"_s, u"2026-02-28T00:00:00.500+01:00"_s,
                { u"psyc"_s, u"phys"_s }),
            "Delete 1 dated observation matching \"exam\" from 2026-02-27 to "
            "2026-02-28T00:00:00.500+01:00 tagged psyc, phys",
            "Forgot 1 observation");
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
        columns<ProposedForget, QString>("forget", "reason");
        const auto noFilter = "which observations? Give me a text, date-range, or tag filter";
        row("no note", note(u" "_s), "which note? I need its [id:xxxxxxxx] from memory_find_notes");
        row("an unknown note", note(u"dd"_s), "no memory note with id dd");
        row("two notes", note(u"AAAAAAA"_s),
            "AAAAAAA matches more than one note — give me more characters");
        row("no item", ProposedForget { .target = Target::referenceItem },
            "which item? I need its [id:xxxxxxxx] from memory_read_section or "
            "memory_search_reference");
        row("an unknown item", item(u"dd"_s), "no reference item with id dd");
        row("two items", item(u"bbbb"_s),
            "bbbb matches more than one item — give me more characters");
        row("no section", ProposedForget { .target = Target::referenceSection },
            "which section? I need its path, e.g. academics.courses");
        row("half a name", section(u"academic"_s), "nothing is stored under academic");
        row("no filter", ProposedForget { .target = Target::observations }, noFilter);
        row("empty filters", observations(u" \n"_s), noFilter);
        row("an empty tag", observations({}, {}, {}, { QString() }),
            "no observations match that filter");
        row("what came later", observations(u"passed"_s), "no observations match that filter");
        row("an unreadable bound", observations(u"exam"_s, {}, u"yesterday"_s),
            "not an ISO-8601 date: yesterday");
        row("a blank bound", observations(u"exam"_s, u" "_s), "not an ISO-8601 date:  ");
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
        QCOMPARE(
            MemoryForgetter::forget(proposal, *m_memory, now).error(), u"missing forget payload");
        QCOMPARE(ForgetLogic::resolveForget(proposal, *m_memory).error(),
            u"the forget request was malformed");
        QCOMPARE(m_memory->revision(), revision);
    }

private:
    std::unique_ptr<MemoryTiers> m_memory;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ForgetLogicTest)
#include "ForgetLogicTest.moc"
