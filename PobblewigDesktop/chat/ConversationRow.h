#pragma once

#include "foundation/Time.h"

#include <QString>
#include <QUuid>

namespace pobblewig {

/// One line of the conversation as it is shown.
struct ConversationRow {
    enum class Kind {
        /// The title of a day.
        day,
        user,
        assistant,
        /// Said by the buddy unasked.
        proactive,
        /// A note of what became of something, between the messages.
        note,
        /// The reply that is being written.
        preview,
        /// What had been written of a reply when it ended early.
        partial,
    };

    Kind kind = Kind::user;
    /// Of the message; null for the rows that are none.
    QUuid id;
    QString text;
    TimePoint timestamp;
    QString time;
    bool hadImage = false;

    bool isMessage() const { return !id.isNull(); }
    bool isReplyInProgress() const { return kind == Kind::preview || kind == Kind::partial; }
    bool isSameAs(const ConversationRow& other) const
    {
        return id == other.id && kind == other.kind && (kind != Kind::day || text == other.text);
    }
    bool operator==(const ConversationRow&) const = default;
};

} // namespace pobblewig
