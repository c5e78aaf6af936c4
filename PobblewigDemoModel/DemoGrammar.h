#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Sentences as people write them in a chat.
namespace pobblewig::DemoGrammar {

/// The clauses that state something, without what opens them ("please remember that", "by the way")
/// and without questions. What is longer than a sentence should be is left out.
QStringList statements(const QString& text);

/// What follows on "no," or "actually,"; nothing in a statement that corrects nothing.
std::optional<QString> correctedTo(const QString& statement);

/// "I like my bike very much" is "The user likes their bike." The same statement always gives the
/// same words, as what is told again has to.
QString aboutTheUser(const QString& statement);

} // namespace pobblewig::DemoGrammar
