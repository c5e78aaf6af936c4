#pragma once

#include "foundation/Time.h"

#include <QString>
#include <QUuid>

#include <map>

namespace pobblewig {

/// A proposal as the conversation shows it.
struct ProposalCard {
    enum class Outcome {
        /// It is shown above the conversation until the user answers.
        waiting,
        done,
        dismissed,
        undone,
    };

    QString proposalId;
    Outcome outcome = Outcome::waiting;
    /// If it is empty, the latest message about the proposal is shown.
    QString text = {};
    /// When the outcome came about.
    TimePoint time = {};
    bool canBeUndone = false;

    bool operator==(const ProposalCard&) const = default;
};

/// By the id that messages about a proposal carry.
using ProposalCards = std::map<QUuid, ProposalCard>;

} // namespace pobblewig
