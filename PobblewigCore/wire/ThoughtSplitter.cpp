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

} // namespace

ThoughtSplitter::Parts ThoughtSplitter::add(const QString& text)
{
    if (m_state == State::reply)
        return { {}, text };
    m_held += text;
    Parts parts;
    auto before = m_state;
    do {
        before = m_state;
        const auto [thought, reply] = advance();
        parts.thought += thought;
        parts.reply += reply;
    } while (m_state != before);
    return parts;
}

ThoughtSplitter::Parts ThoughtSplitter::finish()
{
    auto rest = std::exchange(m_held, {});
    return m_state == State::thinking ? Parts { std::move(rest), {} }
                                      : Parts { {}, std::move(rest) };
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
            m_state = State::reply;
            return { {}, std::exchange(m_held, {}) };
        }
        return {};
    case State::thinking: {
        const auto end = m_held.indexOf(closing);
        const auto length = end < 0 ? m_held.size() - possibleMark(m_held, closing) : end;
        auto thought = m_held.first(length);
        m_held.remove(0, end < 0 ? length : length + closing.size());
        m_state = end < 0 ? State::thinking : State::gap;
        return { std::move(thought), {} };
    }
    case State::gap:
        m_held = held.toString();
        m_state = m_held.isEmpty() ? State::gap : State::reply;
        return {};
    case State::reply:
        return { {}, std::exchange(m_held, {}) };
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
