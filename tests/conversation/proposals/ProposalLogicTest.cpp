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
    void theUserIsAskedUnlessAllowed()
    {
        std::map<QString, bool> allowed;
        for (const auto kind :
            { Kind::calendarEvent, Kind::reminder, Kind::settingsChange, Kind::forgetMemory })
            allowed[*ProposalLogic::actionClass(kind)] = false;
        const auto isAskedThoughAllowed = [&](const RuleProposal& proposal) {
            const auto isAsked = ProposalLogic::needsConfirmation(proposal, allowed);
            return ProposalLogic::needsConfirmation(proposal, {})
                    && ProposalLogic::canAllowAlways(proposal) != isAsked
                ? std::optional(isAsked)
                : std::nullopt;
        };
        const auto id = u"x"_s;
        for (const auto& proposal : { named(id, Kind::calendarEvent), named(id),
                 change(id, u"mode"_s), named(id, Kind::settingsChange) })
            QVERIFY(isAskedThoughAllowed(proposal) == false);
        for (const auto& proposal : { named(id, Kind::rule), named(id, Kind::forgetMemory),
                 change(id, u"cloudSyncEnabled"_s), change(id, u"excludedBundleIDs"_s),
                 change(id, u"appDataSources"_s) })
            QVERIFY(isAskedThoughAllowed(proposal) == true);
    }

    void theFirstFreeNumberIsTaken()
    {
        const QString id = u"x"_s;
        std::vector proposals { named(id), named(u"x-3"_s) };
        QCOMPARE(ProposalLogic::nextFreeSuffix(id, proposals), u"x-2"_s);
        proposals.push_back(named(u"x-2"_s));
        QCOMPARE(ProposalLogic::nextFreeSuffix(id, proposals), u"x-4"_s);
    }

    void aMascotComesFirstAndRepetitionsGo()
    {
        const auto scheme = change(u"scheme"_s, u"mascotColorScheme"_s);
        const auto mascot = change(u"mascot"_s, u"mascot"_s);
        const std::vector<BuddyAction> actions { TemporaryMode { CoachMode::focus, 30 }, scheme,
            named(u"r"_s), mascot, TemporaryMode { CoachMode::focus, 60 },
            named(u"r"_s, Kind::calendarEvent), TemporaryMode { CoachMode::focus, 30 },
            TemporaryMode { CoachMode::studying, 30 } };
        const auto deduped = ProposalLogic::dedupedActions(actions);
        QCOMPARE(shown(deduped), u"30 scheme r mascot 60 30"_s);
        QCOMPARE(
            shown(ProposalLogic::orderedForApplication(deduped)), u"mascot 30 scheme r 60 30"_s);
        QVERIFY(std::get<RuleProposal>(deduped[2]).kind == Kind::reminder);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalLogicTest)
#include "ProposalLogicTest.moc"
