#include "memory/history/PastConversationLogic.h"

#include "foundation/Text.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype longestLine = 120;

/// Without case and accents. Only upper case makes "ß" and "ss" the same.
QString folded(const QString& text)
{
    auto letters = text.normalized(QString::NormalizationForm_KD).toUpper();
    letters.removeIf([](QChar letter) { return letter.category() == QChar::Mark_NonSpacing; });
    return letters;
}

bool holdsAll(const QString& text, const QStringList& words)
{
    const auto letters = folded(text);
    return std::ranges::all_of(
        words, [&letters](const QString& word) { return letters.contains(word); });
}

} // namespace

QStringList PastConversationLogic::words(const QString& text)
{
    return folded(text).simplified().split(u' ', Qt::SkipEmptyParts);
}

std::optional<QUuid> PastConversationLogic::firstMatch(
    const std::vector<ChatMessage>& messages, const QStringList& words)
{
    const auto found = words.isEmpty()
        ? messages.end()
        : std::ranges::find_if(
            messages, [&words](const auto& message) { return holdsAll(message.text, words); });
    return found == messages.end() ? std::nullopt : std::optional(found->id);
}

QString PastConversationLogic::firstLine(const std::vector<ChatMessage>& messages)
{
    if (messages.empty())
        return {};
    const auto asked = std::ranges::find(messages, ChatMessage::Role::user, &ChatMessage::role);
    return firstLine((asked == messages.end() ? messages.front() : *asked).text);
}

QString PastConversationLogic::firstLine(const QString& text)
{
    return Text::plainLine(text.trimmed().section(u'\n', 0, 0), longestLine);
}

std::optional<QUuid> PastConversationLogic::session(const std::vector<ChatMessage>& messages)
{
    for (const auto& message : messages) {
        if (message.sessionID)
            return message.sessionID;
    }
    return std::nullopt;
}

} // namespace pobblewig
