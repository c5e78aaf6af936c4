#pragma once

#include "PobblewigDesktop/chat/ProposalCard.h"
#include "foundation/Time.h"

#include <QString>
#include <QUuid>

#include <vector>

namespace pobblewig {

/// A row of the conversation as it is shown.
struct ConversationRow {
    enum class Kind {
        /// The title of a day.
        day,
        user,
        assistant,
        /// The buddy said this unasked.
        proactive,
        /// Tells between the messages what became of something.
        note,
        /// A change that the user has answered.
        card,
        /// The reply that is being written.
        preview,
    };

    Kind kind = Kind::user;
    /// The message's id; null for rows that are not messages.
    QUuid id;
    QString text;
    TimePoint timestamp;
    QString time;
    bool hadImage = false;
    /// The reply ended before the model was done, and is kept.
    bool isCutOff = false;
    /// The user stopped the reply, and it is kept.
    bool isStopped = false;
    /// The turn of this message of the user has failed.
    bool isUnanswered = false;

    /// The answers whose place this one has taken, and which of them all is shown: 0 is the oldest.
    std::vector<QString> earlier = {};
    std::size_t answer = 0;

    /// What a card tells, and which others it is joined to.
    ProposalCard card = {};
    bool isFirstOfCard = true;
    bool isLastOfCard = true;

    bool isMessage() const { return !id.isNull(); }
    bool isReplyInProgress() const { return kind == Kind::preview; }
    bool isSameAs(const ConversationRow& other) const
    {
        return id == other.id && kind == other.kind && (kind != Kind::day || text == other.text);
    }
    bool operator==(const ConversationRow&) const = default;
};

} // namespace pobblewig
