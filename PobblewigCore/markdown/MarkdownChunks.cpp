#include "markdown/MarkdownChunks.h"

#include "markdown/MarkdownLines.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// What the line may continue even after a blank one.
bool mayContinue(QStringView line)
{
    const auto first = line.front();
    return first.isSpace() || first.isDigit() || QStringView(u"-*+").contains(first);
}

bool beginsItem(QStringView line)
{
    const auto text = line.trimmed();
    return !text.isEmpty()
        && (text.front().isDigit() || QStringView(u"-*+#>|").contains(text.front()));
}

/// Where a text that does not end by itself is cut: after a line, or else after a word.
qsizetype cut(QStringView text, qsizetype lastLine)
{
    if (lastLine > 0)
        return lastLine;
    const auto blank = text.lastIndexOf(u' ');
    if (blank > 0)
        return blank + 1;
    return text.back().isHighSurrogate() ? text.size() - 1 : text.size();
}

} // namespace

auto MarkdownChunks::first(QStringView rest, const QString& opening) -> Chunk
{
    MarkdownLines lines(opening);
    const auto room = std::min(rest.size(), longestChunk);
    qsizetype start = 0;
    auto afterBlank = false;
    while (start < room) {
        const auto lineEnd = rest.indexOf(u'\n', start);
        const auto line = rest.sliced(start, (lineEnd < 0 ? rest.size() : lineEnd) - start);
        if (afterBlank && !MarkdownLines::isBlank(line) && !mayContinue(line))
            return { .length = start };
        if (lineEnd < 0 || lineEnd >= room)
            break;
        lines.read(line);
        afterBlank = MarkdownLines::isBlank(line) && !lines.isInCode();
        start = lineEnd + 1;
    }
    if (rest.size() <= longestChunk)
        return {};
    return { cut(rest.first(longestChunk), start), lines.opening(), true };
}

auto MarkdownChunks::end(QStringView rest, const QString& opening) -> End
{
    MarkdownLines lines(opening);
    End end { .isInCode = lines.isInCode() };
    qsizetype start = 0;
    while (start < rest.size()) {
        const auto lineEnd = rest.indexOf(u'\n', start);
        const auto line = rest.sliced(start, (lineEnd < 0 ? rest.size() : lineEnd) - start);
        if (!end.isInCode && beginsItem(line))
            end.paragraph = start;
        if (lineEnd < 0)
            break;
        lines.read(line);
        start = lineEnd + 1;
        if (MarkdownLines::isBlank(line) || end.isInCode != lines.isInCode())
            end.paragraph = start;
        end.isInCode = lines.isInCode();
    }
    return end;
}

} // namespace pobblewig
