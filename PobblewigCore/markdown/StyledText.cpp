#include "markdown/StyledText.h"

#include "markdown/EmojiRuns.h"

#include <algorithm>

namespace pobblewig {

StyledText StyledText::plain(const QString& text)
{
    const auto shown = withJoinedEmoji(text);
    return { .text = shown, .blocks = { { .range = { 0, shown.size() } } }, .spans = {} };
}

std::size_t StyledText::blockAt(qsizetype position) const
{
    const auto start = [](const Block& block) { return block.range.start; };
    const auto after = std::ranges::upper_bound(blocks, position, {}, start);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, after - blocks.begin() - 1));
}

QString StyledText::linkAt(qsizetype position) const
{
    const auto end = [](const Span& span) { return span.range.end(); };
    const auto span = std::ranges::upper_bound(spans, position, {}, end);
    return span != spans.end() && span->range.start <= position ? span->link : QString();
}

QString StyledText::copied(const TextRange& range) const
{
    QString copy;
    auto from = range.start;
    for (const auto& block : blocks) {
        if (block.range.start <= from || block.range.start >= range.end())
            continue;
        copy += QStringView(text).mid(from, block.range.start - from);
        if (block.gapBefore == Gap::wide)
            copy += u'\n';
        from = block.range.start;
    }
    return copy.append(QStringView(text).mid(from, range.end() - from));
}

} // namespace pobblewig
