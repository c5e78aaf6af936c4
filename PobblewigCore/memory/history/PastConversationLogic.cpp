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

bool holdsAll(const QString& letters, const QStringList& words)
{
    return std::ranges::all_of(
        words, [&letters](const QString& word) { return letters.contains(word); });
}

/// A folded text, and where each of its letters begins in the original.
struct Folding {
    QString letters;
    std::vector<qsizetype> origins;
};

Folding folding(const QString& text)
{
    Folding folding;
    for (qsizetype at = 0; at < text.size();) {
        const auto length = text.at(at).isHighSurrogate() ? 2 : 1;
        folding.letters += folded(text.mid(at, length));
        folding.origins.resize(size_t(folding.letters.size()), at);
        at += length;
    }
    folding.origins.push_back(text.size());
    return folding;
}

TextRange original(const Folding& folding, qsizetype start, qsizetype length)
{
    const auto first = folding.origins[size_t(start)];
    // What one character has become belongs together.
    const auto end =
        std::ranges::upper_bound(folding.origins, folding.origins[size_t(start + length - 1)]);
    return { first, *end - first };
}

std::vector<TextRange> merged(std::vector<TextRange> ranges)
{
    std::ranges::sort(ranges, {}, &TextRange::start);
    std::vector<TextRange> merged;
    for (const auto& range : ranges) {
        if (merged.empty() || range.start >= merged.back().end())
            merged.push_back(range);
        else if (range.end() > merged.back().end())
            merged.back().length = range.end() - merged.back().start;
    }
    return merged;
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
        : std::ranges::find_if(messages,
            [&words](const auto& message) { return holdsAll(folded(message.text), words); });
    return found == messages.end() ? std::nullopt : std::optional(found->id);
}

std::vector<TextRange> PastConversationLogic::places(const QString& text, const QStringList& words)
{
    const auto folded = folding(text);
    if (!holdsAll(folded.letters, words))
        return {};
    std::vector<TextRange> places;
    for (const auto& word : words) {
        auto start = folded.letters.indexOf(word);
        for (; start >= 0; start = folded.letters.indexOf(word, start + word.size()))
            places.push_back(original(folded, start, word.size()));
    }
    return merged(std::move(places));
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
