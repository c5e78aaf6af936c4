#include "PobblewigDesktop/chat/MessageLayout.h"

#include "PobblewigDesktop/chat/BlockStyle.h"
#include "PobblewigDesktop/chat/MessagePainter.h"
#include "PobblewigDesktop/chat/TableLayout.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace pobblewig {

namespace {

using Kind = StyledText::BlockKind;

constexpr qsizetype charactersPerPiece = 1024;
constexpr qsizetype mostOpenCharacters = 4096;
constexpr int mostOpenLines = 10;
/// A word that is still growing can move from the last line to the next.
constexpr int unsettledLines = 2;

bool endsParagraph(QChar character)
{
    return character == u'\n' || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

QStringView paragraphStart(QStringView piece)
{
    const auto end = std::ranges::find_if(piece, endsParagraph);
    return piece.first(end - piece.begin());
}

} // namespace

qreal MessageLayout::Shape::lineHeight() const
{
    return std::ceil(QFontMetricsF(font).height() * 1.15);
}

QString MessageLayout::asShown(const QString& text)
{
    return LineLayout::asShown(text);
}

MessageLayout::MessageLayout(Shape shape)
    : m_shape(std::move(shape))
{
    restart();
}

const StyledText& MessageLayout::shown()
{
    read();
    return content();
}

qreal MessageLayout::height() const
{
    auto laidOut = m_segments.empty() ? 0 : m_segments.back().bottom();
    if (!m_segments.empty() && content().blocks[m_segments.back().block].kind == Kind::code)
        laidOut += BlockStyle::codePadding;
    const auto waiting = m_isUnread ? m_source.size() : content().text.size();
    const auto rest = static_cast<qreal>(std::max<qsizetype>(0, waiting - m_laidOut));
    return std::max(m_lineHeight, laidOut + std::ceil(rest * m_heightPerCharacter));
}

qsizetype MessageLayout::positionAt(const QPointF& point) const
{
    const auto* const segment = segmentAt(point);
    if (!segment)
        return 0;
    const auto y = point.y() - segment->top;
    auto number = segment->lines->lineCount() - 1;
    while (number > 0 && segment->lines->lineAt(number).y() > y)
        --number;
    const auto x = point.x() - left(*segment);
    const auto position = segment->lines->lineAt(number).xToCursor(x);
    return segment->start + std::min<qsizetype>(position, segment->length);
}

QRectF MessageLayout::cursorAt(qsizetype position) const
{
    if (m_segments.empty())
        return { 0, 0, 1, m_lineHeight };
    const auto& segment = segmentAt(position);
    const auto within =
        static_cast<int>(std::clamp<qsizetype>(position - segment.start, 0, segment.length));
    auto line = segment.lines->lineForTextPosition(within);
    if (!line.isValid())
        line = segment.lines->lineAt(segment.lines->lineCount() - 1);
    return { line.cursorToX(within) + left(segment), segment.top + line.y(), 1, line.height() };
}

TextRange MessageLayout::wordAt(qsizetype position) const
{
    constexpr qsizetype longestWord = 256;
    const auto from = std::max<qsizetype>(0, position - longestWord);
    const auto around = QStringView(content().text).mid(from, 2 * longestWord);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, around.data(), around.size());
    finder.setPosition(position - from);
    if (!finder.isAtBoundary() || position == content().text.size())
        finder.toPreviousBoundary();
    const auto start = std::max<qsizetype>(0, finder.position());
    const auto end = finder.toNextBoundary();
    return { from + start, (end < 0 ? around.size() : end) - start };
}

QString MessageLayout::linkAt(const QPointF& point) const
{
    const auto* const segment = segmentAt(point);
    if (!segment)
        return {};
    const QPointF within(point.x() - left(*segment), point.y() - segment->top);
    for (auto number = 0; number < segment->lines->lineCount(); ++number) {
        const auto line = segment->lines->lineAt(number);
        if (line.naturalTextRect().contains(within))
            return content().linkAt(
                segment->start + line.xToCursor(within.x(), QTextLine::CursorOnCharacter));
    }
    return {};
}

