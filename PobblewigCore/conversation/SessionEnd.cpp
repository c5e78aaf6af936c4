#include "conversation/SessionEnd.h"

namespace pobblewig {

SessionEnd::SessionEnd(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<> SessionEnd::endIfDue()
{
    if (!isDue())
        co_return;
    const auto ending = begin();
    co_await m.readingAlong.extractPendingTurns();
    // The user may have written something in the meantime.
    if (!m.chat.isInTurn())
        co_await m.rollover.rolloverIfNeeded(ending);
    ended();
}

Task<> SessionEnd::startNewSession()
{
    if (m_isUnderWay || m.chat.isInTurn() || m.chat.messages().empty())
        co_return;
    const auto ending = begin();
    co_await m.readingAlong.extractPendingTurns();
    co_await m.rollover.forceRollover(ending);
    ended();
}

bool SessionEnd::isDue() const
{
    return !m_isUnderWay && !m.chat.isInTurn()
        && m.memory.sessions.shouldRollOver(m.moment.now(), m.moment.calendar());
}

std::optional<SessionRolloverService::Ending> SessionEnd::begin()
{
    m_isUnderWay = true;
    m.changed();
    return m.rollover.ending();
}

void SessionEnd::ended()
{
    m_isUnderWay = false;
    m.chat.reload();
    m.changed();
}

} // namespace pobblewig
