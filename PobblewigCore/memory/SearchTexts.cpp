#include "memory/SearchTexts.h"

#include <QStringList>

#include <algorithm>

namespace pobblewig {

std::vector<std::string> SearchTexts::tokens(const QString& query)
{
    std::vector<std::string> tokens;
    const auto words = Text::normalized(query).split(u' ', Qt::SkipEmptyParts);
    tokens.reserve(size_t(words.size()));
    for (const auto& word : words)
        tokens.push_back(word.toStdString());
    return tokens;
}

void SearchTexts::forget(size_t index)
{
    if (index < m_texts.size())
        m_texts[index].reset();
}

void SearchTexts::forgetAll()
{
    m_texts.clear();
}

bool SearchTexts::holdsAll(const std::string& text, const std::vector<std::string>& tokens)
{
    return std::ranges::all_of(
        tokens, [&](const auto& token) { return text.find(token) != std::string::npos; });
}

} // namespace pobblewig
