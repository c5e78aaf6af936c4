#include "conversation/TurnWatch.h"

#include <utility>

namespace pobblewig {

namespace {

/// Trimming at every token would move all of the text each time.
constexpr qsizetype slack = 4'000;

QString lastOf(const QString& text, qsizetype count)
{
    const auto begin = text.size() - count;
    return text.mid(text.at(begin).isLowSurrogate() ? begin + 1 : begin);
}

} // namespace

TurnWatch::TurnWatch(const Moment& moment)
    : m_moment(moment)
{
}

void TurnWatch::wait(Waiting::Cause cause)
{
    stopThinking();
    m_waiting = Waiting { cause, m_moment.now() };
    Q_EMIT waitingChanged();
}

void TurnWatch::think(const QString& thought)
{
    if (std::exchange(m_waiting, std::nullopt))
        Q_EMIT waitingChanged();
    if (!m_thinking.since)
        m_thinking.since = m_moment.now();
    m_thinking.text += thought;
    if (m_thinking.text.size() > mostThoughts + slack)
        m_thinking.text = lastOf(m_thinking.text, mostThoughts);
    Q_EMIT thinkingChanged();
}

void TurnWatch::end()
{
    if (m_waiting || m_thinking.since)
        m_ended = m_moment.now();
    stopThinking();
    if (std::exchange(m_waiting, std::nullopt))
        Q_EMIT waitingChanged();
}

void TurnWatch::takeForThought(const QString& thought)
{
    m_thinking.since = m_ended;
    think(thought);
}

void TurnWatch::forgetThoughts()
{
    m_thinking = {};
    Q_EMIT thinkingChanged();
}

void TurnWatch::stopThinking()
{
    const auto since = std::exchange(m_thinking.since, std::nullopt);
    if (!since)
        return;
    m_thinking.before += m_moment.now() - *since;
    Q_EMIT thinkingChanged();
}

} // namespace pobblewig
