#include "markdown/MarkdownChunks.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool isBlank(QStringView line)
{
    return line.trimmed().isEmpty();
}

/// The fence with which the line begins or ends code, such as "```"; empty if it does not.
QStringView fenceOf(QStringView line)
{
    const auto text = line.trimmed();
    if (text.isEmpty() || (text.front() != u'`' && text.front() != u'~'))
        return {};
    const auto isSame = [&text](QChar character) { return character == text.front(); };
    const auto length = std::ranges::find_if_not(text, isSame) - text.begin();
    const auto isFence = length >= 3 && !text.sliced(length).contains(u'`');
    return isFence ? text.first(length) : QStringView();
}

bool isDelimiterRow(QStringView line)
{
    const auto isOfRow = [](QChar character) { return QStringView(u"|-: \t").contains(character); };
    return line.contains(u'|') && line.contains(u'-')
        && std::ranges::all_of(line.trimmed(), isOfRow);
}

/// What the line may continue even after a blank one.
bool mayContinue(QStringView line)
{
    const auto first = line.front();
    return first.isSpace() || first.isDigit() || QStringView(u"-*+").contains(first);
}

bool beginsItem(QStringView line)
{
    const auto text = line.trimmed();
    return !text.isEmpty()
        && (text.front().isDigit() || QStringView(u"-*+#>|").contains(text.front()));
}

/// Follows the lines of a text and knows what they are in.
class Reading {
public:
    explicit Reading(const QString& opening)
        : m_opening(opening)
    {
        if (const auto fence = fenceOf(opening); !fence.isEmpty())
            m_fence = fence.toString();
    }

    bool isInCode() const { return !m_fence.isEmpty(); }
    const QString& opening() const { return m_opening; }

    void read(QStringView line)
    {
        if (isInCode())
            readCode(line);
        else if (const auto fence = fenceOf(line); !fence.isEmpty())
            begin(fence, line);
        else if (isBlank(line))
            m_opening.clear();
        else if (isDelimiterRow(line) && m_previous.contains(u'|'))
            m_opening = QStringLiteral("%1\n%2\n").arg(m_previous, line.trimmed());
        m_previous = line;
    }

private:
    void begin(QStringView fence, QStringView line)
    {
        m_fence = fence.toString();
        m_opening = line.trimmed().toString() + u'\n';
    }

    void readCode(QStringView line)
    {
        const auto fence = fenceOf(line);
        if (!fence.startsWith(m_fence) || fence.size() != line.trimmed().size())
            return;
        m_fence.clear();
        m_opening.clear();
    }

    QString m_opening;
    QString m_fence;
    QStringView m_previous;
};

/// Where a text that does not end by itself is cut: after a line, or else after a word.
qsizetype cut(QStringView text, qsizetype lastLine)
{
    if (lastLine > 0)
        return lastLine;
    const auto blank = text.lastIndexOf(u' ');
    if (blank > 0)
        return blank + 1;
    return text.back().isHighSurrogate() ? text.size() - 1 : text.size();
}

} // namespace

auto MarkdownChunks::first(QStringView rest, const QString& opening) -> Chunk
{
    Reading reading(opening);
    const auto room = std::min(rest.size(), longestChunk);
    qsizetype start = 0;
    auto afterBlank = false;
    while (start < room) {
        const auto lineEnd = rest.indexOf(u'\n', start);
        const auto line = rest.sliced(start, (lineEnd < 0 ? rest.size() : lineEnd) - start);
        if (afterBlank && !isBlank(line) && !mayContinue(line))
            return { .length = start };
        if (lineEnd < 0 || lineEnd >= room)
            break;
        reading.read(line);
        afterBlank = isBlank(line) && !reading.isInCode();
        start = lineEnd + 1;
    }
    if (rest.size() <= longestChunk)
        return {};
    return { cut(rest.first(longestChunk), start), reading.opening(), true };
}

auto MarkdownChunks::end(QStringView rest, const QString& opening) -> End
{
    Reading reading(opening);
    End end { .isInCode = reading.isInCode() };
    qsizetype start = 0;
    while (start < rest.size()) {
        const auto lineEnd = rest.indexOf(u'\n', start);
        const auto line = rest.sliced(start, (lineEnd < 0 ? rest.size() : lineEnd) - start);
        if (!end.isInCode && beginsItem(line))
            end.paragraph = start;
        if (lineEnd < 0)
            break;
        reading.read(line);
        start = lineEnd + 1;
        if (isBlank(line) || end.isInCode != reading.isInCode())
            end.paragraph = start;
        end.isInCode = reading.isInCode();
    }
    return end;
}

} // namespace pobblewig
