#include "PobblewigDesktop/chat/MessagePainter.h"

#include "PobblewigDesktop/chat/BlockStyle.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

using Kind = StyledText::BlockKind;

constexpr qreal markCorner = 3;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(MessageLayout)
};

QTextLayout::FormatRange within(
    const MessageSegment& segment, const TextRange& range, const QTextCharFormat& format)
{
    const auto from = std::max(range.start, segment.start);
    const auto to = std::min(range.end(), segment.end());
    return { static_cast<int>(from - segment.start), static_cast<int>(to - from), format };
}

} // namespace

MessagePainter::MessagePainter(
    const MessageLayout& layout, const MessageLayout::Ink& ink, const MessageLayout::Marks& marks)
    : m_layout(layout)
    , m_text(layout.content())
    , m_ink(ink)
    , m_marks(marks)
{
}

void MessagePainter::paint(QPainter& painter, const QPointF& origin, const QRectF& clip) const
{
    // The frame of code begins above its first line and ends below its last.
    const auto margin = BlockStyle::codePadding + m_layout.shape().lineHeight() * 2;
    const auto top = clip.top() - origin.y() - margin;
    const auto bottom = clip.bottom() - origin.y() + margin;
    const auto& segments = m_layout.segments();
    auto segment = std::ranges::lower_bound(segments, top, {}, &MessageSegment::bottom);
    for (; segment != segments.end() && segment->top < bottom; ++segment) {
        paintFrame(painter, origin, *segment);
        const auto at = origin + QPointF(m_layout.left(*segment), segment->top);
        paintMarks(painter, at, *segment);
        painter.setPen(m_ink.text);
        segment->lines->draw(&painter, at, inks(*segment), clip);
    }
}

void MessagePainter::paintFrame(
    QPainter& painter, const QPointF& origin, const MessageSegment& segment) const
{
    const auto& block = m_text.blocks[segment.block];
    const auto inset = block.lists * BlockStyle::listStep;
    const QRectF box(origin.x() + block.quotes * BlockStyle::quoteStep + inset,
        origin.y() + segment.top,
        m_layout.shape().width - block.quotes * BlockStyle::quoteStep - inset, segment.height);
    paintQuotes(painter, box.translated(origin.x() - box.left(), 0), segment);
    if (block.kind == Kind::code)
        paintCode(painter, box, segment);
    const auto y = std::floor(block.kind == Kind::rule ? box.center().y() : box.bottom()) + 0.5;
    if (block.kind == Kind::rule || (block.kind == Kind::cell && block.column == 0)) {
        painter.setPen(m_ink.line);
        painter.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
    }
}

void MessagePainter::paintQuotes(
    QPainter& painter, const QRectF& box, const MessageSegment& segment) const
{
    const auto& block = m_text.blocks[segment.block];
    const auto isFirst = segment.block > 0 && segment.start == block.range.start;
    const auto gap = isFirst ? BlockStyles::gap(block.gapBefore, m_layout.shape().lineHeight()) : 0;
    for (int quote = 0; quote < block.quotes; ++quote) {
        const auto goesOn = isFirst && m_text.blocks[segment.block - 1].quotes > quote;
        QRectF bar(box.left() + quote * BlockStyle::quoteStep, box.top() - (goesOn ? gap : 0),
            BlockStyle::quoteBar, box.height() + (goesOn ? gap : 0));
        if (segment.rightToLeft)
            bar.moveRight(box.left() + m_layout.width() - quote * BlockStyle::quoteStep);
        painter.fillRect(bar, m_ink.line);
    }
}

