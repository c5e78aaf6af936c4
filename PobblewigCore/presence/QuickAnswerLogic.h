#pragma once

#include "interventions/ProactiveLogic.h"
#include "memory/history/ChatMessage.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// A message that the companion began and that the user can answer with one click.
struct QuickQuestion {
    /// The id of its record.
    QUuid record;
    /// In the order in which they are offered.
    std::vector<ProactiveLogic::QuickAnswer> answers;

    bool operator==(const QuickQuestion&) const = default;
};

namespace QuickAnswerLogic {

/// Returns nothing unless the newest message of the conversation is one that the companion began
/// and the user has not answered yet. A briefing cannot be put off.
std::optional<QuickQuestion> question(
    const std::vector<ChatMessage>& messages, const std::vector<InterventionRecord>& records);

/// The words on the button.
QString inWords(ProactiveLogic::QuickAnswer answer);

/// How a notification calls an answer.
struct Action {
    QUuid record;
    ProactiveLogic::QuickAnswer answer;

    bool operator==(const Action&) const = default;
};

QString actionID(const Action& action);

/// Returns nothing for an action of another kind.
std::optional<Action> action(const QString& id);

} // namespace QuickAnswerLogic

} // namespace pobblewig
