#pragma once

#include "markdown/TextRange.h"

#include <QTextLayout>

#include <memory>
#include <vector>

namespace pobblewig {

/// Some lines of a message that are laid out together: a part of a block that ends at a line break
/// at the latest.
struct MessageSegment {
    qsizetype end() const { return start + length; }
    qreal bottom() const { return top + height; }

    qsizetype start = 0;
    qsizetype length = 0;
    qreal left = 0;
    qreal top = 0;
    qreal width = 0;
    qreal height = 0;
    /// The number of its block.
    std::size_t block = 0;
    /// Of a cell: where its table begins in the text.
    std::optional<qsizetype> table = {};
    /// Then it has the direction of the paragraph's beginning.
    bool continuesParagraph = false;
    bool rightToLeft = false;
    bool isOpen = true;
    std::unique_ptr<QTextLayout> lines;
};

/// In the order of the text. The cells in a row of a table have the same top and height.
using MessageSegments = std::vector<MessageSegment>;

} // namespace pobblewig
