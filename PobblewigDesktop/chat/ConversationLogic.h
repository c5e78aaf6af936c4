#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "foundation/Calendar.h"
#include "memory/history/ChatMessage.h"

#include <vector>

namespace pobblewig {

/// From messages to what is shown, read out and saved of them.
namespace ConversationLogic {

/// "Today", "Yesterday", a weekday within a week, else the date.
QString dayTitle(const QDate& day, const QDate& today, const QLocale& locale);

/// The messages with a title before each day's first. Whatever the buddy says directly after
/// something that it said is a note, unless it is proactive: replies answer the user.
std::vector<ConversationRow> rows(
    const std::vector<ChatMessage>& messages, TimePoint now, const Calendar& calendar);

/// "You, 14:05: …", for those who hear the conversation.
QString spoken(const ConversationRow& row);

/// The whole conversation as a file for people.
QString transcript(const std::vector<ChatMessage>& messages, const Calendar& calendar);

} // namespace ConversationLogic

} // namespace pobblewig
