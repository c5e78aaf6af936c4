#include "SessionEnd.h"

namespace pobblewig {

SessionEnd::SessionEnd(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<> SessionEnd::endIfDue(TimePoint now)
{
    if (!isDue(now))
        co_return;
    m_isUnderWay = true;
    co_await m.extraction.extractPendingTurns();
    // The user may have said something meanwhile.
    if (!m.chat.isStreaming())
        co_await m.rollover.rolloverIfNeeded(now, m.calendar());
    ended();
}

Task<> SessionEnd::startNewSession()
{
    if (m_isUnderWay || m.chat.isStreaming() || m.chat.messages().empty())
        co_return;
    m_isUnderWay = true;
    m.changed();
    co_await m.extraction.extractPendingTurns();
    co_await m.rollover.forceRollover(m.clock(), m.calendar());
    ended();
}

bool SessionEnd::isDue(TimePoint now) const
{
    return !m_isUnderWay && !m.chat.isStreaming()
        && m.memory.sessions.shouldRollOver(now, m.calendar());
}

void SessionEnd::ended()
{
    m_isUnderWay = false;
    m.chat.reload();
    m.changed();
}

} // namespace pobblewig
