#include "wire/ThoughtSplitter.h"

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr QStringView opening = u"<think>";
constexpr QStringView closing = u"</think>";

/// The length of the longest end of the text that may become the mark.
qsizetype possibleMark(QStringView text, QStringView mark)
{
    for (auto length = std::min(text.size(), mark.size() - 1); length > 0; --length) {
        if (text.endsWith(mark.first(length)))
            return length;
    }
    return 0;
}

QStringView withoutLeadingBlanks(QStringView text)
{
    const auto begin = std::ranges::find_if(text, [](QChar c) { return !c.isSpace(); });
    return text.sliced(std::distance(text.begin(), begin));
}

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r';
}

/// Whether a closing tag behind this text ends a thought, rather than being spoken of.
bool isThought(QStringView text)
{
    constexpr QStringView quoting = u"`\"'“‘„«([{";
    if (text.isEmpty())
        return true;
    const auto isQuoted =
        (text.back().isSpace() && !isLineBreak(text.back())) || quoting.contains(text.back());
    return !isQuoted && !text.contains(opening) && text.count(u'`') % 2 == 0;
}

} // namespace

ThoughtSplitter::Parts ThoughtSplitter::add(const QString& text)
{
    if (m_state == State::reply)
        return { .reply = text };
    m_held += text;
    Parts parts;
    auto before = m_state;
    do {
        before = m_state;
        const auto next = advance();
        parts.wasThought |= next.wasThought;
        parts.thought += next.thought;
        parts.reply += next.reply;
    } while (m_state != before);
    return parts;
}

ThoughtSplitter::Parts ThoughtSplitter::finish()
{
    auto rest = std::exchange(m_held, {});
    return m_state == State::thinking ? Parts { .thought = std::move(rest) }
                                      : Parts { .reply = std::move(rest) };
}

ThoughtSplitter::Parts ThoughtSplitter::advance()
{
    const auto held = withoutLeadingBlanks(m_held);
    switch (m_state) {
    case State::beginning:
        if (held.startsWith(opening)) {
            m_held = held.sliced(opening.size()).toString();
            m_state = State::thinking;
        } else if (!opening.startsWith(held)) {
            m_state = State::undecided;
        }
        return {};
    case State::thinking:
        return advanceThought();
    case State::undecided:
        return advanceUndecided();
    case State::gap:
        m_held = held.toString();
        m_state = m_held.isEmpty() ? State::gap : State::reply;
        return {};
    case State::reply:
        return { .reply = std::exchange(m_held, {}) };
    }
    Q_UNREACHABLE();
}

ThoughtSplitter::Parts ThoughtSplitter::advanceThought()
{
    auto thought = beforeClosing();
    if (m_held.startsWith(closing)) {
        m_held.remove(0, closing.size());
        m_state = State::gap;
    }
    return { .thought = std::move(thought) };
}

ThoughtSplitter::Parts ThoughtSplitter::advanceUndecided()
{
    auto text = beforeClosing();
    m_passed += text;
    if (!m_held.startsWith(closing))
        return { .reply = std::move(text) };
    const auto before = std::exchange(m_passed, {});
    if (!isThought(before)) {
        m_state = State::reply;
        return { .reply = std::move(text) };
    }
    m_held.remove(0, closing.size());
    m_state = State::gap;
    const auto wasPassedOn = before.size() > text.size();
    return { .wasThought = wasPassedOn, .thought = std::move(text) };
}

QString ThoughtSplitter::beforeClosing()
{
    const auto end = m_held.indexOf(closing);
    const auto length = end < 0 ? m_held.size() - possibleMark(m_held, closing) : end;
    auto text = m_held.first(length);
    m_held.remove(0, length);
    return text;
}

} // namespace pobblewig
