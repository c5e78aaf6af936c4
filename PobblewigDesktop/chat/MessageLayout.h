#pragma once

#include "PobblewigDesktop/chat/LineLayout.h"
#include "markdown/MarkdownText.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <limits>
#include <optional>
#include <vector>

class QPainter;

namespace pobblewig {

/// The lines of one message at one width.
///
/// However long the message is, appending costs as much as the addition, and drawing as much as the
/// visible part: paragraphs are cut into segments of bounded length, and only the last segment is
/// still open; a table is laid out as a whole. Layout can be spread over several calls of `layOut`;
/// until it is complete, the height is an estimate. Positions are those of the shown text.
class MessageLayout {
public:
    enum class Alignment {
        /// Each paragraph is at the side where its script begins.
        natural,
        /// Likewise, in a column no wider than the text.
        snug,
        centred,
    };

    enum class Markup { plain, markdown };

    struct Shape {
        qreal lineHeight() const;

        QFont font;
        qreal width = 0;
        Alignment alignment = Alignment::natural;
        Markup markup = Markup::plain;

        bool operator==(const Shape&) const = default;
    };

    struct Marks {
        std::optional<TextRange> selection;
        /// In the order of the text.
        std::vector<TextRange> matches;
        std::optional<TextRange> currentMatch;
    };

    struct Ink {
        QColor text;
        QColor muted = {};
        QColor link = {};
        /// Behind code.
        QColor code = {};
        /// Beside quotations and between the rows of a table.
        QColor line = {};
        QColor selection;
        QColor match;
        QColor currentMatch;
    };

    /// The text as the reader sees it, of the same length: paragraphs and tabs, but no other
    /// control characters.
    static QString asShown(const QString& text);

    static constexpr auto everything = std::numeric_limits<qsizetype>::max();

    explicit MessageLayout(Shape shape);

    /// The text as it was written.
    const QString& source() const { return m_source; }

    /// Reads the text if that has not happened yet.
    const StyledText& shown();
    const QString& text() { return shown().text; }
    qreal width() const { return m_shape.width; }
    qreal height() const;

    /// The width of the widest line; for a snug layout, also the place of its right edge.
    qreal contentWidth() const { return m_contentWidth; }
    bool isComplete() const { return !m_isUnread && m_laidOut == content().text.size(); }

    /// Returns the position closest to the point, within the text that is laid out.
    qsizetype positionAt(const QPointF& point) const;

    /// Returns the text cursor before this position, one pixel wide and as high as its line.
    QRectF cursorAt(qsizetype position) const;
    TextRange wordAt(qsizetype position) const;

    /// The link under the point, or an empty text.
    QString linkAt(const QPointF& point) const;

    /// The code whose copy button is under the point.
    std::optional<TextRange> copyButtonAt(const QPointF& point) const;
    const Shape& shape() const { return m_shape; }
    const MessageSegments& segments() const { return m_segments; }

    /// What is shown of the text as far as it has been read.
    const StyledText& content() const;

    /// Where the lines of a segment begin.
    qreal left(const MessageSegment& segment) const;
    void draw(QPainter& painter, const QPointF& origin, const QRectF& clip, const Ink& ink,
        const Marks& marks = {}) const;

    /// Keeps the layout of what both texts have in common at the beginning.
    void setText(const QString& text, MarkdownText::Growth growth = MarkdownText::Growth::whole);

    /// Returns the lines that it drops, since letting go of many of them takes long.
    MessageSegments setShape(const Shape& shape);

    /// Lays out about this many more characters and returns how many it did.
    qsizetype layOut(qsizetype characters = everything);

private:
    void read();
    qsizetype readPlain();
    void restart();
    void rewind(qsizetype position);
    void takePiece();
    void takeTable();
    void openSegment();
    qreal nextTop(bool isBlockStart) const;
    void freezeFullLines();
    void placeLines(MessageSegment& segment, int mostLines = std::numeric_limits<int>::max());
    LineLayout::Rules rules() const;
    void turn(MessageSegment& segment, bool rightToLeft) const;
    const MessageSegment& segmentAt(qsizetype position) const;
    const MessageSegment* segmentAt(const QPointF& point) const;

    Shape m_shape;
    QString m_source;
    MarkdownText::Growth m_growth = MarkdownText::Growth::whole;
    /// The source has changed since it was read.
    bool m_isUnread = false;
    StyledText m_plain;
    MarkdownText m_markdown;
    MessageSegments m_segments;
    qsizetype m_laidOut = 0;
    qreal m_contentWidth = 0;
    qreal m_lineHeight = 0;
    qreal m_heightPerCharacter = 0;
};

} // namespace pobblewig
