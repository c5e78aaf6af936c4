#include "markdown/EmojiRuns.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Characters that are pictures by themselves.
constexpr std::array pictures { Range { 0x231A, 0x231B }, Range { 0x23E9, 0x23EC },
    Range { 0x23F0, 0x23F0 }, Range { 0x23F3, 0x23F3 }, Range { 0x25FD, 0x25FE },
    Range { 0x2614, 0x2615 }, Range { 0x2648, 0x2653 }, Range { 0x267F, 0x267F },
    Range { 0x2693, 0x2693 }, Range { 0x26A1, 0x26A1 }, Range { 0x26AA, 0x26AB },
    Range { 0x26BD, 0x26BE }, Range { 0x26C4, 0x26C5 }, Range { 0x26CE, 0x26CE },
    Range { 0x26D4, 0x26D4 }, Range { 0x26EA, 0x26EA }, Range { 0x26F2, 0x26F3 },
    Range { 0x26F5, 0x26F5 }, Range { 0x26FA, 0x26FA }, Range { 0x26FD, 0x26FD },
    Range { 0x2705, 0x2705 }, Range { 0x270A, 0x270B }, Range { 0x2728, 0x2728 },
    Range { 0x274C, 0x274C }, Range { 0x274E, 0x274E }, Range { 0x2753, 0x2755 },
    Range { 0x2757, 0x2757 }, Range { 0x2795, 0x2797 }, Range { 0x27B0, 0x27B0 },
    Range { 0x27BF, 0x27BF }, Range { 0x2B1B, 0x2B1C }, Range { 0x2B50, 0x2B50 },
    Range { 0x2B55, 0x2B55 }, Range { 0x1F004, 0x1F004 }, Range { 0x1F0CF, 0x1F0CF },
    Range { 0x1F18E, 0x1F18E }, Range { 0x1F191, 0x1F19A }, Range { 0x1F1E6, 0x1F1FF },
    Range { 0x1F201, 0x1F201 }, Range { 0x1F21A, 0x1F21A }, Range { 0x1F22F, 0x1F22F },
    Range { 0x1F232, 0x1F236 }, Range { 0x1F238, 0x1F23A }, Range { 0x1F250, 0x1F251 },
    Range { 0x1F300, 0x1F64F }, Range { 0x1F680, 0x1F6FF }, Range { 0x1F7E0, 0x1F7EB },
    Range { 0x1F7F0, 0x1F7F0 }, Range { 0x1F90C, 0x1F9FF }, Range { 0x1FA70, 0x1FAFF } };

constexpr char32_t joiner = 0x200D;
constexpr char32_t asPicture = 0xFE0F;
constexpr char32_t asText = 0xFE0E;
constexpr char32_t keycap = 0x20E3;
constexpr Range tones { 0x1F3FB, 0x1F3FF };
constexpr Range tags { 0xE0020, 0xE007F };
constexpr Range flagHalves { 0x1F1E6, 0x1F1FF };

bool isIn(const Range& range, char32_t character)
{
    return range.first <= character && character <= range.last;
}

bool isPicture(char32_t character)
{
    const auto range = std::ranges::lower_bound(pictures, character, {}, &Range::last);
    return range != pictures.end() && range->first <= character;
}

/// Reads one emoji at a time.
class Reader {
public:
    explicit Reader(QStringView text)
        : m_text(text)
    {
    }

    bool hasNext() const { return m_position < m_text.size(); }
    qsizetype position() const { return m_position; }

    /// Returns whether the next character begins an emoji, and reads that or else the character.
    bool readEmoji()
    {
        const auto first = next();
        const auto following = peek();
        const auto isEmoji = following == asPicture || following == keycap
            || (isPicture(first) && following != asText);
        if (isEmoji)
            readRest(first);
        return isEmoji;
    }

private:
    /// 0 at the end.
    char32_t peek() const
    {
        if (!hasNext())
            return 0;
        const auto unit = m_text[m_position];
        const auto isPair = unit.isHighSurrogate() && m_position + 1 < m_text.size()
            && m_text[m_position + 1].isLowSurrogate();
        return isPair ? QChar::surrogateToUcs4(unit, m_text[m_position + 1]) : unit.unicode();
    }

    char32_t next()
    {
        const auto character = peek();
        m_position =
            std::min(m_text.size(), m_position + (QChar::requiresSurrogates(character) ? 2 : 1));
        return character;
    }

    void readRest(char32_t first)
    {
        if (isIn(flagHalves, first) && isIn(flagHalves, peek()))
            next();
        while (true) {
            const auto character = peek();
            if (character == joiner) {
                next();
                next();
            } else if (character == asPicture || character == keycap || isIn(tones, character)
                || isIn(tags, character)) {
                next();
            } else {
                return;
            }
        }
    }

    QStringView m_text;
    qsizetype m_position = 0;
};

} // namespace

std::vector<TextRange> emojiRuns(QStringView text)
{
    std::vector<TextRange> runs;
    // Most texts have none.
    if (std::ranges::none_of(text, [](QChar unit) { return unit.unicode() >= keycap; }))
        return runs;
    Reader reader(text);
    while (reader.hasNext()) {
        const auto start = reader.position();
        if (!reader.readEmoji())
            continue;
        if (!runs.empty() && runs.back().end() == start)
            runs.back().length += reader.position() - start;
        else
            runs.push_back({ start, reader.position() - start });
    }
    return runs;
}

QString withJoinedEmoji(QString text)
{
    static const QRegularExpression inner(QStringLiteral("\\x{FE0F}(?=[\\x{200D}\\x{20E3}])"));
    if (text.contains(QChar(asPicture)))
        text.remove(inner);
    return text;
}

} // namespace pobblewig
