#include "PobblewigDesktop/chat/MessageLayout.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

constexpr qsizetype charactersPerPiece = 1024;
constexpr qsizetype mostOpenCharacters = 4096;
constexpr int mostOpenLines = 10;
/// A word that is still growing can move from the last line to the next.
constexpr int unsettledLines = 2;
constexpr qreal matchCorner = 3;

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

struct MessageLayout::Segment {
    qsizetype end() const { return start + length; }
    qreal bottom() const { return top + height; }

    qsizetype start = 0;
    qsizetype length = 0;
    qreal top = 0;
    qreal height = 0;
    /// Then it has the direction of the paragraph's beginning.
    bool continuesParagraph = false;
    bool rightToLeft = false;
    bool isOpen = true;
    std::unique_ptr<QTextLayout> lines;
};

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

MessageLayout::MessageLayout(MessageLayout&&) noexcept = default;
MessageLayout& MessageLayout::operator=(MessageLayout&&) noexcept = default;
MessageLayout::~MessageLayout() = default;

qreal MessageLayout::height() const
{
    const auto laidOut = m_segments.empty() ? 0 : m_segments.back().bottom();
    const auto rest = static_cast<qreal>(m_text.size() - m_laidOut);
    return std::max(m_lineHeight, laidOut + std::ceil(rest * m_heightPerCharacter));
}

qsizetype MessageLayout::positionAt(const QPointF& point) const
{
    if (m_segments.empty())
        return 0;
    const auto below = std::ranges::upper_bound(m_segments, point.y(), {}, &Segment::top);
    const auto& segment = below == m_segments.begin() ? m_segments.front() : *std::prev(below);
    const auto y = point.y() - segment.top;
    auto number = segment.lines->lineCount() - 1;
    while (number > 0 && segment.lines->lineAt(number).y() > y)
        --number;
    const auto position = segment.lines->lineAt(number).xToCursor(point.x() - shift(segment));
    return segment.start + std::min<qsizetype>(position, segment.length);
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
    return { line.cursorToX(within) + shift(segment), segment.top + line.y(), 1, line.height() };
}

TextRange MessageLayout::wordAt(qsizetype position) const
{
    constexpr qsizetype longestWord = 256;
    const auto from = std::max<qsizetype>(0, position - longestWord);
    const auto around = QStringView(m_text).mid(from, 2 * longestWord);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, around.data(), around.size());
    finder.setPosition(position - from);
    if (!finder.isAtBoundary() || position == m_text.size())
        finder.toPreviousBoundary();
    const auto start = std::max<qsizetype>(0, finder.position());
    const auto end = finder.toNextBoundary();
    return { from + start, (end < 0 ? around.size() : end) - start };
}

void MessageLayout::draw(QPainter& painter, const QPointF& origin, const QRectF& clip,
    const Ink& ink, const Marks& marks) const
{
    painter.setPen(ink.text);
    const auto top = clip.top() - origin.y();
    auto segment = std::ranges::lower_bound(m_segments, top, {}, &Segment::bottom);
    for (; segment != m_segments.end() && segment->top + origin.y() < clip.bottom(); ++segment) {
        const auto at = origin + QPointF(shift(*segment), segment->top);
        drawMatches(painter, at, *segment, ink, marks);
        QList<QTextLayout::FormatRange> selections;
        if (marks.selection) {
            QTextLayout::FormatRange range;
            range.start =
                static_cast<int>(std::max<qsizetype>(0, marks.selection->start - segment->start));
            const auto end = std::min(segment->end(), marks.selection->end()) - segment->start;
            range.length = static_cast<int>(end) - range.start;
            range.format.setBackground(ink.selection);
            if (range.length > 0)
                selections.append(range);
        }
        segment->lines->draw(&painter, at, selections, clip);
    }
}