std::optional<TextRange> MessageLayout::copyButtonAt(const QPointF& point) const
{
    constexpr qreal reach = 72;
    const auto below = std::ranges::lower_bound(m_segments, point.y(), {}, &MessageSegment::top);
    if (below == m_segments.end() || point.x() < m_shape.width - reach)
        return std::nullopt;
    const auto& block = content().blocks[below->block];
    const auto head = BlockStyles::style(block, m_shape.font).head;
    const auto isHead = block.kind == Kind::code && below->start == block.range.start
        && point.y() >= below->top - head;
    return isHead ? std::optional(block.range) : std::nullopt;
}

void MessageLayout::draw(QPainter& painter, const QPointF& origin, const QRectF& clip,
    const Ink& ink, const Marks& marks) const
{
    MessagePainter(*this, ink, marks).paint(painter, origin, clip);
}

void MessageLayout::setText(const QString& text, MarkdownText::Growth growth)
{
    if (m_source == text && m_growth == growth)
        return;
    m_source = text;
    m_growth = growth;
    m_isUnread = true;
}

MessageSegments MessageLayout::setShape(const Shape& shape)
{
    if (m_shape == shape)
        return {};
    auto dropped = std::exchange(m_segments, {});
    m_shape = shape;
    restart();
    return dropped;
}

const StyledText& MessageLayout::content() const
{
    return m_shape.markup == Markup::markdown ? m_markdown.shown() : m_plain;
}

void MessageLayout::read()
{
    if (!std::exchange(m_isUnread, false))
        return;
    const auto before = content().text.size();
    const auto same =
        m_shape.markup == Markup::markdown ? m_markdown.setSource(m_source, m_growth) : readPlain();
    const auto growsTable = !m_segments.empty() && m_segments.back().table.has_value();
    if (same < before || growsTable)
        rewind(same);
}

qsizetype MessageLayout::readPlain()
{
    const auto before = std::exchange(m_plain, StyledText::plain(m_source)).text;
    return std::ranges::mismatch(before, m_plain.text).in1 - before.begin();
}

void MessageLayout::restart()
{
    const QFontMetricsF metrics(m_shape.font);
    m_lineHeight = m_shape.lineHeight();
    m_heightPerCharacter =
        m_lineHeight * metrics.averageCharWidth() / std::max<qreal>(1, m_shape.width);
    m_segments.clear();
    m_laidOut = 0;
    m_contentWidth = 0;
}

void MessageLayout::rewind(qsizetype position)
{
    m_laidOut = std::min(m_laidOut, position);
    while (!m_segments.empty() && m_segments.back().end() >= position) {
        m_laidOut = m_segments.back().start;
        position = std::min(position, m_segments.back().table.value_or(position));
        m_segments.pop_back();
    }
}

qsizetype MessageLayout::layOut(qsizetype characters)
{
    read();
    const auto before = m_laidOut;
    while (!isComplete() && m_laidOut - before < characters)
        takePiece();
    return m_laidOut - before;
}

void MessageLayout::takePiece()
{
    if (m_segments.empty() || !m_segments.back().isOpen) {
        if (content().blocks[content().blockAt(m_laidOut)].kind == Kind::cell)
            return takeTable();
        openSegment();
    }
    auto& segment = m_segments.back();
    const auto room = std::min(charactersPerPiece, mostOpenCharacters - segment.length);
    const auto offered = QStringView(content().text).mid(m_laidOut, room);
    const auto taken = paragraphStart(offered);
    segment.length += taken.size();
    m_laidOut += taken.size();
    if (!segment.continuesParagraph)
        turn(segment,
            QStringView(content().text).mid(segment.start, segment.length).isRightToLeft());
    LineLayout::fill(segment, content(), m_shape.font);
    placeLines(segment);
    if (taken.size() < offered.size()) {
        segment.isOpen = false;
        ++m_laidOut;
    } else {
        freezeFullLines();
    }
}

