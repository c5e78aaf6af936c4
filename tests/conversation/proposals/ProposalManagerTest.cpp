#include "conversation/proposals/ProposalManager.h"

#include "foundation/Stream.h"
#include "support/Awaited.h"
#include "support/LogLines.h"

#include <QTemporaryDir>

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
    co_return made;
}

const QString x = QStringLiteral("x");
const QString tea = QStringLiteral("Tea");

} // namespace

class ProposalManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        restart();
    }

    void anotherRequestUnderAUsedIdGetsANumber()
    {
        m->registerProposal(reminder(x, tea));
        m->reject(x);
        QVERIFY(!m->registerProposal(reminder(x, tea, 5)));
        const LogLines log;
        QCOMPARE(m->registerProposal(reminder(x, QStringLiteral("Coffee")))->proposalId,
            QStringLiteral("x-2"));
        QVERIFY(log.lines().front().startsWith(u"buddy: proposalId collision on x — "));
        // The model goes on calling it by its own id.
        QVERIFY(!m->registerProposal(reminder(x, QStringLiteral("Coffee"))));
        QVERIFY(m->reject(QStringLiteral("x-2")));
        QVERIFY(!m->registerProposal(reminder(x, QStringLiteral("Coffee"))));
        QVERIFY(m->registerProposal(reminder(x, QStringLiteral("Cocoa"))));
    }

    void whatWaitsIsThereAfterARestart()
    {
        m->registerProposal(reminder(x, tea, 2));
        m->registerProposal(reminder(QStringLiteral("y"), tea, 1));
        m->registerProposal(reminder(QStringLiteral("z"), tea, 0));
        awaited(m->confirm(QStringLiteral("z"), succeed));
        restart();
        const auto pending = m->pendingProposals();
        QCOMPARE(pending.size(), 2u);
        QCOMPARE(pending.back().proposalId, x);
        QVERIFY(awaited(m->confirm(QStringLiteral("z"), succeed))
            == (ConfirmResult { .kind = Kind::duplicate, .ruleID = made }));
    }

    void aFileThatIsGoneIsWrittenAnew()
    {
        m->registerProposal(reminder(x, tea));
        QVERIFY(QFile::remove(m_scratch->filePath(QStringLiteral("proposals.json"))));
        awaited(m->confirm(x, succeed));
        restart();
        QVERIFY(m->proposal(x)->status == Status::confirmed);
    }

    void nothingComesBackOnceItIsAnswered()
    {
        QVERIFY(!m->reject(x));
        QVERIFY(awaited(m->confirm(x, succeed)).kind == Kind::notFound);
        m->registerProposal(reminder(x, tea));
        m->reject(x);
        QVERIFY(awaited(m->confirm(x, succeed)).kind == Kind::notFound);
        m->registerProposal(reminder(QStringLiteral("y"), tea));
        awaited(m->confirm(QStringLiteral("y"), succeed));
        QVERIFY(!m->reject(QStringLiteral("y")));
    }

    void oneThatIsBeingCarriedOutIsOutOfReach()
    {
        m->registerProposal(reminder(x, tea));
        auto first = m->confirm(x, [this](RuleProposal) { return whenReleased(); });
        QVERIFY(awaited(m->confirm(x, succeed)) == ConfirmResult { .kind = Kind::duplicate });
        QVERIFY(!m->reject(x));
        m->registerProposal(reminder(QStringLiteral("y"), tea));
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
        m->registerProposal(reminder(x, QStringLiteral("Coffee")));
        m_release.sink().push({});
        QVERIFY(awaited(std::move(first)).kind == Kind::created);
        QVERIFY(m->proposal(x)->status == Status::pending);
    }

    void aConfirmedRuleIsInTheStore()
    {
        RuleStore rules { std::nullopt };
        m->registerProposal({ .proposalId = x,
            .kind = RuleProposal::Kind::rule,
            .domainMatch = { QStringLiteral("tea.example") },
            .thresholdMinutes = 20,
            .cooldownMinutes = 60 });
        const auto result = awaited(m->confirm(x, rules, now));
        QCOMPARE(rules.rules().size(), 1u);
        const auto& rule = rules.rules().front();
        QCOMPARE(rule.id, result.ruleID);
        QVERIFY(rule.enabled && rule.createdAt == now);
        QCOMPARE(rule.trigger.domains, std::vector { QStringLiteral("tea.example") });
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
        QVERIFY(m->proposal(QStringLiteral("99")));
        QVERIFY(!m->proposal(QStringLiteral("100")));
        // Its entry in the ledger is gone too.
        QVERIFY(awaited(m->confirm(QStringLiteral("100"), succeed)).kind == Kind::notFound);
    }

private:
    void restart() { m = std::make_unique<ProposalManager>(DataDirectory(m_scratch->path())); }

    Task<ProposalManager::Execution> whenReleased()
    {
        co_await m_release.next();
        co_return made;
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<ProposalManager> m;
    Stream<std::monostate, std::monostate> m_release;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalManagerTest)
#include "ProposalManagerTest.moc"
