#pragma once

#include <QString>

/// The end of a Markdown text that is still being written.
namespace pobblewig::MarkdownTail {

/// Returns the end of a text so that it looks as it will once it goes on: what has been opened is
/// closed, and signs that could still become anything are left out. `opening` is that of the chunk
/// before.
QString settled(const QString& text, const QString& opening);

} // namespace pobblewig::MarkdownTail
