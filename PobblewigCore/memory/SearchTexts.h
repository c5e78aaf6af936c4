#pragma once

#include "foundation/Text.h"

#include <optional>
#include <string>
#include <vector>

namespace pobblewig {

/// The normalised texts by which a list of records is searched. Each is made when a search first
/// needs it, and kept until its record changes.
class SearchTexts {
public:
    /// The words of a query, normalised.
    static std::vector<std::string> tokens(const QString& query);

    /// Whether the text of the record at this index contains every token. `makeText()` returns the
    /// record's original text and is called if it is not cached yet.
    template <typename MakeText>
    bool match(size_t index, const std::vector<std::string>& tokens, const MakeText& makeText)
    {
        if (tokens.empty())
            return true;
        if (index >= m_texts.size())
            m_texts.resize(index + 1);
        auto& text = m_texts[index];
        if (!text)
            text = Text::normalized(makeText()).toStdString();
        return holdsAll(*text, tokens);
    }

    /// Call this when the record at this index has changed.
    void forget(size_t index);

    /// Call this when records have moved.
    void forgetAll();

private:
    static bool holdsAll(const std::string& text, const std::vector<std::string>& tokens);

    std::vector<std::optional<std::string>> m_texts;
};

} // namespace pobblewig
