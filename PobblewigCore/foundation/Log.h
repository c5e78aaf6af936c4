#pragma once

#include <QString>

#include <functional>

/// The program's only log, for whoever maintains it. Lines begin with "buddy: " and never contain a
/// token, a key, a message text or a note.
namespace pobblewig::Log {

using Sink = std::function<void(const QString& line)>;

/// Writes to standard error, which the journal collects in a desktop session.
void line(const QString& text);

/// Redirects all later lines and returns the previous sink.
Sink setSink(Sink sink);

} // namespace pobblewig::Log
