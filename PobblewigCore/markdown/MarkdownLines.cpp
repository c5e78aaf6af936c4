#include "markdown/MarkdownLines.h"

#include <algorithm>

namespace pobblewig {

namespace {

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

} // namespace

bool MarkdownLines::isBlank(QStringView line)
{
    return line.trimmed().isEmpty();
}

bool MarkdownLines::isDelimiterRow(QStringView line)
{
    const auto isOfRow = [](QChar character) { return QStringView(u"|-: \t").contains(character); };
    return line.contains(u'|') && line.contains(u'-')
        && std::ranges::all_of(line.trimmed(), isOfRow);
}

MarkdownLines::MarkdownLines(const QString& opening)
    : m_opening(opening)
    , m_fence(fenceOf(opening).toString())
{
}

void MarkdownLines::read(QStringView line)
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

void MarkdownLines::begin(QStringView fence, QStringView line)
{
    m_fence = fence.toString();
    m_opening = line.trimmed().toString() + u'\n';
}

void MarkdownLines::readCode(QStringView line)
{
    const auto fence = fenceOf(line);
    if (!fence.startsWith(m_fence) || fence.size() != line.trimmed().size())
        return;
    m_fence.clear();
    m_opening.clear();
}

} // namespace pobblewig
