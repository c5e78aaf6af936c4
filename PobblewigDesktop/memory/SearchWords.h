#pragma once

#include "foundation/Text.h"

#include <QStringList>

#include <algorithm>

namespace pobblewig {

/// The words of a search. A text matches if it has each of them, also inside longer words, ignoring
/// case.
class SearchWords {
public:
    explicit SearchWords(const QString& wanted)
        : m_words(Text::normalized(wanted).split(u' ', Qt::SkipEmptyParts))
    {
    }

    bool isEmpty() const { return m_words.isEmpty(); }

    bool match(const QString& text) const
    {
        if (m_words.isEmpty())
            return true;
        const auto found = Text::normalized(text);
        return std::ranges::all_of(m_words, [&](const auto& word) { return found.contains(word); });
    }

private:
    QStringList m_words;
};

} // namespace pobblewig