void MessageLayout::takeTable()
{
    const TableLayout table(content(), rules(), m_shape.width);
    auto cells = table.cells(content().blockAt(m_laidOut), nextTop(true));
    std::ranges::move(cells, std::back_inserter(m_segments));
    m_laidOut = std::min(content().text.size(), m_segments.back().end() + 1);
}

void MessageLayout::openSegment()
{
    MessageSegment segment;
    segment.start = m_laidOut;
    segment.block = content().blockAt(m_laidOut);
    const auto& block = content().blocks[segment.block];
    const auto style = BlockStyles::style(block, m_shape.font);
    const auto isBlockStart = segment.start == block.range.start;
    segment.continuesParagraph = m_laidOut > 0 && !endsParagraph(content().text.at(m_laidOut - 1));
    segment.top = nextTop(isBlockStart) + (isBlockStart ? style.head : 0);
    segment.width = std::max(1.0, m_shape.width - style.indent - 2 * style.padding);
    turn(segment,
        segment.continuesParagraph && !m_segments.empty() && m_segments.back().rightToLeft);
    segment.lines = std::make_unique<QTextLayout>(QString(), style.font);
    segment.lines->setCacheEnabled(true);
    m_segments.push_back(std::move(segment));
}

/// The indentation is where reading begins.
void MessageLayout::turn(MessageSegment& segment, bool rightToLeft) const
{
    const auto style = BlockStyles::style(content().blocks[segment.block], m_shape.font);
    segment.rightToLeft = rightToLeft;
    segment.left = style.padding + (rightToLeft ? 0 : style.indent);
}

/// Where the next segment begins, but for the head of its block.
qreal MessageLayout::nextTop(bool isBlockStart) const
{
    if (m_segments.empty())
        return 0;
    const auto& last = m_segments.back();
    if (!isBlockStart)
        return last.bottom();
    const auto& next = content().blocks[content().blockAt(m_laidOut)];
    const auto isAfterCode = content().blocks[last.block].kind == Kind::code;
    return last.bottom() + BlockStyles::gap(next.gapBefore, m_lineHeight)
        + (isAfterCode ? BlockStyle::codePadding : 0);
}

void MessageLayout::freezeFullLines()
{
    auto& segment = m_segments.back();
    const auto count = segment.lines->lineCount();
    const auto isFull = segment.length >= mostOpenCharacters;
    if (count <= mostOpenLines && !isFull)
        return;
    const auto frozen = std::max(1, count - unsettledLines);
    if (frozen < count) {
        segment.length = segment.lines->lineAt(frozen).textStart();
        placeLines(segment, frozen);
    }
    segment.isOpen = false;
    m_laidOut = segment.end();
}

void MessageLayout::placeLines(MessageSegment& segment, int mostLines)
{
    const auto widest = LineLayout::place(segment, content(), rules(), mostLines);
    m_contentWidth = std::max(m_contentWidth, widest);
}

LineLayout::Rules MessageLayout::rules() const
{
    return { m_shape.font, m_lineHeight, m_shape.alignment == Alignment::centred };
}

qreal MessageLayout::left(const MessageSegment& segment) const
{
    const auto isAtRight = m_shape.alignment == Alignment::snug && segment.rightToLeft;
    return segment.left + (isAtRight ? m_contentWidth - m_shape.width : 0);
}

const MessageSegment& MessageLayout::segmentAt(qsizetype position) const
{
    const auto after = std::ranges::upper_bound(m_segments, position, {}, &MessageSegment::start);
    return after == m_segments.begin() ? m_segments.front() : *std::prev(after);
}

/// The closest one; null if nothing is laid out.
const MessageSegment* MessageLayout::segmentAt(const QPointF& point) const
{
    if (m_segments.empty())
        return nullptr;
    auto below = std::ranges::upper_bound(m_segments, point.y(), {}, &MessageSegment::top);
    if (below != m_segments.begin())
        --below;
    while (below != m_segments.begin() && std::prev(below)->top == below->top
        && point.x() < below->left - BlockStyle::cellPadding)
        --below;
    return &*below;
}

} // namespace pobblewig
