#include "PobblewigDesktop/chat/MessageLayout.h"

#include "PobblewigDesktop/chat/BlockStyle.h"
#include "PobblewigDesktop/chat/MessagePainter.h"
#include "PobblewigDesktop/chat/TableColumns.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

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

QTextOption option(
    bool isRightToLeft, MessageLayout::Alignment alignment, StyledText::Align cellAlign)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    const auto isCentred =
        alignment == MessageLayout::Alignment::centred || cellAlign == StyledText::Align::centre;
    const auto isAtRight = isRightToLeft || cellAlign == StyledText::Align::right;
    option.setAlignment(isCentred ? Qt::AlignHCenter : isAtRight ? Qt::AlignRight : Qt::AlignLeft);
    return option;
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
    auto shown = text;
    for (auto& character : shown) {
        const auto isControl = character.category() == QChar::Other_Control;
        if (isControl && character != u'\t' && !endsParagraph(character))
            character = u' ';
    }
    return shown;
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

void MessageLayout::setShape(const Shape& shape)
{
    if (m_shape == shape)
        return;
    m_shape = shape;
    restart();
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
    const auto text = textOf(segment);
    if (!segment.continuesParagraph)
        turn(segment, text.isRightToLeft());
    segment.lines->setText(asShown(text));
    segment.lines->setFormats(
        BlockStyles::formats(content(), { segment.start, segment.length }, m_shape.font));
    placeLines(segment, std::numeric_limits<int>::max());
    if (taken.size() < offered.size()) {
        segment.isOpen = false;
        ++m_laidOut;
    } else {
        freezeFullLines();
    }
}

void MessageLayout::takeTable()
{
    const auto first = content().blockAt(m_laidOut);
    const auto end = endOfTable(first);
    std::vector<qreal> widths;
    std::vector<MessageSegment> cells;
    for (auto block = first; block < end; ++block) {
        const auto column = static_cast<std::size_t>(content().blocks[block].column);
        cells.push_back(cell(block, m_laidOut));
        widths.resize(std::max(widths.size(), column + 1));
        widths[column] = std::max(widths[column],
            std::ceil(cells.back().lines->lineAt(0).naturalTextWidth())
                + 2 * BlockStyle::cellPadding);
    }
    const auto indent = BlockStyles::style(content().blocks[first], m_shape.font).indent;
    widths = TableColumns::widths(std::move(widths), m_shape.width - indent);
    auto top = nextTop(true);
    std::vector<MessageSegment> row;
    for (auto& next : cells) {
        if (content().blocks[next.block].column == 0 && !row.empty()) {
            placeRow(row, widths, top);
            top = m_segments.back().bottom();
        }
        row.push_back(std::move(next));
    }
    placeRow(row, widths, top);
    m_laidOut = std::min(content().text.size(), m_segments.back().end() + 1);
}

void MessageLayout::placeRow(
    std::vector<MessageSegment>& cells, const std::vector<qreal>& widths, qreal top)
{
    constexpr qreal gap = BlockStyle::cellPadding / 2;
    auto left = BlockStyles::style(content().blocks[cells.front().block], m_shape.font).indent;
    qreal height = 0;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        auto& cell = cells[column];
        cell.left = left + BlockStyle::cellPadding;
        cell.width = std::max(1.0, widths[column] - 2 * BlockStyle::cellPadding);
        placeLines(cell, std::numeric_limits<int>::max());
        left += widths[column];
        height = std::max(height, cell.height + gap);
    }
    for (auto& cell : cells) {
        cell.top = top + gap;
        cell.height = height;
        m_segments.push_back(std::move(cell));
    }
    cells.clear();
}

/// The cell with its text on one line.
MessageSegment MessageLayout::cell(std::size_t block, qsizetype table) const
{
    const auto& range = content().blocks[block].range;
    MessageSegment cell { .start = range.start, .length = range.length, .block = block };
    cell.table = table;
    cell.isOpen = false;
    cell.rightToLeft = textOf(cell).isRightToLeft();
    cell.lines = std::make_unique<QTextLayout>(asShown(textOf(cell)), m_shape.font);
    cell.lines->setFormats(BlockStyles::formats(content(), range, m_shape.font));
    cell.lines->setCacheEnabled(true);
    cell.lines->beginLayout();
    cell.lines->createLine().setLineWidth(std::numeric_limits<int>::max() / 256);
    cell.lines->endLayout();
    return cell;
}

std::size_t MessageLayout::endOfTable(std::size_t block) const
{
    const auto& blocks = content().blocks;
    auto end = block + 1;
    while (end < blocks.size() && blocks[end].kind == Kind::cell
        && (blocks[end].row > 0 || blocks[end].column > 0))
        ++end;
    return end;
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
    const auto& block = content().blocks[segment.block];
    auto& lines = *segment.lines;
    lines.setTextOption(option(segment.rightToLeft, m_shape.alignment, block.align));
    const auto isItem = block.marker > 0 && segment.start == block.range.start;
    const auto hanging = isItem
        ? QFontMetricsF(lines.font()).horizontalAdvance(textOf(segment).left(block.marker))
        : 0;
    segment.height = 0;
    lines.beginLayout();
    for (auto line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        const auto overhang = lines.lineCount() == 1 ? hanging : 0;
        line.setLineWidth(segment.width + overhang);
        line.setPosition({ segment.rightToLeft ? 0 : -overhang, segment.height });
        segment.height += std::max(m_lineHeight, std::ceil(line.height()));
        m_contentWidth = std::max(m_contentWidth, std::ceil(line.naturalTextWidth()));
        if (lines.lineCount() == mostLines)
            break;
    }
    lines.endLayout();
}

QString MessageLayout::textOf(const MessageSegment& segment) const
{
    return content().text.mid(segment.start, segment.length);
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
