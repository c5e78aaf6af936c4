#pragma once

#include "PobblewigDesktop/chat/MessageLayout.h"
#include "PobblewigDesktop/chat/MessageSegment.h"

namespace pobblewig {

/// Paints a message that is laid out: what stands behind the text, the marks and the text.
class MessagePainter {
public:
    /// What is passed has to outlive the painter.
    MessagePainter(const MessageLayout& layout, const MessageLayout::Ink& ink,
        const MessageLayout::Marks& marks);

    /// Paints the part within the clip, in the coordinates of the painter.
    void paint(QPainter& painter, const QPointF& origin, const QRectF& clip) const;

private:
    void paintFrame(QPainter& painter, const QPointF& origin, const MessageSegment& segment) const;
    void paintQuotes(QPainter& painter, const QRectF& box, const MessageSegment& segment) const;
    void paintCode(QPainter& painter, const QRectF& box, const MessageSegment& segment) const;
    void paintHead(QPainter& painter, const QRectF& box, const StyledText::Block& block) const;
    void paintMarks(QPainter& painter, const QPointF& origin, const MessageSegment& segment) const;
    void paintRange(QPainter& painter, const QPointF& origin, const MessageSegment& segment,
        const TextRange& range, const QColor& color) const;
    QList<QTextLayout::FormatRange> inks(const MessageSegment& segment) const;
    bool endsBlock(const MessageSegment& segment) const;

    const MessageLayout& m_layout;
    const StyledText& m_text;
    const MessageLayout::Ink& m_ink;
    const MessageLayout::Marks& m_marks;
};

} // namespace pobblewig
