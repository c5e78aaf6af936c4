#pragma once

#include "markdown/TextRange.h"
#include "memory/history/ChatMessage.h"

#include <QStringList>

#include <vector>

/// What is shown of a conversation among others, and how it is searched.
namespace pobblewig::PastConversationLogic {

/// The words of a text, without case and accents.
QStringList words(const QString& text);

/// The first message that contains every word. Nothing without words.
std::optional<QUuid> firstMatch(const std::vector<ChatMessage>& messages, const QStringList& words);

/// Where the words stand in a text that contains every one of them, in order and without overlaps.
std::vector<TextRange> places(const QString& text, const QStringList& words);

/// The first line of what the user said first, or else of the first message.
QString firstLine(const std::vector<ChatMessage>& messages);
QString firstLine(const QString& text);

/// The session of the first message that has one.
std::optional<QUuid> session(const std::vector<ChatMessage>& messages);

} // namespace pobblewig::PastConversationLogic
