#pragma once

#include "foundation/Calendar.h"
#include "memory/history/ChatMessage.h"

#include <vector>

/// A conversation as a file for other programs.
namespace pobblewig::ConversationExport {

/// With a heading for each day, and the texts as they were written.
QByteArray markdown(const std::vector<ChatMessage>& messages, const Calendar& calendar);

/// As in an archive.
QByteArray json(const std::vector<ChatMessage>& messages);

} // namespace pobblewig::ConversationExport