void MessageLayout::drawMatches(QPainter& painter, const QPointF& origin, const Segment& segment,
    const Ink& ink, const Marks& marks) const
{
    auto match = std::ranges::upper_bound(marks.matches, segment.start, {}, &TextRange::end);
    for (; match != marks.matches.end() && match->start < segment.end(); ++match) {
        const auto start = static_cast<int>(std::max<qsizetype>(0, match->start - segment.start));
        const auto end = static_cast<int>(std::min(segment.length, match->end() - segment.start));
        QPainterPath path;
        for (auto number = 0; number < segment.lines->lineCount(); ++number) {
            const auto line = segment.lines->lineAt(number);
            const auto from = std::max(start, line.textStart());
            const auto to = std::min(end, line.textStart() + line.textLength());
            if (from >= to)
                continue;
            const auto left = line.cursorToX(from);
            const auto right = line.cursorToX(to);
            const QRectF box(left, line.y(), right - left, line.height());
            path.addRoundedRect(box.normalized().translated(origin).adjusted(-1, 0, 1, 0),
                matchCorner, matchCorner);
        }
        painter.fillPath(path, *match == marks.currentMatch ? ink.currentMatch : ink.match);
    }
}

void MessageLayout::setText(const QString& text)
{
    if (text.startsWith(m_text)) {
        m_text.append(QStringView(text).mid(m_text.size()));
        return;
    }
    const auto same = std::ranges::mismatch(text, m_text).in1 - text.begin();
    m_text = text;
    rewind(same);
}

void MessageLayout::setShape(const Shape& shape)
{
    if (m_shape == shape)
        return;
    m_shape = shape;
    restart();
}

void MessageLayout::restart()
{
    const QFontMetricsF metrics(m_shape.font);
    m_lineHeight = std::ceil(metrics.height() * 1.15);
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
        m_segments.pop_back();
    }
}

qsizetype MessageLayout::layOut(qsizetype characters)
{
    const auto before = m_laidOut;
    while (!isComplete() && m_laidOut - before < characters)
        takePiece();
    return m_laidOut - before;
}

void MessageLayout::takePiece()
{
    if (m_segments.empty() || !m_segments.back().isOpen)
        openSegment();
    auto& segment = m_segments.back();
    const auto room = std::min(charactersPerPiece, mostOpenCharacters - segment.length);
    const auto offered = QStringView(m_text).mid(m_laidOut, room);
    const auto taken = paragraphStart(offered);
    segment.length += taken.size();
    m_laidOut += taken.size();
    const auto text = QStringView(m_text).mid(segment.start, segment.length);
    if (!segment.continuesParagraph)
        segment.rightToLeft = text.isRightToLeft();
    segment.lines->setText(asShown(text.toString()));
    placeLines(segment, std::numeric_limits<int>::max());
    if (taken.size() < offered.size()) {
        segment.isOpen = false;
        ++m_laidOut;
    } else {
        freezeFullLines();
    }
}

void MessageLayout::openSegment()
{
    Segment segment;
    segment.start = m_laidOut;
    segment.continuesParagraph = m_laidOut > 0 && !endsParagraph(m_text.at(m_laidOut - 1));
    if (!m_segments.empty()) {
        segment.top = m_segments.back().bottom();
        segment.rightToLeft = m_segments.back().rightToLeft;
    }
    segment.lines = std::make_unique<QTextLayout>(QString(), m_shape.font);
    segment.lines->setCacheEnabled(true);
    m_segments.push_back(std::move(segment));
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

void MessageLayout::placeLines(Segment& segment, int mostLines)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(segment.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(m_shape.alignment == Alignment::centred ? Qt::AlignHCenter
            : segment.rightToLeft                               ? Qt::AlignRight
                                                                : Qt::AlignLeft);
    auto& lines = *segment.lines;
    lines.setTextOption(option);
    segment.height = 0;
    lines.beginLayout();
    for (auto line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(m_shape.width);
        line.setPosition({ 0, segment.height });
        segment.height += std::max(m_lineHeight, std::ceil(line.height()));
        m_contentWidth = std::max(m_contentWidth, std::ceil(line.naturalTextWidth()));
        if (lines.lineCount() == mostLines)
            break;
    }
    lines.endLayout();
}

qreal MessageLayout::shift(const Segment& segment) const
{
    const auto isAtRight = m_shape.alignment == Alignment::snug && segment.rightToLeft;
    return isAtRight ? m_contentWidth - m_shape.width : 0;
}

const MessageLayout::Segment& MessageLayout::segmentAt(qsizetype position) const
{
    const auto after = std::ranges::upper_bound(m_segments, position, {}, &Segment::start);
    return after == m_segments.begin() ? m_segments.front() : *std::prev(after);
}

} // namespace pobblewig
