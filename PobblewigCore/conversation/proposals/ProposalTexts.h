#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "foundation/Calendar.h"
#include "settings/AppSettings.h"

#include <QStringList>

namespace pobblewig {

/// What the user reads before answering.
struct ProposalWords {
    /// What kind of change it is, in two or three words.
    QString title;
    /// What is and what would be, a line each; the first says the most.
    QStringList lines;

    bool operator==(const ProposalWords&) const = default;
};

namespace ProposalTexts {

/// In the user's own forms of date and time. Names and texts that a model wrote appear without
/// control characters and marks that turn the direction of writing, and no longer than fits.
ProposalWords words(
    const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar);

/// The proposal's own name, likewise.
QString name(const RuleProposal& proposal);

} // namespace ProposalTexts

} // namespace pobblewig