void MessagePainter::paintCode(
    QPainter& painter, const QRectF& box, const MessageSegment& segment) const
{
    const auto& block = m_text.blocks[segment.block];
    const auto isFirst = segment.start == block.range.start;
    const auto isLast = endsBlock(segment);
    const auto head = isFirst ? BlockStyles::style(block, m_layout.shape().font).head : 0;
    const auto frame = box.adjusted(0, -head, 0, isLast ? BlockStyle::codePadding : 0);
    QPainterPath path;
    path.addRoundedRect(frame, BlockStyle::codeCorner, BlockStyle::codeCorner);
    // Inner corners are square, so that the parts join.
    const auto half = frame.height() / 2;
    if (!isFirst)
        path.addRect(frame.adjusted(0, 0, 0, -half));
    if (!isLast)
        path.addRect(frame.adjusted(0, half, 0, 0));
    path.setFillRule(Qt::WindingFill);
    painter.fillPath(path, m_ink.code);
    if (isFirst)
        paintHead(painter, QRectF(frame.topLeft(), QSizeF(frame.width(), head)), block);
}

void MessagePainter::paintHead(
    QPainter& painter, const QRectF& box, const StyledText::Block& block) const
{
    auto font = m_layout.shape().font;
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.5));
    painter.setFont(font);
    painter.setPen(m_ink.muted);
    const auto words = box.adjusted(BlockStyle::codePadding, 0, -BlockStyle::codePadding, 0);
    // Code runs from left to right everywhere.
    constexpr auto inPlace = Qt::AlignVCenter | Qt::AlignAbsolute;
    painter.drawText(words, Qt::AlignLeft | inPlace, block.language);
    painter.drawText(words, Qt::AlignRight | inPlace, Texts::tr("Copy"));
}

void MessagePainter::paintMarks(
    QPainter& painter, const QPointF& origin, const MessageSegment& segment) const
{
    const auto spanEnd = [](const auto& span) { return span.range.end(); };
    auto span = std::ranges::upper_bound(m_text.spans, segment.start, {}, spanEnd);
    for (; span != m_text.spans.end() && span->range.start < segment.end(); ++span) {
        if (span->looks & StyledText::code)
            paintRange(painter, origin, segment, span->range, m_ink.code);
    }
    auto match = std::ranges::upper_bound(m_marks.matches, segment.start, {}, &TextRange::end);
    for (; match != m_marks.matches.end() && match->start < segment.end(); ++match)
        paintRange(painter, origin, segment, *match,
            *match == m_marks.currentMatch ? m_ink.currentMatch : m_ink.match);
}

void MessagePainter::paintRange(QPainter& painter, const QPointF& origin,
    const MessageSegment& segment, const TextRange& range, const QColor& color) const
{
    const auto part = within(segment, range, {});
    QPainterPath path;
    for (auto number = 0; number < segment.lines->lineCount(); ++number) {
        const auto line = segment.lines->lineAt(number);
        const auto from = std::max(part.start, line.textStart());
        const auto to = std::min(part.start + part.length, line.textStart() + line.textLength());
        if (from >= to)
            continue;
        const auto left = line.cursorToX(from);
        const auto right = line.cursorToX(to);
        const QRectF box(left, line.y(), right - left, line.height());
        path.addRoundedRect(
            box.normalized().translated(origin).adjusted(-1, 0, 1, 0), markCorner, markCorner);
    }
    painter.fillPath(path, color);
}

QList<QTextLayout::FormatRange> MessagePainter::inks(const MessageSegment& segment) const
{
    QList<QTextLayout::FormatRange> inks;
    const auto spanEnd = [](const auto& span) { return span.range.end(); };
    auto span = std::ranges::upper_bound(m_text.spans, segment.start, {}, spanEnd);
    for (; span != m_text.spans.end() && span->range.start < segment.end(); ++span) {
        const auto isOrigin = (span->looks & StyledText::origin) != 0;
        if (!isOrigin && span->link.isEmpty())
            continue;
        QTextCharFormat format;
        format.setForeground(isOrigin ? m_ink.muted : m_ink.link);
        inks.append(within(segment, span->range, format));
    }
    if (m_marks.selection) {
        QTextCharFormat format;
        format.setBackground(m_ink.selection);
        if (const auto part = within(segment, *m_marks.selection, format); part.length > 0)
            inks.append(part);
    }
    return inks;
}

bool MessagePainter::endsBlock(const MessageSegment& segment) const
{
    return segment.end() >= m_text.blocks[segment.block].range.end();
}

} // namespace pobblewig
