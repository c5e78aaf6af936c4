#pragma once

#include <QString>

namespace pobblewig {

/// What the body of a failed answer says to people.
namespace ServerMessage {

/// The server's own sentence, taken out of the JSON or the page around it: one line of at most 500
/// characters, without anything that looks like a key. Empty if there is none.
QString text(const QString& body);

/// Whether the body is a web page, as a proxy or the login of a network answers.
bool isPage(QStringView body);

} // namespace ServerMessage

} // namespace pobblewig
