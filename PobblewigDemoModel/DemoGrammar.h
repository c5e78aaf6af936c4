#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Handles sentences as people write them in a chat.
namespace pobblewig::DemoGrammar {

/// The clauses that state something, without openings ("please remember that", "by the way") and
/// questions. Clauses of excessive length are left out.
QStringList statements(const QString& text);

/// The text after "no," or "actually,", or nothing if the statement corrects nothing.
std::optional<QString> correctedTo(const QString& statement);

/// Turns "I like my bike very much" into "The user likes their bike." Equal statements give equal
/// text, so that repetitions are recognised.
QString aboutTheUser(const QString& statement);

} // namespace pobblewig::DemoGrammar
