#include "conversation/proposals/ProposalLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

namespace {

using Kind = RuleProposal::Kind;

RuleProposal named(const QString& proposalId, Kind kind = Kind::reminder)
{
    return { .proposalId = proposalId, .kind = kind };
}

RuleProposal change(const QString& proposalId, const QString& key)
{
    auto proposal = named(proposalId, Kind::settingsChange);
    proposal.settingsChange = ProposedSettingsChange { key, JSONValue(true) };
    return proposal;
}

/// The ids of the proposals and the minutes of the modes.
QString shown(const std::vector<BuddyAction>& actions)
{
    QStringList words;
    for (const auto& action : actions) {
        const auto* proposal = std::get_if<RuleProposal>(&action);
        words += proposal ? proposal->proposalId
                          : QString::number(std::get<TemporaryMode>(action).minutes);
    }
    return words.join(u' ');
}

} // namespace

class ProposalLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theUserIsAskedUnlessAllowed_data()
    {
        QTest::addColumn<RuleProposal>("proposal");
        QTest::addColumn<bool>("isAskedThoughAllowed");
        const QString id = QStringLiteral("x");
        row("rule", named(id, Kind::rule), true);
        row("event", named(id, Kind::calendarEvent), false);
        row("reminder", named(id), false);
        row("setting", change(id, QStringLiteral("mode")), false);
        row("setting without a payload", named(id, Kind::settingsChange), false);
        row("cloud sync", change(id, QStringLiteral("cloudSyncEnabled")), true);
        row("excluded applications", change(id, QStringLiteral("excludedBundleIDs")), true);
        row("folders", change(id, QStringLiteral("appDataSources")), true);
        row("forgetting", named(id, Kind::forgetMemory), true);
    }
    void theUserIsAskedUnlessAllowed()
    {
        QFETCH(RuleProposal, proposal);
        QFETCH(bool, isAskedThoughAllowed);
        std::map<QString, bool> confirmations;
        QVERIFY(ProposalLogic::needsConfirmation(proposal, confirmations));
        for (const auto kind :
            { Kind::calendarEvent, Kind::reminder, Kind::settingsChange, Kind::forgetMemory })
            confirmations[*ProposalLogic::actionClass(kind)] = false;
        QCOMPARE(ProposalLogic::needsConfirmation(proposal, confirmations), isAskedThoughAllowed);
        QCOMPARE(ProposalLogic::canAllowAlways(proposal), !isAskedThoughAllowed);
    }

    void theFirstFreeNumberIsTaken()
    {
        const QString id = QStringLiteral("x");
        std::vector proposals { named(id), named(QStringLiteral("x-3")) };
        QCOMPARE(ProposalLogic::nextFreeSuffix(id, proposals), QStringLiteral("x-2"));
        proposals.push_back(named(QStringLiteral("x-2")));
        QCOMPARE(ProposalLogic::nextFreeSuffix(id, proposals), QStringLiteral("x-4"));
    }

    void aMascotComesFirstAndRepetitionsGo()
    {
        const auto scheme = change(QStringLiteral("scheme"), QStringLiteral("mascotColorScheme"));
        const auto mascot = change(QStringLiteral("mascot"), QStringLiteral("mascot"));
        const std::vector<BuddyAction> actions { TemporaryMode { CoachMode::focus, 30 }, scheme,
            named(QStringLiteral("r")), mascot, TemporaryMode { CoachMode::focus, 60 },
            named(QStringLiteral("r"), Kind::calendarEvent), TemporaryMode { CoachMode::focus, 30 },
            TemporaryMode { CoachMode::studying, 30 } };
        const auto deduped = ProposalLogic::dedupedActions(actions);
        QCOMPARE(shown(deduped), QStringLiteral("30 scheme r mascot 60 30"));
        QCOMPARE(shown(ProposalLogic::orderedForApplication(deduped)),
            QStringLiteral("mascot 30 scheme r 60 30"));
        QVERIFY(std::get<RuleProposal>(deduped[2]).kind == Kind::reminder);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalLogicTest)
#include "ProposalLogicTest.moc"
