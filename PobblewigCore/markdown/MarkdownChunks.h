#pragma once

#include <QString>

/// Cuts Markdown into chunks that can be read one after another, so that a text that grows is not
/// read again from its beginning.
namespace pobblewig::MarkdownChunks {

/// No chunk is longer.
inline constexpr qsizetype longestChunk = 8192;

struct Chunk {
    /// The length of the chunk; 0 if its end has not come yet.
    qsizetype length = 0;
    /// Code or a table goes on: with these lines in front of it, the next chunk is read correctly.
    QString opening = {};
    /// The chunk ends amid a paragraph, a list or the like.
    bool isCut = false;
};

/// Returns the first chunk of what is left of a text. What it returns does not depend on what
/// follows the chunk. `opening` is that of the chunk before.
Chunk first(QStringView rest, const QString& opening);

struct End {
    bool isInCode = false;
    /// Where the last paragraph, list item or row of a table begins.
    qsizetype paragraph = 0;
};

/// What a text ends in that is still being written.
End end(QStringView rest, const QString& opening);

} // namespace pobblewig::MarkdownChunks
