#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "foundation/Calendar.h"
#include "memory/history/ChatMessage.h"

#include <vector>

namespace pobblewig {

/// Turns messages into what is shown, read out and saved.
namespace ConversationLogic {

/// Returns "Today", "Yesterday", a weekday within the last week, or else the date.
QString dayTitle(const QDate& day, const QDate& today, const QLocale& locale);

/// Returns the messages, with a title before the first one of each day. A message of the buddy that
/// directly follows another one of its own is a note, unless it is proactive: only replies answer
/// the user. Messages about a proposal that has a card become one card, at the place of the first
/// of them, joined to that of another proposal before it. Leaves out what stands before the message
/// with the index `first`, which `firstToShow` must have returned.
std::vector<ConversationRow> rows(const std::vector<ChatMessage>& messages, TimePoint now,
    const Calendar& calendar, const ProposalCards& cards = {}, size_t first = 0);

/// The index of the first message whose row may change if the messages from `changed` on do.
size_t firstToShow(const std::vector<ChatMessage>& messages, size_t changed);

/// Returns "You, 14:05: …", for those who hear the conversation.
QString spoken(const ConversationRow& row);

/// "08:15", or "08:15, answer 2 of 3" for a reply that was given again.
QString moment(const ConversationRow& row);

/// The row with another of its answers. A number beyond them means the newest.
ConversationRow withAnswer(ConversationRow row, std::size_t number);

/// Returns the whole conversation as text for people to read.
QString transcript(const std::vector<ChatMessage>& messages, const Calendar& calendar);

} // namespace ConversationLogic

} // namespace pobblewig
