#pragma once

#include "markdown/TextRange.h"

#include <QString>

#include <vector>

namespace pobblewig {

/// A text as the reader sees it, without markup, and how its parts look.
struct StyledText {
    enum Look : unsigned {
        emphasis = 1 << 0,
        strong = 1 << 1,
        code = 1 << 2,
        struck = 1 << 3,
        /// Where a link leads; not part of what was written.
        origin = 1 << 4,
    };

    struct Span {
        TextRange range;
        /// A combination of `Look`.
        unsigned looks = 0;
        /// Empty, or an address that is safe to open: on the web, or of mail.
        QString link;

        bool operator==(const Span&) const = default;
    };

    enum class BlockKind { paragraph, heading, code, rule, cell };
    enum class Gap { none, narrow, wide };
    enum class Align { natural, centre, right };

    /// A part with a look of its own. Blocks are separated by a line break, the cells in a row of a
    /// table by a tab. A block can contain line breaks.
    struct Block {
        BlockKind kind = BlockKind::paragraph;
        TextRange range;
        Gap gapBefore = Gap::none;
        /// 1 to 6 for a heading.
        int level = 0;
        /// How many quotations the block is in.
        int quotes = 0;
        /// How many lists the block is in.
        int lists = 0;
        /// The length of the bullet or number that begins the block, with the blank after it.
        int marker = 0;
        /// The language of code, as it was given.
        QString language = {};
        /// Of a cell.
        int row = 0;
        int column = 0;
        Align align = Align::natural;

        bool operator==(const Block&) const = default;
    };

    /// One paragraph, without any look. Line breaks stay.
    static StyledText plain(const QString& text);

    /// The block with this position; the separator belongs to the block before it. There has to be
    /// a block.
    std::size_t blockAt(qsizetype position) const;

    /// The link at this position, or an empty text.
    QString linkAt(qsizetype position) const;

    /// The range as text to paste elsewhere: with an empty line where a wide gap is shown.
    QString copied(const TextRange& range) const;

    QString text;
    std::vector<Block> blocks;
    /// In the order of the text. They do not overlap.
    std::vector<Span> spans;
};

} // namespace pobblewig
