#pragma once

#include "PobblewigDesktop/chat/MessageLayout.h"

#include <QUuid>

#include <map>
#include <optional>
#include <vector>

namespace pobblewig {

/// A stretch of the text of one message, or of the reply in progress (whose id is null).
struct MessageRange {
    QUuid message;
    TextRange range;

    bool operator==(const MessageRange&) const = default;
};

/// The marked parts of the conversation.
struct ConversationMarks {
    MessageLayout::Marks of(const QUuid& message) const;

    /// By message; it can reach over several.
    std::map<QUuid, TextRange> selection;
    std::map<QUuid, std::vector<TextRange>> matches;
    std::optional<MessageRange> currentMatch;
};

} // namespace pobblewig
