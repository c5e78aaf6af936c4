#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "foundation/Calendar.h"
#include "settings/AppSettings.h"

#include <QStringList>

namespace pobblewig {

/// The text that the user reads before answering.
struct ProposalWords {
    /// The kind of change, in two or three words.
    QString title;
    /// One line each about the current and the proposed state, the most important first.
    QStringList lines;
    /// Whether no line may be shortened.
    bool isInFull = false;

    bool operator==(const ProposalWords&) const = default;
};

namespace ProposalTexts {

/// Formats dates and times as the user's locale does. Text from a model is shortened, without
/// control characters and marks that change the direction of writing.
ProposalWords words(
    const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar);

/// What an answered proposal changed or would have changed, in a few lines; empty if that may no
/// longer be told, as after a deletion.
QStringList outcome(
    const RuleProposal& proposal, const AppSettings& settings, const Calendar& calendar);

/// A moment, or only its day.
QString when(TimePoint time, bool isDay, const Calendar& calendar);

/// The proposal's own name, treated the same way.
QString name(const RuleProposal& proposal);

/// The answer that allows this kind of change for good and names the kind; empty if there is none.
QString allowAlways(const RuleProposal& proposal);

} // namespace ProposalTexts

} // namespace pobblewig
