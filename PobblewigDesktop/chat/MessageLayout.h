#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

class QPainter;

namespace pobblewig {

/// A stretch of a message's text.
struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;

    qsizetype end() const { return start + length; }
    bool operator==(const TextRange&) const = default;
};

/// The lines of one message at one width.
///
/// However long the message is, appending costs as much as the addition, and drawing as much as the
/// visible part: paragraphs are cut into segments of bounded length, and only the last segment is
/// still open. Layout can be spread over several calls of `layOut`; until it is complete, the
/// height is an estimate.
class MessageLayout {
public:
    enum class Alignment {
        /// Each paragraph is at the side where its script begins.
        natural,
        /// Likewise, in a column no wider than the text.
        snug,
        centred,
    };

    struct Shape {
        QFont font;
        qreal width = 0;
        Alignment alignment = Alignment::natural;

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
        QColor selection;
        QColor match;
        QColor currentMatch;
    };

    /// The text as the reader sees it, of the same length: paragraphs and tabs, but no other
    /// control characters.
    static QString asShown(const QString& text);

    static constexpr auto everything = std::numeric_limits<qsizetype>::max();

    explicit MessageLayout(Shape shape);
    MessageLayout(MessageLayout&&) noexcept;
    MessageLayout& operator=(MessageLayout&&) noexcept;
    ~MessageLayout();

    const QString& text() const { return m_text; }
    qreal width() const { return m_shape.width; }
    qreal height() const;

    /// The width of the widest line; for a snug layout, also the place of its right edge.
    qreal contentWidth() const { return m_contentWidth; }
    bool isComplete() const { return m_laidOut == m_text.size(); }

    /// Returns the position closest to the point, within the text that is laid out.
    qsizetype positionAt(const QPointF& point) const;

    /// Returns the text cursor before this position, one pixel wide and as high as its line.
    QRectF cursorAt(qsizetype position) const;
    TextRange wordAt(qsizetype position) const;
    void draw(QPainter& painter, const QPointF& origin, const QRectF& clip, const Ink& ink,
        const Marks& marks = {}) const;

    /// Keeps the layout of what both texts have in common at the beginning.
    void setText(const QString& text);
    void setShape(const Shape& shape);

    /// Lays out about this many more characters and returns how many it did.
    qsizetype layOut(qsizetype characters = everything);

private:
    struct Segment;

    void restart();
    void rewind(qsizetype position);
    void takePiece();
    void openSegment();
    void freezeFullLines();
    void placeLines(Segment& segment, int mostLines);
    qreal shift(const Segment& segment) const;
    const Segment& segmentAt(qsizetype position) const;
    void drawMatches(QPainter& painter, const QPointF& origin, const Segment& segment,
        const Ink& ink, const Marks& marks) const;

    Shape m_shape;
    QString m_text;
    std::vector<Segment> m_segments;
    qsizetype m_laidOut = 0;
    qreal m_contentWidth = 0;
    qreal m_lineHeight = 0;
    qreal m_heightPerCharacter = 0;
};

} // namespace pobblewig
