#include "PobblewigDesktop/chat/TableLayout.h"

#include "PobblewigDesktop/chat/BlockStyle.h"
#include "PobblewigDesktop/chat/TableColumns.h"

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

constexpr qreal rowGap = BlockStyle::cellPadding / 2;

}

TableLayout::TableLayout(const StyledText& text, LineLayout::Rules rules, qreal width)
    : m_text(text)
    , m_rules(std::move(rules))
    , m_width(width)
{
}

MessageSegments TableLayout::cells(std::size_t firstBlock, qreal top) const
{
    MessageSegments cells;
    for (auto block = firstBlock; block < end(firstBlock); ++block)
        cells.push_back(cell(block, m_text.blocks[firstBlock].range.start));
    const auto columns = widths(cells);
    for (auto row = cells.begin(); row != cells.end();) {
        const auto number = m_text.blocks[row->block].row;
        const auto rowEnd = std::find_if(row, cells.end(),
            [&](const auto& cell) { return m_text.blocks[cell.block].row != number; });
        placeRow({ row, rowEnd }, columns, top);
        top = row->bottom();
        row = rowEnd;
    }
    return cells;
}

std::size_t TableLayout::end(std::size_t firstBlock) const
{
    const auto& blocks = m_text.blocks;
    auto end = firstBlock + 1;
    while (end < blocks.size() && blocks[end].kind == StyledText::BlockKind::cell
        && (blocks[end].row > 0 || blocks[end].column > 0))
        ++end;
    return end;
}

/// The cell with its text on one line.
MessageSegment TableLayout::cell(std::size_t block, qsizetype table) const
{
    const auto& range = m_text.blocks[block].range;
    MessageSegment cell { .start = range.start, .length = range.length, .block = block };
    cell.table = table;
    cell.isOpen = false;
    cell.rightToLeft = QStringView(m_text.text).mid(range.start, range.length).isRightToLeft();
    cell.lines = std::make_unique<QTextLayout>(QString(), m_rules.font);
    cell.lines->setCacheEnabled(true);
    LineLayout::fill(cell, m_text, m_rules.font);
    return cell;
}

std::vector<qreal> TableLayout::widths(const MessageSegments& cells) const
{
    constexpr qreal endless = 1e6;
    std::vector<qreal> wanted;
    for (const auto& cell : cells) {
        const auto column = static_cast<std::size_t>(m_text.blocks[cell.block].column);
        wanted.resize(std::max(wanted.size(), column + 1));
        cell.lines->beginLayout();
        auto line = cell.lines->createLine();
        line.setLineWidth(endless);
        cell.lines->endLayout();
        wanted[column] = std::max(
            wanted[column], std::ceil(line.naturalTextWidth()) + 2 * BlockStyle::cellPadding);
    }
    const auto& first = m_text.blocks[cells.front().block];
    return TableColumns::widths(
        std::move(wanted), m_width - BlockStyles::style(first, m_rules.font).indent);
}

void TableLayout::placeRow(
    std::span<MessageSegment> row, const std::vector<qreal>& widths, qreal top) const
{
    auto left = BlockStyles::style(m_text.blocks[row.front().block], m_rules.font).indent;
    qreal height = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        auto& cell = row[column];
        cell.left = left + BlockStyle::cellPadding;
        cell.width = std::max(1.0, widths[column] - 2 * BlockStyle::cellPadding);
        LineLayout::place(cell, m_text, m_rules);
        left += widths[column];
        height = std::max(height, cell.height + rowGap);
    }
    for (auto& cell : row) {
        cell.top = top + rowGap;
        cell.height = height;
    }
}

} // namespace pobblewig
