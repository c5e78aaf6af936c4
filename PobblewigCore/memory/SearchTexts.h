#pragma once

#include "foundation/Text.h"

#include <optional>
#include <string>
#include <vector>

namespace pobblewig {

/// What a list of records is searched by: their normalised texts, each made when a search first
/// needs it and kept until its record changes.
class SearchTexts {
public:
    /// The words of a query, normalised.
    static std::vector<std::string> tokens(const QString& query);

    /// Whether every token occurs in the text of the record at this place. `makeText()` gives the
    /// record's text as it stands, if it is not known yet.
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

    /// The record at this place changed.
    void forget(size_t index);

    /// The records moved to other places.
    void forgetAll();

private:
    static bool holdsAll(const std::string& text, const std::vector<std::string>& tokens);

    std::vector<std::optional<std::string>> m_texts;
};

} // namespace pobblewig
