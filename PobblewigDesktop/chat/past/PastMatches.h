#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"

namespace pobblewig {

class ConversationModel;
class ConversationView;

/// Marks in the conversation that is shown what a search over all of them has found.
class PastMatches {
public:
    /// Both must outlive this object.
    PastMatches(const ConversationModel& model, ConversationView& view);

    /// Marks the words in each message that contains every one of them, and shows the first.
    void search(const QString& wanted);

    /// Shows the next match, or the one before for a negative step.
    void step(int step);

    /// Returns "2 of 5"; empty if there is nothing.
    QString inWords() const;

private:
    void show();

    const ConversationModel& m_model;
    ConversationView& m_view;
    std::vector<MessageRange> m_matches;
    std::optional<MessageRange> m_current;
};

} // namespace pobblewig
