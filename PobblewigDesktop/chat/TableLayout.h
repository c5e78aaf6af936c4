#pragma once

#include "PobblewigDesktop/chat/LineLayout.h"

#include <span>

namespace pobblewig {

/// A table of a message, laid out as a whole, since each cell can move all others.
class TableLayout {
public:
    /// `text` has to outlive the layout.
    TableLayout(const StyledText& text, LineLayout::Rules rules, qreal width);

    /// Returns the cells of the table that begins with this block, from `top` on.
    MessageSegments cells(std::size_t firstBlock, qreal top) const;

private:
    std::size_t end(std::size_t firstBlock) const;
    MessageSegment cell(std::size_t block, qsizetype table) const;
    std::vector<qreal> widths(const MessageSegments& cells) const;
    void placeRow(std::span<MessageSegment> row, const std::vector<qreal>& widths, qreal top) const;

    const StyledText& m_text;
    LineLayout::Rules m_rules;
    qreal m_width = 0;
};

} // namespace pobblewig
