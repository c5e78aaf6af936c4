#include "markdown/MarkdownText.h"

#include "markdown/MarkdownChunks.h"
#include "markdown/MarkdownReader.h"
#include "markdown/MarkdownTail.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace pobblewig {

namespace {

using Kind = StyledText::BlockKind;
using Gap = StyledText::Gap;

template <typename Parts>
void shift(Parts& parts, qsizetype by)
{
    for (auto& part : parts)
        part.range.start += by;
}

/// Removes the head of a table that was only read so that its rows are.
void removeHead(StyledText& table)
{
    const auto isOfHead = [](const auto& block) {
        return block.kind == Kind::cell && block.row == 0;
    };
    const auto body = std::ranges::find_if_not(table.blocks, isOfHead);
    const auto end = body == table.blocks.end() ? table.text.size() : body->range.start;
    std::erase_if(table.spans, [end](const auto& span) { return span.range.start < end; });
    table.blocks.erase(table.blocks.begin(), body);
    table.text.remove(0, end);
    shift(table.blocks, -end);
    shift(table.spans, -end);
}

/// Both without their ranges' ends, which grow.
bool beginAlike(StyledText::Block one, StyledText::Block other)
{
    one.range.length = 0;
    other.range.length = 0;
    return one == other;
}

bool beginAlike(const StyledText::Span& one, const StyledText::Span& other)
{
    return one.range.start == other.range.start && one.looks == other.looks
        && one.link == other.link;
}

/// Returns where the first difference between two lists of parts begins to show, at most `end`.
template <typename Part>
qsizetype firstDifference(std::span<const Part> one, std::span<const Part> other, qsizetype end)
{
    const auto [mine, others] = std::ranges::mismatch(one, other);
    const auto isMine = mine != one.end();
    const auto isOthers = others != other.end();
    if (isMine && isOthers && beginAlike(*mine, *others))
        return std::min({ end, mine->range.end(), others->range.end() });
    return std::min(
        { end, isMine ? mine->range.start : end, isOthers ? others->range.start : end });
}

qsizetype commonLength(QStringView one, QStringView other)
{
    return std::ranges::mismatch(one, other).in1 - one.begin();
}

bool isPlainParagraph(const StyledText::Block& block)
{
    return block.kind == Kind::paragraph && block.marker == 0;
}

/// Whether a block goes on in the next, from which it was cut.
bool isOneBlock(const StyledText::Block& block, const StyledText::Block& next)
{
    return (block.kind == Kind::code && next.kind == Kind::code)
        || (block.kind == Kind::paragraph && isPlainParagraph(next));
}

} // namespace

qsizetype MarkdownText::setSource(const QString& source, Growth growth)
{
    const auto settled = QStringView(m_source).first(m_settled.source);
    if (!source.startsWith(settled))
        m_settled = {};
    const auto kept = m_settled;
    const auto before = takeTail();
    m_source = source;
    readChunks();
    const auto rest = m_source.sliced(m_settled.source);
    append(growth == Growth::growing ? MarkdownTail::settled(rest, m_settled.opening) : rest);
    const auto same =
        kept.text + commonLength(before.text, QStringView(m_shown.text).sliced(kept.text));
    return std::min(
        firstDifference(std::span<const StyledText::Block>(before.blocks),
            std::span<const StyledText::Block>(m_shown.blocks).subspan(kept.blocks), same),
        firstDifference(std::span<const StyledText::Span>(before.spans),
            std::span<const StyledText::Span>(m_shown.spans).subspan(kept.spans), same));
}

void MarkdownText::readChunks()
{
    while (true) {
        const auto rest = QStringView(m_source).sliced(m_settled.source);
        const auto chunk = MarkdownChunks::first(rest, m_settled.opening);
        if (chunk.length == 0)
            return;
        append(rest.first(chunk.length).toString());
        m_settled = { m_settled.source + chunk.length, m_shown.text.size(), m_shown.blocks.size(),
            m_shown.spans.size(), chunk.opening, chunk.isCut };
    }
}

void MarkdownText::append(const QString& markdown)
{
    const auto& opening = m_settled.opening;
    auto piece = MarkdownReader::read(opening + markdown);
    // Code begins with one line, a table with two.
    if (opening.count(u'\n') == 2)
        removeHead(piece);
    if (!piece.blocks.empty() && !piece.text.isEmpty())
        join(std::move(piece));
}

void MarkdownText::join(StyledText piece)
{
    auto& blocks = m_shown.blocks;
    auto& first = piece.blocks.front();
    if (blocks.empty()) {
        m_shown = std::move(piece);
        return;
    }
    const auto isOne = m_settled.isCut && isOneBlock(blocks.back(), first);
    if (!isOne) {
        m_shown.text += u'\n';
        first.gapBefore = !m_settled.isCut ? Gap::wide
            : first.kind == Kind::cell     ? Gap::none
                                           : Gap::narrow;
    } else if (const auto last = m_source.at(m_settled.source - 1); last.isSpace()) {
        m_shown.text += last;
    }
    const auto lastRow = blocks.back().row;
    for (auto& block : piece.blocks)
        block.row += block.kind == Kind::cell && m_settled.isCut ? lastRow : 0;
    shift(piece.blocks, m_shown.text.size());
    shift(piece.spans, m_shown.text.size());
    m_shown.text += piece.text;
    if (isOne)
        blocks.back().range.length = first.range.end() - blocks.back().range.start;
    std::move(
        piece.blocks.begin() + (isOne ? 1 : 0), piece.blocks.end(), std::back_inserter(blocks));
    std::ranges::move(piece.spans, std::back_inserter(m_shown.spans));
}

StyledText MarkdownText::takeTail()
{
    StyledText tail { m_shown.text.sliced(m_settled.text), {}, {} };
    auto& blocks = m_shown.blocks;
    auto& spans = m_shown.spans;
    const auto cut = [](auto& parts, std::size_t count) {
        const auto begin = parts.begin() + static_cast<std::ptrdiff_t>(count);
        std::remove_cvref_t<decltype(parts)> rest(
            std::make_move_iterator(begin), std::make_move_iterator(parts.end()));
        parts.erase(begin, parts.end());
        return rest;
    };
    tail.blocks = cut(blocks, m_settled.blocks);
    tail.spans = cut(spans, m_settled.spans);
    m_shown.text.truncate(m_settled.text);
    if (!blocks.empty())
        blocks.back().range.length = m_settled.text - blocks.back().range.start;
    return tail;
}

} // namespace pobblewig
