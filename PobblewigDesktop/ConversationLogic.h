#pragma once

#include "PobblewigDesktop/ConversationRow.h"
#include "memory/ChatMessage.h"

#include <QDate>
#include <QLocale>
#include <QTimeZone>

#include <vector>

namespace pobblewig {

/// Where and when the conversation is read.
struct ReadingPlace {
    QTimeZone zone;
    QLocale locale;
};

/// From messages to what is shown, read out and saved of them.
namespace ConversationLogic {

/// "Today", "Yesterday", a weekday within a week, else the date.
QString dayTitle(const QDate& day, const QDate& today, const QLocale& locale);

/// The messages with a title before each day's first. Whatever the buddy says directly after
/// something that it said is a note, unless it is proactive: replies answer the user.
std::vector<ConversationRow> rows(
    const std::vector<ChatMessage>& messages, TimePoint now, const ReadingPlace& place);

/// "You, 14:05: …", for those who hear the conversation.
QString spoken(const ConversationRow& row);

/// The whole conversation as a file for people.
QString transcript(const std::vector<ChatMessage>& messages, const ReadingPlace& place);

} // namespace ConversationLogic

} // namespace pobblewig
