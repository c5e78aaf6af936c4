#pragma once

#include <QString>

#include <map>

namespace pobblewig {

/// "NAME=value OTHER=" as variables, or as the entries of a keyring.
inline std::map<QString, QString> variables(const QString& text)
{
    std::map<QString, QString> variables;
    for (const auto& word : text.split(u' ', Qt::SkipEmptyParts))
        variables.emplace(word.section(u'=', 0, 0), word.section(u'=', 1));
    return variables;
}

} // namespace pobblewig
