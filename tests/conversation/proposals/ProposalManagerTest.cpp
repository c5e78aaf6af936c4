#include "conversation/proposals/ProposalManager.h"

#include "conversation/proposals/ProposalWriter.h"
#include "foundation/Stream.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Kind = ConfirmResult::Kind;
using Status = RuleProposal::Status;

constexpr TimePoint now { std::chrono::seconds(1772352900) };
const QUuid made = QUuid::createUuid();

RuleProposal reminder(const QString& proposalId, const QString& title, int minute = 0)
{
    return {
        .id = QUuid::createUuid(),
        .proposalId = proposalId,
        .kind = RuleProposal::Kind::reminder,
        .name = title,
        .createdAt = now + std::chrono::minutes(minute),
        .reminder = ProposedReminder { .title = title },
    };
}

Task<ProposalManager::Execution> succeed(RuleProposal)
{
    co_return ProposalManager::Executed { made };
}

const QString x = u"x"_s;
const QString tea = u"Tea"_s;

} // namespace

class ProposalManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        restart();
    }

    void anotherRequestUnderAUsedIdGetsANumber()
    {
        const auto coffee = reminder(x, u"Coffee"_s);
        m->registerProposal(reminder(x, tea));
        QVERIFY(isKnown(coffee));
        m->reject(x);
        QVERIFY(isKnown(reminder(x, tea, 5)) && !isKnown(coffee));
        const LogLines log;
        QCOMPARE(m->registerProposal(coffee).proposalId, u"x-2"_s);
        QVERIFY(log.lines().front().startsWith(u"buddy: proposalId collision — "));
        // The model goes on calling it by its own id.
        QVERIFY(isKnown(coffee));
        QVERIFY(m->reject(u"x-2"_s));
        QVERIFY(isKnown(coffee) && !isKnown(reminder(x, u"Cocoa"_s)));
    }

    void anAnswerHoldsUntilTheUserWritesAgain()
    {
        m->registerProposal(reminder(x, tea));
        m->reject(x);
        const AppSettings settings;
        for (const auto seconds : { 0, 1 })
            QCOMPARE(
                m->repeated(reminder(x, tea), { settings, now + std::chrono::seconds(seconds) })
                    .has_value(),
                seconds == 0);
    }

    void whatWaitsIsThereAfterARestart()
    {
        m->registerProposal(reminder(x, tea, 2));
        m->registerProposal(reminder(u"y"_s, tea, 1));
        m->registerProposal(reminder(u"z"_s, tea, 0));
        awaited(m->confirm(u"z"_s, succeed));
        restart();
        const auto pending = m->pendingProposals();
        QCOMPARE(pending.size(), 2u);
        QCOMPARE(pending.back().proposalId, x);
        QVERIFY(awaited(m->confirm(u"z"_s, succeed))
            == (ConfirmResult { .kind = Kind::duplicate, .ruleID = made }));
    }

    void nothingComesBackOnceItIsAnswered()
    {
        QVERIFY(!m->reject(x));
        QVERIFY(awaited(m->confirm(x, succeed)).kind == Kind::notFound);
        m->registerProposal(reminder(x, tea));
        m->reject(x);
        QVERIFY(awaited(m->confirm(x, succeed)).kind == Kind::notFound);
        m->registerProposal(reminder(u"y"_s, tea));
        awaited(m->confirm(u"y"_s, succeed));
        QVERIFY(!m->reject(u"y"_s));
    }

    void oneThatIsBeingCarriedOutIsOutOfReach()
    {
        m->registerProposal(reminder(x, tea));
        auto first = m->confirm(x, [this](RuleProposal) { return whenReleased(); });
        QVERIFY(awaited(m->confirm(x, succeed)) == ConfirmResult { .kind = Kind::duplicate });
        QVERIFY(!m->reject(x));
        m->registerProposal(reminder(u"y"_s, tea));
        m_release.sink().push({});
        QVERIFY(
            awaited(std::move(first)) == (ConfirmResult { .kind = Kind::created, .ruleID = made }));
        QVERIFY(m->proposal(x)->status == Status::confirmed);
        QCOMPARE(m->pendingProposals().size(), 1u);
    }

    void oneThatIsDroppedMeanwhileSettlesNothing()
    {
        auto forget = reminder(x, tea);
        forget.kind = RuleProposal::Kind::forgetMemory;
        m->registerProposal(forget);
        auto first = m->confirm(x, [this](RuleProposal) { return whenReleased(); });
        m->dropForgets();
        QVERIFY(!m->proposal(x));
        m->registerProposal(reminder(x, u"Coffee"_s));
        m_release.sink().push({});
        QVERIFY(awaited(std::move(first)).kind == Kind::created);
        QVERIFY(m->proposal(x)->status == Status::pending);
    }

    void aConfirmedRuleIsInTheStore()
    {
        RuleStore rules { std::nullopt };
        m->registerProposal({ .proposalId = x,
            .kind = RuleProposal::Kind::rule,
            .domainMatch = { u"tea.example"_s },
            .thresholdMinutes = 20,
            .cooldownMinutes = 60 });
        const auto result = awaited(m->confirm(x, rules, now));
        QCOMPARE(rules.rules().size(), 1u);
        const auto& rule = rules.rules().front();
        QCOMPARE(rule.id, result.ruleID);
        QVERIFY(rule.enabled && rule.createdAt == now);
        QCOMPARE(rule.trigger.domains, std::vector { u"tea.example"_s });
        QCOMPARE(rule.trigger.thresholdMinutes, 20);
        QCOMPARE(rule.cooldownMinutes, 60);
    }

    void onlyTheLatestAnswersAreKept()
    {
        m = std::make_unique<ProposalManager>(std::nullopt);
        m->registerProposal(reminder(x, tea, -1));
        for (int number = 0; number <= 100; ++number) {
            const auto id = QString::number(number);
            m->registerProposal(reminder(id, tea, 100 - number));
            awaited(m->confirm(id, succeed));
        }
        QCOMPARE(m->pendingProposals().size(), 1u);
        QVERIFY(m->proposal(u"99"_s));
        QVERIFY(!m->proposal(u"100"_s));
        // Its entry in the ledger is gone too.
        QVERIFY(awaited(m->confirm(u"100"_s, succeed)).kind == Kind::notFound);
    }

    void whatIsAllowedReachesTheCalendarsWhole()
    {
        ScriptedCalendar calendar;
        ScriptedStores stores;
        ProposalWriter writer(stores.all, stores.moment, calendar);
        const auto later = now + std::chrono::hours(1);
        const QUuid id(u"{6BA7B810-9DAD-11D1-80B4-00C04FD430C8}"_s);
        const auto name = u"6ba7b810-9dad-11d1-80b4-00c04fd430c8"_s;
        RuleProposal proposal { .id = id,
            .kind = RuleProposal::Kind::calendarEvent,
            .event = ProposedCalendarEvent { tea, now, later, u"hot"_s, u"Home"_s } };
        QVERIFY(awaited(writer.performWrite(proposal)).has_value());
        QVERIFY(calendar.events.at(0)
            == (CalendarEventDTO { name, tea, now, later, u"Home"_s, u"hot"_s }));
        proposal = reminder(x, tea);
        proposal.id = id;
        proposal.reminder = ProposedReminder { tea, later, u"hot"_s };
        QVERIFY(awaited(writer.performWrite(proposal)).has_value());
        QVERIFY(calendar.reminders.at(0) == (ReminderDTO { name, tea, later, {}, u"hot"_s }));
        calendar.refusal = WriteError::unsupported(u"no"_s);
        QVERIFY(awaited(writer.performWrite(proposal)).error() == calendar.refusal);
    }

private:
    void restart()
    {
        m = std::make_unique<ProposalManager>(*m_scratch, [] { return now; });
    }

    bool isKnown(const RuleProposal& proposal) const
    {
        return m->repeated(proposal, { AppSettings(), now }).has_value();
    }

    Task<ProposalManager::Execution> whenReleased()
    {
        co_await m_release.next();
        co_return ProposalManager::Executed { made };
    }

    std::optional<ScratchDirectory> m_scratch;
    std::unique_ptr<ProposalManager> m;
    Stream<std::monostate, std::monostate> m_release;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalManagerTest)
#include "ProposalManagerTest.moc"
