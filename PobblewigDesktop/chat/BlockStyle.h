#pragma once

#include "markdown/StyledText.h"

#include <QFont>
#include <QTextLayout>

namespace pobblewig {

/// How a block of a message is set, in pixels.
struct BlockStyle {
    static constexpr qreal quoteStep = 14;
    static constexpr qreal quoteBar = 3;
    static constexpr qreal listStep = 24;
    static constexpr qreal codePadding = 10;
    static constexpr qreal codeCorner = 8;
    static constexpr qreal cellPadding = 8;

    QFont font;
    /// The room at the side where reading begins.
    qreal indent = 0;
    /// The room on both sides within the block's frame.
    qreal padding = 0;
    /// The room between its frame and its first line.
    qreal head = 0;
};

namespace BlockStyles {

/// `font` is that of the message's text.
BlockStyle style(const StyledText::Block& block, const QFont& font);

QFont codeFont(const QFont& font);

/// `lineHeight` is that of the message's text.
qreal gap(StyledText::Gap gap, qreal lineHeight);

/// The looks of a part of the text, as far as they do not depend on colours. Positions are relative
/// to the part.
QList<QTextLayout::FormatRange> formats(
    const StyledText& text, const TextRange& part, const QFont& font);

} // namespace BlockStyles

} // namespace pobblewig
