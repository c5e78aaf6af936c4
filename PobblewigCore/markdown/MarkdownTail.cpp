#include "markdown/MarkdownTail.h"

#include "markdown/MarkdownChunks.h"

#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace pobblewig {

namespace {

bool isNumber(QStringView text)
{
    constexpr qsizetype mostDigits = 3;
    if (text.endsWith(u'.') || text.endsWith(u')'))
        text.chop(1);
    return !text.isEmpty() && text.size() <= mostDigits
        && std::ranges::all_of(text, [](QChar sign) { return sign.isDigit(); });
}

/// A last line of which only signs are there, such as a bullet, may become anything.
QString withoutSigns(const QString& text)
{
    const auto lineEnd = text.lastIndexOf(u'\n');
    const auto line = QStringView(text).sliced(lineEnd + 1);
    const auto isSign = [](QChar sign) { return QStringView(u"-=+#>`~|:*_ \t").contains(sign); };
    const auto rest = std::ranges::find_if_not(line, isSign) - line.begin();
    const auto isUnknown = rest == line.size() || isNumber(line.sliced(rest).trimmed());
    return isUnknown && !line.trimmed().isEmpty() ? text.first(std::max<qsizetype>(0, lineEnd))
                                                  : text;
}

/// Before its second row a table looks like a text full of strokes.
QString withoutUnknownTable(const QString& text)
{
    static const QRegularExpression head(
        QStringLiteral("(\\A|\\n[ \\t]*\\n)[ \\t]*\\|[^\\n]*(\\n[-:|\\t ]*)?\\z"));
    const auto match = head.match(text);
    return match.hasMatch() ? text.first(match.capturedStart()) : text;
}

/// A line that may become the end of code.
QString withoutFence(const QString& code)
{
    static const QRegularExpression fence(QStringLiteral("(\\A|\\n)[ \\t]*(`+|~+)\\z"));
    const auto match = fence.match(code);
    return match.hasMatch() ? code.first(match.capturedStart()) : code;
}

/// Finds what is open at the end of a paragraph.
class OpenSigns {
public:
    explicit OpenSigns(QStringView paragraph)
        : m_text(paragraph)
    {
        while (m_at < m_text.size())
            read();
    }

    /// Where the text ends that can be shown.
    qsizetype end() const { return m_end.value_or(m_text.size()); }

    /// Where the label of a link begins whose address is not complete yet.
    std::optional<qsizetype> label() const { return m_label; }
    bool isInAddress() const { return m_isInAddress; }

    QString closing() const
    {
        QString signs;
        for (auto sign = m_open.rbegin(); sign != m_open.rend(); ++sign)
            signs += sign->signs;
        return signs;
    }

    /// Where the outermost sign that nothing follows stands.
    std::optional<qsizetype> firstEmpty() const
    {
        const auto isEmpty = [this](const Sign& sign) {
            return m_text.sliced(sign.end, end() - sign.end).trimmed().isEmpty();
        };
        const auto sign = std::ranges::find_if(m_open, isEmpty);
        return sign == m_open.end() ? std::nullopt : std::optional(sign->end - sign->signs.size());
    }

private:
    struct Sign {
        QString signs;
        qsizetype end = 0;
    };

    void read()
    {
        const auto character = m_text[m_at];
        if (character == u'\\')
            m_at += 2;
        else if (character == u'`')
            readCode();
        else if (QStringView(u"*_~").contains(character))
            readEmphasis();
        else if (character == u'[')
            readLink();
        else
            ++m_at;
    }

    qsizetype run() const
    {
        auto end = m_at;
        while (end < m_text.size() && m_text[end] == m_text[m_at])
            ++end;
        return end - m_at;
    }

    void readCode()
    {
        const auto signs = m_text.sliced(m_at, run()).toString();
        m_at += signs.size();
        auto close = m_text.indexOf(signs, m_at);
        while (close >= 0 && close + signs.size() < m_text.size()
            && m_text[close + signs.size()] == u'`')
            close = m_text.indexOf(signs, close + signs.size() + 1);
        if (close >= 0) {
            m_at = close + signs.size();
            return;
        }
        m_open.push_back({ signs, m_at });
        m_at = m_text.size();
    }

    void readEmphasis()
    {
        const auto length = run();
        const auto signs = m_text.sliced(m_at, length).toString();
        const auto before = m_at > 0 ? m_text[m_at - 1] : QChar(u' ');
        const auto isLast = m_at + length == m_text.size();
        const auto after = isLast ? QChar(u' ') : m_text[m_at + length];
        m_at += length;
        const auto opened = std::ranges::find(m_open, signs, &Sign::signs);
        if (!before.isSpace() && opened != m_open.end())
            m_open.erase(opened, m_open.end());
        else if (isLast && !before.isSpace() && isPartOfLast(signs))
            m_end = m_at - length;
        else if (isLast || opens(signs, before, after))
            m_open.push_back({ signs, m_at });
    }

    /// The first of the signs that close what is open has come.
    bool isPartOfLast(const QString& signs) const
    {
        return !m_open.empty() && m_open.back().signs.startsWith(signs);
    }

    static bool opens(const QString& signs, QChar before, QChar after)
    {
        const auto isInWord = signs.front() == u'_' && before.isLetterOrNumber();
        return !after.isSpace() && !isInWord && signs.size() <= 3
            && (signs.front() != u'~' || signs.size() == 2);
    }

    void readLink()
    {
        const auto begin = m_at++;
        const auto labelEnd = m_text.indexOf(u']', m_at);
        const auto isAddress =
            labelEnd >= 0 && labelEnd + 1 < m_text.size() && m_text[labelEnd + 1] == u'(';
        if (labelEnd >= 0 && (labelEnd + 1 == m_text.size() || isAddress)
            && m_text.indexOf(u')', labelEnd) < 0) {
            m_label = begin;
            m_isInAddress = true;
            m_end = labelEnd;
            m_at = m_text.size();
        } else if (labelEnd < 0) {
            m_label = begin;
        }
    }

    QStringView m_text;
    qsizetype m_at = 0;
    std::vector<Sign> m_open;
    std::optional<qsizetype> m_end;
    std::optional<qsizetype> m_label;
    bool m_isInAddress = false;
};

QString completed(QStringView paragraph)
{
    const OpenSigns open(paragraph);
    if (const auto empty = open.firstEmpty())
        return completed(paragraph.first(*empty));
    auto shown = paragraph.first(open.end()).toString();
    if (const auto label = open.label()) {
        // An image's sign goes with the bracket.
        const auto isImage = *label > 0 && shown[*label - 1] == u'!';
        if (!open.isInAddress())
            shown.remove(*label - (isImage ? 1 : 0), isImage ? 2 : 1);
        else
            shown += QStringLiteral("](<>)");
    }
    const auto trailing = shown.size() - QStringView(shown).trimmed().size();
    if (!open.closing().isEmpty() && trailing > 0) {
        while (shown.back().isSpace())
            shown.chop(1);
    }
    return shown + open.closing();
}

} // namespace

QString MarkdownTail::settled(const QString& text, const QString& opening)
{
    if (MarkdownChunks::end(text, opening).isInCode)
        return withoutFence(text);
    const auto signless = withoutSigns(text);
    const auto known = opening.isEmpty() ? withoutUnknownTable(signless) : signless;
    const auto begin = MarkdownChunks::end(known, opening).paragraph;
    return known.first(begin) + completed(QStringView(known).sliced(begin));
}

} // namespace pobblewig
