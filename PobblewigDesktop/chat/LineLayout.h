#pragma once

#include "PobblewigDesktop/chat/MessageSegment.h"
#include "markdown/StyledText.h"

#include <QFont>

#include <limits>

/// The lines of a segment.
namespace pobblewig::LineLayout {

struct Rules {
    /// The font of the message's text.
    QFont font;
    /// No line is lower.
    qreal lineHeight = 0;
    bool isCentred = false;
};

/// The text as the reader sees it, of the same length: paragraphs and tabs, but no other control
/// characters.
QString asShown(const QString& text);

/// Fills the segment's lines with its part of the text, which are not placed yet.
void fill(MessageSegment& segment, const StyledText& text, const QFont& font);

/// Breaks and places the lines within the segment's width and sets its height. Returns the width of
/// the widest line.
qreal place(MessageSegment& segment, const StyledText& text, const Rules& rules,
    int mostLines = std::numeric_limits<int>::max());

} // namespace pobblewig::LineLayout
