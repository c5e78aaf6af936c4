#pragma once

#include <QString>

#include <functional>

/// The one place where the program writes lines for whoever looks after it. Lines begin "buddy: "
/// and never hold a token, a key, a message text or a note.
namespace pobblewig::Log {

using Sink = std::function<void(const QString& line)>;

/// To the standard error stream, which the journal collects in a desktop session.
void line(const QString& text);

/// Sends all later lines elsewhere and returns where they went before.
Sink setSink(Sink sink);

} // namespace pobblewig::Log
