#include "memory/MemoryNoteSearch.h"

#include "foundation/Text.h"

#include <QMultiHash>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace pobblewig {

std::vector<MemoryNote> MemoryNoteSearch::withWords(const std::vector<MemoryNote>& notes,
    const QString& query, std::optional<MemoryCategory> category, size_t limit)
{
    const auto words = Text::normalized(query).split(u' ', Qt::SkipEmptyParts);
    const auto matches = [&](const MemoryNote& note) {
        const auto text = Text::normalized(note.text);
        return note.category == category.value_or(note.category)
            && std::ranges::all_of(words, [&](const auto& word) { return text.contains(word); });
    };
    std::vector<MemoryNote> found;
    for (const auto& note : notes) {
        if (found.size() == limit)
            break;
        if (matches(note))
            found.push_back(note);
    }
    return found;
}

std::vector<QUuid> MemoryNoteSearch::stating(
    const std::vector<MemoryNote>& notes, const std::vector<QString>& statements)
{
    QMultiHash<QString, QUuid> unnamed;
    for (const auto& note : notes)
        unnamed.insert(Text::normalized(note.text), note.id);
    std::vector<QUuid> ids;
    for (const auto& statement : statements) {
        const auto text = Text::normalized(statement);
        std::ranges::copy(unnamed.values(text), std::back_inserter(ids));
        unnamed.remove(text);
    }
    return ids;
}

} // namespace pobblewig
